#pragma once

#include "TISDBTTable.h"
#include "describing/Charset.h"
#include "describing/CodingGuess.h"
#include "describing/Field.h"
#include "walking/DescriptorLoops.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
/// @param charset what its texts are in
/// @param guess   what its stream's tables tell of that; learns from this one
Fields describe(const Quor::TISDBTTable& table, const Charset& charset, CodingGuess& guess);

/// The same for a table whose stream is not known.
Fields describe(const Quor::TISDBTTable& table, const Charset& charset = Charset());

/// The same for a single descriptor: an object under its name.
Field describe(const Quor::TISDBTDescriptor& descriptor, const Charset& charset = Charset());

/// A descriptor as it stands on the wire: tag, length and bytes, whether it fits in its loop, and the error with which
/// the library refuses it.
Field describeOnWire(const RawDescriptor& descriptor);

/// The descriptors of a section that the library rejects: a list for each loop, as describeOnWire() gives
/// each descriptor.
/// @param section from table_id to CRC_32, or as much of it as there is
Fields describeDescriptors(const std::uint8_t* section, std::size_t size);

} // namespace inspect
