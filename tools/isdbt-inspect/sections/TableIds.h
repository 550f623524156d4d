#pragma once

#include <cstdint>

namespace inspect {

// The table_id of each table that the library understands.
constexpr std::uint8_t PAT = 0x00;
constexpr std::uint8_t PMT = 0x02;
constexpr std::uint8_t DSMCC_STREAM_DESCRIPTORS = 0x3D;
constexpr std::uint8_t NIT = 0x40;
constexpr std::uint8_t SDT = 0x42;
constexpr std::uint8_t TOT = 0x73;
constexpr std::uint8_t AIT = 0x74;
constexpr std::uint8_t SDTT = 0xC3;

} // namespace inspect
