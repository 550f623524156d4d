#pragma once

#include "dsmcc/Bytes.h"

namespace dsmcc {

/// The CRC_32 of MPEG-2 sections; 0 over a section with its CRC_32 when it is right.
std::uint32_t crc32(ByteView bytes);

} // namespace dsmcc
