#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

using testing::ContainsRegex;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr const char* LINE = "\r[0-9]+ %  [0-9]+\\.[0-9] MB/s  [0-9]+:[0-9][0-9] left";

/// One whose sections fill a pipe or a terminal, and that then goes on for more than is read at a time.
ByteVector largeStream() {
    StreamBuilder changes;
    for (unsigned number = 0; number < 1000; ++number) {
        changes.section(TOT_PID,
                        shortSection(0x73, join({hex("C079 1245"), {static_cast<QUOR_U8>(number % 10)}, hex("F000")})));
    }
    ByteVector stream = changes.bytes();
    const ByteVector fill = StreamBuilder().null(1000).bytes();
    for (int count = 0; count < 10; ++count) {
        stream.insert(stream.end(), fill.begin(), fill.end());
    }
    return stream;
}

constexpr const char* SUMMARY = "11000 packets of 188 bytes, 1000 sections on 1 PID: 1000 shown";

/// What is left on a terminal of lines that are written over.
std::string withoutErased(const std::string& text) {
    std::string left;
    std::size_t lineBegin = 0;
    std::size_t column = 0;
    for (const char each : text) {
        if (each == '\r') {
            column = 0;
        } else if (each == '\n') {
            left.erase(left.find_last_not_of(' ') + 1 < lineBegin ? lineBegin : left.find_last_not_of(' ') + 1);
            left += each;
            lineBegin = left.size();
            column = 0;
        } else {
            left.resize(std::max(left.size(), lineBegin + column), ' ');
            left.replace(lineBegin + column, 1, 1, each);
            ++column;
        }
    }
    return left;
}

} // namespace

/// The terminal takes no more until somebody reads it, and so the program takes its time.
TEST(InspectProgress, IsShownOnATerminalAndErased) {
    const TemporaryFile file(largeStream());
    Running program({"--view", "tables", "--table", "tot", "--color", "never", file.path()}, Running::On::Terminal);
    usleep(700000);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, ContainsRegex(LINE));
    const std::string left = withoutErased(finished.output);
    EXPECT_THAT(left, Not(HasSubstr("left")));
    EXPECT_THAT(left, HasSubstr(std::string("\n\n") + SUMMARY));
    EXPECT_THAT(left, EndsWith("\n"));
}

TEST(InspectProgress, CountsSeveralFilesAsOne) {
    const TemporaryFile file(largeStream());
    Running program({"--view", "tables", file.path(), file.path()}, Running::On::Terminal);
    usleep(700000);
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, ContainsRegex(LINE));
    EXPECT_THAT(finished.output, Not(HasSubstr("100 %")));
}

TEST(InspectProgress, IsNotShownForWhatIsQuick) {
    Running program({"--view", "tables", SAMPLE_FILE}, Running::On::Terminal);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, Not(HasSubstr("left")));
}

/// Nobody knows how much is still to come.
TEST(InspectProgress, IsNotShownForAPipe) {
    Running program({"--view", "tables", "-"}, Running::On::Terminal);
    const ByteVector stream = StreamBuilder().null(100).bytes();
    for (int count = 0; count < 8; ++count) {
        program.write(stream);
        usleep(100000);
    }
    program.endInput();
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, HasSubstr("800 packets"));
    EXPECT_THAT(finished.output, Not(HasSubstr("left")));
}

TEST(InspectProgress, OfALiveInputIsWhatCameSoFar) {
    const Sender sender;
    Running program({"--view", "stats", sender.address()}, Running::On::Terminal);
    sender.waitForListener();
    for (int count = 0; count < 8; ++count) {
        sender.send(StreamBuilder().null(7).bytes());
        usleep(100000);
    }
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_THAT(finished.output, ContainsRegex("\r0:0[0-9]  0\\.0 MB  [0-9]+\\.[0-9] Mbit/s"));
    EXPECT_THAT(finished.output, Not(HasSubstr("left")));
    EXPECT_THAT(withoutErased(finished.output), Not(HasSubstr("Mbit/s")));
}

TEST(InspectProgress, IsNotShownInAPipe) {
    const TemporaryFile file(largeStream());
    Running program({"--view", "tables", file.path()});
    usleep(700000);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr(SUMMARY));
    EXPECT_THAT(finished.output, Not(HasSubstr("left")));
}
