#include "Running.h"
#include "Streams.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr const char* PAT_BEGINS = "PAT  PID 0x0000";

ByteVector smallStream() {
    return StreamBuilder().section(PAT_PID, longSection(0x00, {}, hex("0001 E100"))).null(9).bytes();
}

constexpr const char* SUMMARY =
    "\n10 packets of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n";

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
    for (const int signal : {SIGINT, SIGTERM}) {
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
            usleep(200000); // it cannot be seen to have begun
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
    EXPECT_THAT(finished.output, testing::Not(HasSubstr("16000 packets")));
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

/// Nothing comes in, and the output waits for its reader.
TEST(InspectInterruption, SecondOneKills) {
    StreamBuilder changes;
    for (unsigned second = 0; second < 5000; ++second) {
        changes.section(TOT_PID,
                        shortSection(0x73, join({hex("C079 1245"), {static_cast<QUOR_U8>(second % 10)}, hex("F000")})));
    }
    const TemporaryFile file(changes.bytes());
    Running program({"--view", "tables", file.path()});
    ASSERT_TRUE(program.waitFor("TOT  PID 0x0014  packet 1\n"));
    ASSERT_TRUE(program.waitUntilBlocked());
    // Two that come before the program is given the processor are one.
    for (int count = 0; count < 50; ++count) {
        program.signal(SIGINT);
        usleep(10000);
    }
    EXPECT_EQ(program.finish().status, -1);
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
