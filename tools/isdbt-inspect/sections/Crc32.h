#pragma once

#include <cstddef>
#include <cstdint>

namespace inspect {

/// The CRC_32 of MPEG-2 sections; 0 over a section with its CRC_32 when it is right.
std::uint32_t crc32(const std::uint8_t* data, std::size_t size);

} // namespace inspect
