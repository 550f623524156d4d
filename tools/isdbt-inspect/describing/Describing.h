#pragma once

#include "TISDBTTable.h"
#include "describing/Field.h"

namespace inspect {

/// The fields of a parsed table, descriptors included, without those of the section header.
Fields describe(const Quor::TISDBTTable& table);

/// The descriptors of a section that the library rejects: a list for each loop, with tag, length and bytes of each
/// descriptor, whether it fits in its loop, and the error with which the library refuses it.
/// @param section from table_id to CRC_32, or as much of it as there is
Fields describeDescriptors(const std::uint8_t* section, std::size_t size);

} // namespace inspect
