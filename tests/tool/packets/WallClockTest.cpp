#include "packets/WallClock.h"

#include <gtest/gtest.h>

namespace {

constexpr std::int64_t NOON = 1750075200; // 2025-06-16T12:00:00Z

std::string shownAt(const inspect::WallClock& clock, double seconds) {
    return inspect::rfc3339(clock.at(seconds).value());
}

} // namespace

TEST(WallClock, KnowsNothingBeforeItIsSet) {
    EXPECT_FALSE(inspect::WallClock().at(1.0));
}

TEST(WallClock, KnowsNothingWithoutTheStreamsClock) {
    inspect::WallClock clock;
    clock.set(3, NOON);
    EXPECT_FALSE(clock.at(std::nullopt));
}

TEST(WallClock, GoesOnWithTheStream) {
    inspect::WallClock clock;
    clock.set(3.25, NOON);
    EXPECT_EQ(shownAt(clock, 3.25), "2025-06-16T12:00:00.000Z");
    EXPECT_EQ(shownAt(clock, 3.3756), "2025-06-16T12:00:00.126Z");
    EXPECT_EQ(shownAt(clock, 3.25 + 86400), "2025-06-17T12:00:00.000Z");
    EXPECT_EQ(clock.at(4)->source, inspect::WallTime::Source::TimeTable);
}

/// A TOT says whole seconds, and comes when it can.
TEST(WallClock, GoesOnEvenlyWhereTheStreamSaysNothingNew) {
    inspect::WallClock clock;
    clock.set(0, NOON);
    clock.set(5.7, NOON + 5);
    EXPECT_EQ(shownAt(clock, 5.7), "2025-06-16T12:00:05.700Z");
    clock.set(10.2, NOON + 11);
    EXPECT_EQ(shownAt(clock, 10.2), "2025-06-16T12:00:10.200Z");
}

TEST(WallClock, FollowsAnotherTime) {
    inspect::WallClock clock;
    clock.set(0, NOON);
    clock.set(5, NOON + 7);
    EXPECT_EQ(shownAt(clock, 6), "2025-06-16T12:00:08.000Z");
    clock.set(10, NOON - 3600);
    EXPECT_EQ(shownAt(clock, 10.5), "2025-06-16T11:00:00.500Z");
}

/// When it began does not change with a TOT that is set anew, or with a stream that begins again.
TEST(WallClock, KeepsWhenItBegan) {
    inspect::WallClock clock;
    EXPECT_FALSE(clock.atBegin());
    clock.set(5, NOON);
    clock.set(10, NOON - 3600);
    EXPECT_EQ(inspect::rfc3339(clock.atBegin().value()), "2025-06-16T11:59:55.000Z");
}

TEST(WallClock, ShowsTimesBefore1970) {
    EXPECT_EQ(inspect::rfc3339({-1, inspect::WallTime::Source::TimeTable}), "1969-12-31T23:59:59.999Z");
}

TEST(WallClock, ArrivalIsNow) {
    const inspect::WallTime now = inspect::arrivalTime();
    EXPECT_EQ(now.source, inspect::WallTime::Source::Arrival);
    EXPECT_GT(now.milliseconds, NOON * 1000);
}
