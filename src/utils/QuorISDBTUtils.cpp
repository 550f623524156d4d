#include "utils/QuorISDBTUtils.h"

#include <array>
#include <cstdio>

namespace Quor {

namespace {

constexpr QUOR_U32 CRC32_POLYNOMIAL = 0x04C11DB7;

constexpr std::array<QUOR_U32, 256> makeCrcTable() {
    std::array<QUOR_U32, 256> table{};
    for (QUOR_U32 i = 0; i < table.size(); ++i) {
        QUOR_U32 remainder = i << 24;
        for (int bit = 0; bit < 8; ++bit) {
            remainder = remainder << 1 ^ ((remainder & 0x80000000U) != 0 ? CRC32_POLYNOMIAL : 0U);
        }
        table[i] = remainder;
    }
    return table;
}

constexpr std::array<QUOR_U32, 256> crctab = makeCrcTable();
static_assert(crctab[1] == CRC32_POLYNOMIAL && crctab[255] == 0xB1F740B4, "byte-wise, most significant bit first");

constexpr QUOR_U32 SECONDS_OF_A_DAY = 86400;

} // namespace

ISDBTUtils::ISDBTUtils() = default;
ISDBTUtils::~ISDBTUtils() = default;

void ISDBTUtils::setErrorCode(QUOR_U16* errorCode, QUOR_U16 value) {
    if (errorCode != nullptr) {
        *errorCode = value;
    }
}

U8 ISDBTUtils::bcd2U8(QUOR_U8 bcdValue) {
    return static_cast<U8>((bcdValue >> 4) * 10 + (bcdValue & 0x0F));
}

S32 ISDBTUtils::mjd2unix(QUOR_U16 mjdDate) {
    if (mjdDate <= MJD_1970) {
        return 0;
    }
    // Receivers count in 32 bits, so that dates from 2038-01-20 on come out negative.
    return static_cast<S32>(static_cast<QUOR_U32>(mjdDate - MJD_1970) * SECONDS_OF_A_DAY);
}

U32 ISDBTUtils::getSectionCRC32(QUOR_U8* data, QUOR_U32 length) {
    // Quirk: the initial value 0, unlike the all-ones of a section's CRC_32.
    QUOR_U32 crc = 0;
    std::printf("    Initial: 0x%08X\n", crc);
    for (QUOR_U32 i = 0; i < length; ++i) {
        crc = crctab[crc >> 24 ^ data[i]] ^ crc << 8;
        std::printf("    0x%02X --> 0x%08X\n", static_cast<unsigned>(data[i]), crc);
    }
    std::printf("    Final:   0x%08X\n", crc);
    return crc;
}

} // namespace Quor
