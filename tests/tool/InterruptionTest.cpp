#include "Running.h"
#include "Sender.h"
#include "Streams.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* PAT_BEGINS = "PAT  PID 0x0000";

ByteVector smallStream() {
    return StreamBuilder().section(PAT_PID, longSection(0x00, {}, hex("0001 E100"))).null(9).bytes();
}

constexpr const char* SUMMARY =
    "\n10 packets of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n";

std::vector<std::string> wordsOf(std::vector<std::string> words, const std::vector<std::string>& more) {
    words.insert(words.end(), more.begin(), more.end());
    return words;
}

/// A pipe with a name, which goes with the object.
class NamedPipe {
public:
    NamedPipe() { mkfifo(m_path.c_str(), 0600); }
    ~NamedPipe() { unlink(m_path.c_str()); }
    NamedPipe(const NamedPipe&) = delete;
    NamedPipe& operator=(const NamedPipe&) = delete;
    const std::string& path() const { return m_path; }

private:
    std::string m_path = TemporaryFile().path() + "-pipe";
};

} // namespace

TEST(InspectInterruption, EndsAPipe) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        Running program({"--view", "tables", "--table", "pat", "-"});
        program.write(smallStream());
        ASSERT_TRUE(program.waitFor(PAT_BEGINS));
        program.signal(signal);
        const Finished finished = program.finish();
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.errors, "");
        EXPECT_THAT(finished.output, EndsWith(SUMMARY));
    }
}

TEST(InspectInterruption, TellsFaultsByItsStatus) {
    for (const bool lenient : {false, true}) {
        std::vector<std::string> arguments{"--view", "tables", "--table", "pat", "-"};
        if (lenient) {
            arguments.emplace_back("--lenient");
        }
        Running program(arguments);
        program.write(StreamBuilder().section(PAT_PID, longSection(0x00, {}, hex("0001 E100 00"))).null(9).bytes());
        ASSERT_TRUE(program.waitFor("REJECTED"));
        program.signal(SIGINT);
        EXPECT_EQ(program.finish().status, lenient ? 0 : 3);
    }
}

TEST(InspectInterruption, CutPacketIsNoError) {
    const ByteVector stream = smallStream();
    constexpr int NO_PAT_CAME = 3;
    const std::vector<std::pair<std::size_t, int>> cuts{{0, NO_PAT_CAME}, {100, NO_PAT_CAME}, {stream.size() + 100, 0}};
    for (const auto& [size, status] : cuts) {
        Running program({"--view", "tables", "--table", "pat", "-"});
        program.write(slice(join({stream, stream}), 0, size));
        if (size > stream.size()) {
            ASSERT_TRUE(program.waitFor(PAT_BEGINS));
        } else {
            ASSERT_TRUE(program.waitUntilCatching(SIGINT));
            usleep(200000); // it cannot be seen to have read anything
        }
        program.signal(SIGINT);
        const Finished finished = program.finish();
        EXPECT_EQ(finished.status, status) << size;
        EXPECT_EQ(finished.errors, "") << size;
        EXPECT_THAT(finished.output, EndsWith(" rejected, 0 CRC errors, 0 discontinuities\n")) << size;
    }
}

TEST(InspectInterruption, EndsSections) {
    Running program({"--view", "tables", "--sections", "-"});
    const ByteVector section = longSection(0x00, {}, hex("0001 E100"));
    program.write(join({section, slice(section, 0, 9)}));
    ASSERT_TRUE(program.waitFor("PAT  version 0"));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith("\n1 section: 1 shown, 0 rejected, 0 CRC errors\n"));
}

