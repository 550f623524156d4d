#include "Process.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string recorded(const std::string& name) {
    return TEST_DATA "/streams/" + name;
}

class InspectRecordedStreams : public testing::Test {
protected:
    void SetUp() override {
        if (!std::filesystem::exists(TEST_DATA "/streams")) {
            GTEST_SKIP() << "no recorded streams";
        }
    }
};

} // namespace

/// The values are those of the independent readings beside the stream.
TEST_F(InspectRecordedStreams, ItalianMultiplexWithTwentyProgramsAndThreeTimes) {
    const Finished finished = inspect({recorded("tsduck-018.ts")});
    EXPECT_EQ(finished.status, 3); // one of its applications comes over a protocol that is not for these receivers
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, StartsWith("PAT  PID 0x0000  version 2  section 0/0  current  packet 3\n"
                                            "  transport_stream_id  0x1770 (6000)\n"
                                            "  network_pid          0x0000 (0)\n"
                                            "  programs (20)\n"
                                            "    program_number  program_map_pid\n"
                                            "    0x0001 (1)      0x0100 (256)\n"
                                            "    0x0002 (2)      0x0101 (257)\n"));
    EXPECT_THAT(finished.output, HasSubstr("    0x0383 (899)    0x010C (268)\n\n"));
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  1518525305 = 2018-02-13T12:35:05Z\n"));
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  1518525306 = 2018-02-13T12:35:06Z\n"));
    EXPECT_THAT(finished.output, HasSubstr("  unix_time  1518525307 = 2018-02-13T12:35:07Z\n"));
    EXPECT_THAT(finished.output, HasSubstr("      \"ITA\"         0                  0 ahead of UTC              "
                                           "3600 s = +01:00\n"));
    EXPECT_THAT(finished.output, HasSubstr("10 shown, 1 rejected, 0 CRC errors, 0 discontinuities\n"));
}

TEST_F(InspectRecordedStreams, ClockOfATestStream) {
    const Finished finished = inspect({recorded("tsduck-182.1.ts")});
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, StartsWith("TOT  PID 0x0014  packet 1\n"
                                            "  unix_time  1903823940 = 2030-04-30T23:59:00Z\n"));
    EXPECT_THAT(finished.output, HasSubstr(": 91 shown, 0 rejected"));
}

TEST_F(InspectRecordedStreams, SectionsWithWrongLengths) {
    const Finished finished = inspect({recorded("tsduck-120.ts")});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("30 packets of 188 bytes, 31 sections on 1 PID: 0 shown"));
}

TEST_F(InspectRecordedStreams, OneSegMultiplexFromALab) {
    const Finished finished = inspect({recorded("gr-isdbt-tx.ts")});
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr("2128 packets of 188 bytes"));
    EXPECT_THAT(finished.output, HasSubstr("PAT  PID 0x0000"));
}

TEST_F(InspectRecordedStreams, EachIsReadToItsEnd) {
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/streams")) {
        const Finished finished = inspect({entry.path().string()});
        EXPECT_TRUE(finished.status == 0 || finished.status == 3) << entry.path();
        EXPECT_EQ(finished.errors, "") << entry.path();
    }
}
