#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

/// Skips a test that needs the folder of recordings: it lies beside the project, and need not be there.
#define SKIP_WITHOUT_RECORDINGS()                                                                                      \
    if (!std::filesystem::exists(TEST_DATA)) {                                                                         \
        GTEST_SKIP() << "no recordings in " TEST_DATA;                                                                 \
    }                                                                                                                  \
    static_assert(true, "takes the semicolon")

/// Tests of the recordings, all of them.
class RecordedTest : public testing::Test {
protected:
    void SetUp() override { SKIP_WITHOUT_RECORDINGS(); }
};

/// Where a recorded stream lies.
inline std::string recordedStream(const std::string& name) {
    return TEST_DATA "/streams/" + name;
}
