#include "describing/TimeZone.h"

#include <gtest/gtest.h>

namespace {

using inspect::TimeZone;
using inspect::UnknownTimeZone;

TEST(TimeZone, IsThatOfBrasiliaAndSaidToBeAssumed) {
    EXPECT_EQ(TimeZone().read(1749990896), "2025-06-15 12:34:56 (UTC-3 assumed)");
    EXPECT_EQ(TimeZone().iso(1749990896), "2025-06-15T12:34:56-03:00");
}

TEST(TimeZone, ThatIsSetIsNotAssumed) {
    EXPECT_EQ(TimeZone("UTC-3").read(0), "1970-01-01 00:00:00 UTC-3");
    EXPECT_EQ(TimeZone("UTC").read(0), "1970-01-01 00:00:00 UTC");
    EXPECT_EQ(TimeZone("UTC").iso(0), "1970-01-01T00:00:00+00:00");
    EXPECT_EQ(TimeZone("UTC+9").iso(0), "1970-01-01T00:00:00+09:00");
    EXPECT_EQ(TimeZone("UTC-03:30").read(0), "1970-01-01 00:00:00 UTC-3:30");
    EXPECT_EQ(TimeZone("UTC-03:30").iso(0), "1970-01-01T00:00:00-03:30");
    EXPECT_EQ(TimeZone("UTC+14").read(0), "1970-01-01 00:00:00 UTC+14");
}

TEST(TimeZone, MayBeAssumedToBeThatOfJapan) {
    EXPECT_EQ(TimeZone::ofJapan().read(0), "1970-01-01 00:00:00 (UTC+9 assumed)");
}

TEST(TimeZone, ShowsTimesThatTheLibraryWraps) {
    EXPECT_EQ(TimeZone("UTC").read(-2139460096), "2038-04-22 00:00:00 UTC"); // Modified Julian Date 65535
}

TEST(TimeZone, IsToldByTheTimeInTruth) {
    constexpr std::int32_t SHOWN = 1749990896;
    constexpr std::int64_t HOUR = 3600;
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN), "UTC");
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN + 3 * HOUR), "");
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN - 9 * HOUR), "UTC+9");
    EXPECT_EQ(TimeZone("UTC").otherBy(SHOWN, SHOWN), "");
    EXPECT_EQ(TimeZone("UTC").otherBy(SHOWN, SHOWN + 3 * HOUR), "UTC-3");
    EXPECT_EQ(TimeZone("UTC-4").otherBy(SHOWN, SHOWN + 4 * HOUR), "");
}

TEST(TimeZone, IsToldWithinTwoMinutes) {
    constexpr std::int32_t SHOWN = 1749990896;
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN + 120), "UTC");
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN + 121), "");
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN - 120), "UTC");
    EXPECT_EQ(TimeZone().otherBy(SHOWN, SHOWN - 121), "");
}

TEST(TimeZone, IsToldBeyond2038) {
    EXPECT_EQ(TimeZone().otherBy(-2139460096, 2155507200), "UTC");
}

TEST(TimeZone, OfAnotherNameIsNone) {
    for (const char* const name : {"", "BRT", "utc", "UTC3", "UTC-", "UTC-3:60", "UTC+14:01", "UTC+99", "UTC-3 "}) {
        EXPECT_THROW(TimeZone{name}, UnknownTimeZone) << name;
    }
}

} // namespace