/// Nobody may ever write to it.
TEST(InspectInterruption, EndsANamedPipeThatNobodyWritesTo) {
    const NamedPipe pipe;
    Running program({"--table", "tot", pipe.path()});
    ASSERT_TRUE(program.waitUntilCatching(SIGINT));
    usleep(200000);
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

TEST(InspectInterruption, NamedPipeIsReadToItsEnd) {
    const NamedPipe pipe;
    Running program({"--view", "tables", "--table", "pat", pipe.path()});
    usleep(100000);
    FILE* const writer = std::fopen(pipe.path().c_str(), "wb");
    const ByteVector stream = smallStream();
    std::fwrite(stream.data(), 1, stream.size(), writer);
    std::fclose(writer);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith(SUMMARY));
}

/// The program waits to write: nothing is read from it until it is interrupted.
TEST(InspectInterruption, EndsAFile) {
    StreamBuilder changes;
    for (unsigned second = 0; second < 2000; ++second) {
        changes.section(TOT_PID,
                        shortSection(0x73, join({hex("C079 1245"), {static_cast<QUOR_U8>(second % 10)}, hex("F000")})));
    }
    ByteVector stream = changes.bytes();
    stream = join({stream, stream, stream, stream, stream, stream, stream, stream});
    const TemporaryFile file(stream);
    Running program({"--view", "tables", "--table", "tot", file.path()});
    ASSERT_TRUE(program.waitFor("TOT  PID 0x0014  packet 1\n"));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, EndsWith(" rejected, 0 CRC errors, 0 discontinuities\n"));
    EXPECT_THAT(finished.output, Not(HasSubstr("16000 packets")));
}

TEST(InspectInterruption, TakesNoOtherFileAfterIt) {
    Running program({"--view", "tables", "--table", "pat", "-", SAMPLE_FILE});
    program.write(smallStream());
    ASSERT_TRUE(program.waitFor(PAT_BEGINS));
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith(SUMMARY));
}

namespace {

/// More sections than a pipe has room for.
ByteVector changingStream() {
    StreamBuilder changes;
    for (unsigned second = 0; second < 5000; ++second) {
        changes.section(TOT_PID,
                        shortSection(0x73, join({hex("C079 1245"), {static_cast<QUOR_U8>(second % 10)}, hex("F000")})));
    }
    return changes.bytes();
}

constexpr useconds_t A_SECOND = 1000000;

/// In so many seconds the program has begun, be it under an emulator.
const char* const START = *EMULATOR == '\0' ? "1" : "5";

} // namespace

/// The output waits for its reader.
TEST(InspectInterruption, LaterOneKills) {
    const TemporaryFile file(changingStream());
    Running program({"--view", "tables", file.path()});
    ASSERT_TRUE(program.waitFor("TOT  PID 0x0014  packet 1\n"));
    ASSERT_TRUE(program.waitUntilBlocked());
    program.signal(SIGINT);
    usleep(A_SECOND * 3 / 2);
    program.signal(SIGINT);
    EXPECT_EQ(program.finish().status, -1);
}

TEST(InspectInterruption, SecondOneWithinASecondIsTheSame) {
    const TemporaryFile file(changingStream());
    Running program({"--view", "tables", "--table", "tot", file.path()});
    ASSERT_TRUE(program.waitFor("TOT  PID 0x0014  packet 1\n"));
    ASSERT_TRUE(program.waitUntilBlocked());
    for (const int signal : {SIGINT, SIGINT, SIGTERM, SIGHUP, SIGINT}) {
        program.signal(signal);
        usleep(A_SECOND / 50);
    }
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output, EndsWith(" rejected, 0 CRC errors, 0 discontinuities\n"));
}

