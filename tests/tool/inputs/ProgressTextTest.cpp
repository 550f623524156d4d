#include "terminal/ProgressLine.h"

#include <gtest/gtest.h>

TEST(ProgressText, TellsPartSpeedAndTimeLeft) {
    EXPECT_EQ(inspect::progressText(420000000, 1000000000, 2), "42 %  210.0 MB/s  0:03 left");
    EXPECT_EQ(inspect::progressText(1000000, 1000000000, 1), "0 %  1.0 MB/s  16:39 left");
    EXPECT_EQ(inspect::progressText(50000, 1000000000, 1), "0 %  0.1 MB/s  5:33:19 left");
    EXPECT_EQ(inspect::progressText(1000, 1000, 1), "100 %  0.0 MB/s  0:00 left");
}

TEST(ProgressText, KnowsFilesThatChangeWhileTheyAreRead) {
    EXPECT_EQ(inspect::progressText(2000000, 1000000, 1), "100 %  1.0 MB/s  0:00 left");
    EXPECT_EQ(inspect::progressText(0, 0, 1), "100 %  0.0 MB/s  0:00 left");
}

TEST(ProgressText, OfWhatHasNoEndTellsTimeAmountAndRate) {
    EXPECT_EQ(inspect::progressText(15300000, 12), "0:12  15.3 MB  10.2 Mbit/s");
    EXPECT_EQ(inspect::progressText(0, 3723), "1:02:03  0.0 MB  0.0 Mbit/s");
}
