#include "Crc32.h"

#include <array>

namespace dsmcc {

namespace {

constexpr std::array<std::uint32_t, 256> tableOfBytes() {
    constexpr std::uint32_t POLYNOMIAL = 0x04C11DB7;
    constexpr std::uint32_t HIGHEST_BIT = 0x80000000;
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t rest = byte << 24U;
        for (int bit = 0; bit < 8; ++bit) {
            rest = (rest & HIGHEST_BIT) != 0 ? rest << 1U ^ POLYNOMIAL : rest << 1U;
        }
        table[byte] = rest;
    }
    return table;
}

constexpr std::array<std::uint32_t, 256> BYTES = tableOfBytes();

} // namespace

std::uint32_t crc32(ByteView bytes) {
    std::uint32_t rest = 0xFFFFFFFF;
    for (const std::uint8_t byte : bytes) {
        rest = rest << 8U ^ BYTES[rest >> 24U ^ byte];
    }
    return rest;
}

} // namespace dsmcc