/// timeout(1) signals the process, and then its group.
TEST(InspectInterruption, TimeoutGetsTheResult) {
    const Sender sender;
    for (int round = 0; round < 3; ++round) {
        const Finished finished = runProgram(
            "timeout", wordsOf({"-s", "INT", START},
                               commandOf(INSPECT_PROGRAM, {"--view", "stats", "--table", "tot", sender.address()})));
        EXPECT_EQ(finished.output, "0 sections: 0 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
    }
}

TEST(InspectInterruption, ResultThatNobodyReadsGoesToStandardError) {
    Running program({"--view", "stats", "--table", "pat", "-"});
    program.write(smallStream());
    ASSERT_TRUE(program.waitUntilCatching(SIGINT));
    usleep(A_SECOND / 5);
    program.closeOutput();
    program.signal(SIGINT);
    const Finished finished = program.finish();
    EXPECT_EQ(finished.status, 1);
    EXPECT_THAT(finished.errors,
                StartsWith("isdbt-inspect: nobody reads the output any more; what is left of it follows here\n"));
    EXPECT_THAT(finished.errors, EndsWith(SUMMARY));
}

namespace {

/// Another than that of the tests.
class Terminal {
public:
    Terminal() {
        std::array<char, 64> name{};
        if (openpty(&m_screen, &m_end, name.data(), nullptr, nullptr) != 0) {
            throw std::runtime_error("no terminal");
        }
        m_path = name.data();
    }
    ~Terminal() {
        close(m_screen);
        close(m_end);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;

    const std::string& path() const { return m_path; }

private:
    int m_screen = -1;
    int m_end = -1;
    std::string m_path;
};

/// So that two seconds have passed for certain.
const char* const LATER = *EMULATOR == '\0' ? "3" : "10";

/// What Ctrl-C leaves of a pipe to a program that writes a log, in the log and on standard error.
/// @param errors where standard error goes
Finished interruptPipe(const std::string& reader, const std::string& seconds = START,
                       const std::string& errors = "&2") {
    const Sender sender;
    const TemporaryFile log;
    const std::string script = "set -m; \"${@:2}\" 2>" + errors + " | " + reader + " \"$1\" >/dev/null & sleep " +
                               seconds + "; kill -INT -- -$(jobs -p); wait; cat \"$1\"";
    return runProgram("/bin/bash",
                      wordsOf({"-c", script, "bash", log.path()},
                              commandOf(INSPECT_PROGRAM, {"--view", "stats", "--table", "tot", sender.address()})));
}

constexpr const char* NOTHING_CAME = "0 sections: 0 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n";

} // namespace

TEST(InspectInterruption, LosesNothingWhenTheReaderOfThePipeGoesWithIt) {
    const Finished finished = interruptPipe("tee");
    EXPECT_THAT(finished.output + finished.errors, HasSubstr(NOTHING_CAME));
}

/// Who sits at a terminal and writes down with tee what comes finds something there.
TEST(InspectInterruption, LeavesInTheLogOfWhoSitsThereWhatCameBefore) {
    const Terminal terminal;
    const Finished finished = interruptPipe("tee", LATER, terminal.path());
    EXPECT_THAT(finished.output, MatchesRegex("-- 1\\.[0-9] s --\n0 sections: 0 shown(.|\n)*"));
    EXPECT_THAT(finished.output, HasSubstr("-- 2."));
}

TEST(InspectInterruption, IsReadByWhoDoesNotGo) {
    const Finished finished = interruptPipe("tee -i");
    EXPECT_EQ(finished.output, NOTHING_CAME);
    EXPECT_THAT(finished.errors, Not(HasSubstr("isdbt-inspect: ")));
}

/// As a shell leaves it to what it starts in the background.
TEST(InspectInterruption, StaysIgnoredWhereItWas) {
    std::signal(SIGINT, SIG_IGN);
    Running program({"--view", "tables", "--table", "pat,tot", "-"});
    std::signal(SIGINT, SIG_DFL);
    program.write(smallStream());
    ASSERT_TRUE(program.waitFor(PAT_BEGINS));
    program.signal(SIGINT);
    program.write(StreamBuilder().section(TOT_PID, shortSection(0x73, hex("C079 124500 F000"))).bytes());
    EXPECT_TRUE(program.waitFor("TOT  PID 0x0014"));
    program.endInput();
    EXPECT_EQ(program.finish().status, 0);
}
