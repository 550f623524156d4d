#include "sections/Crc32.h"

#include <array>

namespace inspect {

namespace {

constexpr std::size_t AT_ONCE = 16; // bytes: a carousel may fill a multiplex, and one by one they take most of the time

using Remainders = std::array<std::array<std::uint32_t, 256>, AT_ONCE>;

/// What remains of each byte when 0 to 15 others follow it.
constexpr Remainders remaindersOfBytes() {
    constexpr std::uint32_t POLYNOMIAL = 0x04C11DB7;
    constexpr std::uint32_t HIGHEST_BIT = 0x80000000;
    Remainders remainders{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte << 24U;
        for (auto& ofByte : remainders) {
            for (int bit = 0; bit < 8; ++bit) {
                rest = (rest & HIGHEST_BIT) != 0 ? rest << 1U ^ POLYNOMIAL : rest << 1U;
            }
            ofByte[byte] = rest;
        }
    }
    return remainders;
}

constexpr Remainders REMAINDERS = remaindersOfBytes();

} // namespace

std::uint32_t crc32(const std::uint8_t* data, std::size_t size) {
    std::uint32_t rest = 0xFFFFFFFF;
    for (; size >= AT_ONCE; data += AT_ONCE, size -= AT_ONCE) {
        std::uint32_t next =
            REMAINDERS[AT_ONCE - 1][rest >> 24U ^ data[0]] ^ REMAINDERS[AT_ONCE - 2][(rest >> 16U & 0xFFU) ^ data[1]] ^
            REMAINDERS[AT_ONCE - 3][(rest >> 8U & 0xFFU) ^ data[2]] ^ REMAINDERS[AT_ONCE - 4][(rest & 0xFFU) ^ data[3]];
        for (std::size_t at = 4; at < AT_ONCE; ++at) {
            next ^= REMAINDERS[AT_ONCE - 1 - at][data[at]];
        }
        rest = next;
    }
    for (; size != 0; ++data, --size) {
        rest = rest << 8U ^ REMAINDERS[0][rest >> 24U ^ *data];
    }
    return rest;
}

} // namespace inspect
