#include "transmission/Trailer.h"

#include "support/Bytes.h"

#include <gtest/gtest.h>

using inspect::Trailer;

/// Off the air: a null packet in an odd frame, and the next packet.
TEST(Trailer, OfARecording) {
    const ByteVector bytes = hex("A9 0F E7 CC FF FF FF FF 69 F9 92 95 D6 A0 16 CD");
    const std::optional<Trailer> trailer = Trailer::of(bytes.data());
    ASSERT_TRUE(trailer);
    EXPECT_TRUE(trailer->emergency);
    EXPECT_FALSE(trailer->frameHead);
    EXPECT_TRUE(trailer->frameIndicator);
    EXPECT_EQ(trailer->layer, 0U);
    EXPECT_EQ(trailer->counter, 1996U);
}

TEST(Trailer, EachFieldByItself) {
    const auto of = [](const std::string& digits) { return Trailer::of(HeapBytes(hex(digits)).data()).value(); };
    const Trailer none = of("A0 00 00 00");
    EXPECT_FALSE(none.emergency || none.frameHead || none.frameIndicator);
    EXPECT_EQ(none.layer + none.counter, 0U);
    EXPECT_TRUE(of("A8 00 00 00").emergency);
    EXPECT_TRUE(of("A2 00 00 00").frameHead);
    EXPECT_TRUE(of("A1 00 00 00").frameIndicator);
    EXPECT_EQ(of("A0 8F 00 00").layer, 8U);
    EXPECT_EQ(of("A0 0F E0 00").counter, 0U);
    EXPECT_EQ(of("A0 0F FF FF").counter, 8191U);
}

TEST(Trailer, OfOtherStreamsIsNone) {
    for (const char* const first : {"00", "5A", "80", "20", "E9", "FF", "89"}) {
        EXPECT_FALSE(Trailer::of(hex(std::string(first) + "0F E7 CC").data())) << first;
    }
}

TEST(Trailer, NamesOfLayers) {
    EXPECT_EQ(inspect::layerName(0), "none");
    EXPECT_EQ(inspect::layerName(1), "A");
    EXPECT_EQ(inspect::layerName(3), "C");
    EXPECT_EQ(inspect::layerName(4), "AC");
    EXPECT_EQ(inspect::layerName(8), "IIP");
    EXPECT_EQ(inspect::layerName(15), "15");
}
