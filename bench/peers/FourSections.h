#pragma once

#include "support/Bytes.h"

#include <array>
#include <cstddef>

/// A table of which every peer gets a section.
enum class Table : std::size_t { PAT, PMT, SDT, NIT };

inline constexpr std::array TABLES{Table::PAT, Table::PMT, Table::SDT, Table::NIT};
inline constexpr std::array TABLE_NAMES{"PAT", "PMT", "SDT", "NIT"};

/// A section in 16 versions, one after the other: a decoder that follows versions skips one that it has seen. As many
/// as continuity_counter has values, so that a decoder of packets sees no gap when it begins anew.
using Versions = std::array<ByteVector, 16>;

/// A section of the table as a broadcaster of four services might send it, in all its versions.
Versions fourServices(Table table);

/// The same with a CRC_32 that is wrong.
Versions damaged(Versions versions);
