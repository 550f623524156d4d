#include "sections/Crc32.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <string>

namespace {

TEST(Crc32, IsThatOfMpeg2) {
    const std::string digits = "123456789";
    EXPECT_EQ(inspect::crc32(reinterpret_cast<const std::uint8_t*>(digits.data()), digits.size()), 0x0376E6E7U);
    EXPECT_EQ(inspect::crc32(nullptr, 0), 0xFFFFFFFFU);
}

TEST(Crc32, IsTheSameAsByteByByte) {
    ByteVector bytes;
    for (std::size_t size = 0; size < 300; ++size) {
        EXPECT_EQ(inspect::crc32(bytes.data(), size), crc32(bytes)) << size;
        bytes.push_back(static_cast<QUOR_U8>(size * size + 7 * size));
    }
}

} // namespace
