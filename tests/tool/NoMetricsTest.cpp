#include "Process.h"

#include <gtest/gtest.h>

TEST(InspectMetrics, AreNotInEachBuild) {
    const Finished finished = inspect({"--metrics", "9464", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.errors.substr(0, finished.errors.find('\n')),
              "isdbt-inspect: --metrics: this build serves no metrics");
}
