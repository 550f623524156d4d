#include "sections/Bits.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

namespace {

using inspect::Bits;

TEST(Bits, AreTakenFromTheLeft) {
    const HeapBytes bytes(hex("A5 0F 1234"));
    Bits bits(bytes.data(), bytes.size());
    EXPECT_EQ(bits.take(1), 1U);
    EXPECT_EQ(bits.take(3), 2U);
    EXPECT_EQ(bits.take(8), 0x50U);
    EXPECT_EQ(bits.left(), 2U);
    EXPECT_EQ(bits.take(20), 0xF1234U);
    EXPECT_EQ(bits.left(), 0U);
    EXPECT_FALSE(bits.failed());
}

TEST(Bits, BeyondTheEndAreZeroAndAFailure) {
    const HeapBytes bytes(hex("FF"));
    Bits bits(bytes.data(), bytes.size());
    EXPECT_EQ(bits.take(9), 0x1FEU);
    EXPECT_TRUE(bits.failed());
    EXPECT_EQ(bits.take(64), 0U);
    EXPECT_EQ(bits.left(), 0U);
}

TEST(Bits, OfWholeBytesAreAsManyAsThereAre) {
    const HeapBytes bytes(hex("01 02 03"));
    Bits bits(bytes.data(), bytes.size());
    EXPECT_EQ(bits.takeBytes(2), (ByteVector{1, 2}));
    EXPECT_FALSE(bits.failed());
    EXPECT_EQ(bits.takeBytes(255), (ByteVector{3}));
    EXPECT_TRUE(bits.failed());
}

} // namespace
