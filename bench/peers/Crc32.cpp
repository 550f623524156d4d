#include "Crc32.h"

#include <array>
#include <cstddef>

namespace {

/// One entry for each value of a byte: what it leaves of itself in the remainder some bytes later. Remainders have
/// their bytes reversed, so that the next byte of the section meets the lowest.
using ByteTable = std::array<QUOR_U32, 256>;

constexpr std::array<ByteTable, 8> makeTables() {
    std::array<ByteTable, 8> tables{};
    for (QUOR_U32 byte = 0; byte < 256; ++byte) {
        QUOR_U32 remainder = byte << 24;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = remainder << 1 ^ ((remainder & 0x80000000U) != 0 ? 0x04C11DB7U : 0U);
        }
        tables[0][byte] = remainder >> 24 | (remainder >> 8 & 0xFF00U) | (remainder & 0xFF00U) << 8 | remainder << 24;
    }
    for (std::size_t later = 1; later < tables.size(); ++later) {
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const QUOR_U32 remainder = tables[later - 1][byte];
            tables[later][byte] = remainder >> 8 ^ tables[0][remainder & 0xFFU];
        }
    }
    return tables;
}

constexpr std::array<ByteTable, 8> TABLES_BY_DISTANCE = makeTables();

QUOR_U32 word(const QUOR_U8* bytes) {
    return bytes[0] | QUOR_U32{bytes[1]} << 8 | QUOR_U32{bytes[2]} << 16 | QUOR_U32{bytes[3]} << 24;
}

QUOR_U32 fold(QUOR_U32 bytes, std::size_t behind) {
    return (TABLES_BY_DISTANCE[behind + 3][bytes & 0xFFU] ^ TABLES_BY_DISTANCE[behind + 2][bytes >> 8 & 0xFFU]) ^
           (TABLES_BY_DISTANCE[behind + 1][bytes >> 16 & 0xFFU] ^ TABLES_BY_DISTANCE[behind][bytes >> 24]);
}

} // namespace

bool crc32IsRight(const QUOR_U8* section, QUOR_U32 size) {
    QUOR_U32 remainder = 0xFFFFFFFF;
    for (; size >= 8; size -= 8, section += 8) {
        remainder = fold(remainder ^ word(section), 4) ^ fold(word(section + 4), 0);
    }
    if (size >= 4) {
        remainder = fold(remainder ^ word(section), 0);
        size -= 4;
        section += 4;
    }
    for (; size > 0; --size, ++section) {
        remainder = remainder >> 8 ^ TABLES_BY_DISTANCE[0][(remainder ^ *section) & 0xFFU];
    }
    return remainder == 0; // as it is over a section with its own CRC_32
}
