#include "packets/Spread.h"

#include <gtest/gtest.h>

using inspect::Position;
using inspect::Spread;

TEST(Spread, NothingIsKnownOfNone) {
    const Spread none;
    EXPECT_EQ(none.count(), 0U);
    EXPECT_EQ(none.mean(), std::nullopt);
    EXPECT_EQ(none.minimum(), std::nullopt);
    EXPECT_EQ(none.maximum(), std::nullopt);
}

/// A bucket has what takes as long as its bound, too.
TEST(Spread, SortsIntoBuckets) {
    Spread spread;
    for (const double seconds : {0.0, 0.01, 0.011, 0.5, 60.0, 60.5, 7200.0}) {
        spread.take(seconds, {});
    }
    EXPECT_EQ(spread.buckets(), (Spread::Buckets{2, 1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 2}));
}

TEST(Spread, OfTwoHalvesIsThatOfTheWhole) {
    Spread whole;
    Spread halves[2];
    const double measured[] = {0.25, 0.5, 4.0, 0.125, 4.0, 0.75};
    for (std::uint64_t at = 0; at < 6; ++at) {
        whole.take(measured[at], Position{at + 1, 0, std::nullopt});
        halves[at / 3].take(measured[at], Position{at + 1, 0, std::nullopt});
    }
    halves[0].merge(halves[1]);
    for (const Spread& each : {whole, halves[0]}) {
        EXPECT_EQ(each.count(), 6U);
        EXPECT_EQ(each.sum(), 9.625);
        EXPECT_EQ(each.minimum(), 0.125);
        EXPECT_EQ(each.maximum(), 4.0);
        EXPECT_EQ(each.longestAt().packet, 3U);
        EXPECT_EQ(each.buckets(), (Spread::Buckets{0, 0, 0, 0, 1, 1, 0, 1, 0, 1, 0, 0, 2, 0, 0, 0, 0}));
    }
}
