#pragma once

#include "TISDBTTable.h"
#include "describing/Conventions.h"
#include "describing/Field.h"
#include "walking/DescriptorLoops.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
/// @param conventions how its texts and times are written
Fields describe(const Quor::TISDBTTable& table, const Conventions& conventions = Conventions());

/// The same for a single descriptor: an object under its name.
Field describe(const Quor::TISDBTDescriptor& descriptor, const Conventions& conventions = Conventions());

/// A descriptor as it stands on the wire: tag, length and bytes, whether it fits in its loop, and the error with which
/// the library refuses it.
Field describeOnWire(const RawDescriptor& descriptor);

/// The descriptors of a section that the library rejects: a list for each loop, as describeOnWire() gives
/// each descriptor.
/// @param section from table_id to CRC_32, or as much of it as there is
Fields describeDescriptors(const std::uint8_t* section, std::size_t size);

} // namespace inspect
