#include "Running.h"
#include "Streams.h"

#include <chrono>
#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr const char* PAT_SHOWN = "PAT  PID 0x0000  version 0  section 0/0  current  packet 1\n"
                                  "  transport_stream_id  0x0735 (1845)\n"
                                  "  network_pid          0x0000 (0)\n"
                                  "  programs (1)\n"
                                  "    program_number  program_map_pid\n"
                                  "    0xE6A0 (59040)  0x0101 (257)\n"
                                  "\n";

constexpr const char* SUMMARY =
    "10 packets of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n";

/// Ten packets of a stream whose PAT changes with each ten.
ByteVector part(unsigned version) {
    constexpr std::size_t SIZE = 10 * PACKET_SIZE;
    StreamBuilder stream;
    for (unsigned each = 0; each <= version; ++each) {
        stream.section(PAT_PID, pat("E6A0 E101", each)).null(9);
    }
    return slice(stream.bytes(), version * SIZE, (version + 1) * SIZE);
}

/// Waits for a text in a file.
bool comes(const std::string& path, const std::string& text) {
    for (int round = 0; round < 10000; ++round) {
        if (access(path.c_str(), R_OK) == 0 && readText(path).find(text) != std::string::npos) {
            return true;
        }
        std::this_thread::sleep_for(1ms);
    }
    return false;
}

} // namespace

TEST(InspectLog, HasWhatElseGoesToStandardOutput) {
    const TemporaryFile log;
    const TemporaryFile file(part(0));
    for (int round = 0; round < 2; ++round) {
        const Finished finished = inspectTables({"--table", "pat", "--log", log.path(), file.path()});
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.output, "");
        EXPECT_EQ(finished.errors, "");
    }
    EXPECT_EQ(readText(log.path()), std::string(PAT_SHOWN) + SUMMARY + PAT_SHOWN + SUMMARY);
}

TEST(InspectLog, IsOpenedAnewWhenItIsRotated) {
    const TemporaryFile log;
    const TemporaryFile old;
    Running program({"--view", "tables", "--table", "pat", "--log", log.path(), "-"});
    program.write(part(0));
    ASSERT_TRUE(comes(log.path(), PAT_SHOWN));
    ASSERT_EQ(std::rename(log.path().c_str(), old.path().c_str()), 0);
    program.write(part(1));
    ASSERT_TRUE(comes(old.path(), "version 1"));
    program.signal(SIGUSR1);
    ASSERT_TRUE(comes(log.path(), ""));
    program.write(part(2));
    ASSERT_TRUE(comes(log.path(), "version 2"));
    program.endInput();
    EXPECT_EQ(program.finish().status, 0);
    EXPECT_THAT(readText(log.path()), testing::StartsWith("PAT  PID 0x0000  version 2"));
    EXPECT_THAT(readText(old.path()), testing::Not(testing::HasSubstr("version 2")));
}

/// Who rotates logs may be wrong about their folder.
TEST(InspectLog, IsWrittenOnWhenItCannotBeOpenedAnew) {
    const std::string folder = TemporaryFile().path() + "-folder";
    const std::string moved = folder + "-moved";
    ASSERT_EQ(mkdir(folder.c_str(), 0700), 0);
    Running program({"--view", "tables", "--table", "pat", "--log", folder + "/log", "-"});
    program.write(part(0));
    ASSERT_TRUE(comes(folder + "/log", PAT_SHOWN));
    ASSERT_EQ(std::rename(folder.c_str(), moved.c_str()), 0);
    program.signal(SIGUSR1);
    program.write(part(1));
    EXPECT_TRUE(comes(moved + "/log", "version 1"));
    program.endInput();
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "isdbt-inspect: the log cannot be opened anew; the old file is written on\n");
    unlink((moved + "/log").c_str());
    rmdir(moved.c_str());
}

TEST(InspectLog, MustBeWritable) {
    const Finished finished = inspect({"--log", "/no-such-folder/log", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: /no-such-folder/log: No such file or directory\n");
}
