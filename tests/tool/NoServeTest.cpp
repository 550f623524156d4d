#include "Process.h"

#include <gtest/gtest.h>

TEST(InspectServe, IsNotInEachBuild) {
    const Finished finished = inspect({"--serve", "8080", "-"});
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.errors.substr(0, finished.errors.find('\n')),
              "isdbt-inspect: --serve: this build serves no page");
}
