#include "inputs/Timetable.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

TEST(Timetable, SaysOnceThatInterimResultsAreDue) {
    Timetable timetable({10, {}, {}});
    EXPECT_FALSE(timetable.isInterimDue(0));
    EXPECT_FALSE(timetable.isInterimDue(9.9));
    EXPECT_TRUE(timetable.isInterimDue(10));
    EXPECT_FALSE(timetable.isInterimDue(10));
    EXPECT_FALSE(timetable.isInterimDue(19.9));
    EXPECT_TRUE(timetable.isInterimDue(20.1));
}

TEST(Timetable, MakesNotUpForATimeThatJumps) {
    Timetable timetable({10, {}, {}});
    EXPECT_TRUE(timetable.isInterimDue(95));
    EXPECT_FALSE(timetable.isInterimDue(96));
    EXPECT_FALSE(timetable.isInterimDue(50));
    EXPECT_TRUE(timetable.isInterimDue(100));
}

TEST(Timetable, SaysMoreAndMoreRarelyThatTheyAre) {
    Timetable timetable({{}, {}, {}, true});
    std::vector<int> due;
    for (int second = 0; second < 300; ++second) {
        if (timetable.isInterimDue(second)) {
            due.push_back(second);
        }
    }
    EXPECT_EQ(due, (std::vector<int>{1, 2, 4, 8, 16, 32, 64, 124, 184, 244}));
}

TEST(Timetable, GoesByWhatWasAskedFor) {
    Timetable timetable({10, {}, {}, true});
    EXPECT_FALSE(timetable.isInterimDue(9));
    EXPECT_TRUE(timetable.isInterimDue(10));
    EXPECT_TRUE(timetable.isInterimDue(20));
}

TEST(Timetable, HasNothingToDo) {
    Timetable timetable({});
    EXPECT_FALSE(timetable.isInterimDue(1e9));
    EXPECT_FALSE(timetable.isOver(1e9));
}

TEST(Timetable, Ends) {
    const Timetable timetable({{}, 5, {}});
    EXPECT_FALSE(timetable.isOver(4.9));
    EXPECT_TRUE(timetable.isOver(5));
}

TEST(SilenceWatch, TellsTheBeginAndTheEndOfASilence) {
    SilenceWatch watch(5);
    EXPECT_FALSE(watch.look(1, true));
    EXPECT_FALSE(watch.look(5.9, false));
    const std::optional<Silence> begun = watch.look(6, false);
    ASSERT_TRUE(begun);
    EXPECT_FALSE(begun->isOver);
    EXPECT_EQ(begun->seconds, 5);
    EXPECT_FALSE(watch.look(20, false));
    const std::optional<Silence> over = watch.look(21.5, true);
    ASSERT_TRUE(over);
    EXPECT_TRUE(over->isOver);
    EXPECT_EQ(over->seconds, 20.5);
    EXPECT_FALSE(watch.look(22, true));
}

/// It was too long, though nobody looked in between.
TEST(SilenceWatch, SaysNothingOfWhatIsOverAlready) {
    SilenceWatch watch(5);
    EXPECT_FALSE(watch.look(8, true));
}

} // namespace
