#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr unsigned NIT_PID = 0x0010;
constexpr unsigned CLOCK_PID = 0x0100;
constexpr std::uint64_t SECOND = 27000000;

ByteVector nit(QUOR_U16 network, unsigned version, const std::string& payload = "F000 F006 0735 0735 F000") {
    LongHeader header;
    header.extension = network;
    header.version = version;
    return longSection(0x40, header, hex(payload));
}

ByteVector rejectedNit(QUOR_U16 network, unsigned version) {
    return nit(network, version, "F002 40FF F000");
}

/// The changes that are shown of a stream, a line each.
Finished changes(const ByteVector& stream, std::vector<std::string> arguments) {
    const TemporaryFile file(stream);
    arguments.insert(arguments.end(), {"--view", "diff", "--table", "nit", "--width", "200", file.path()});
    return inspect(arguments);
}

ByteVector threeNetworks() {
    return StreamBuilder()
        .section(NIT_PID, nit(0x0735, 3))
        .section(NIT_PID, nit(0x0736, 4))
        .section(NIT_PID, nit(0x0737, 5))
        .bytes();
}

/// Ten seconds with one network all along, and a second one from 5 s on.
ByteVector tenSeconds() {
    StreamBuilder stream;
    for (unsigned tenth = 0; tenth <= 100; ++tenth) {
        stream.clock(CLOCK_PID, SECOND * tenth / 10);
        if (tenth % 10 == 0) {
            stream.section(NIT_PID, nit(0x0735, 3));
        }
        if (tenth == 50) {
            stream.section(NIT_PID, nit(0x0736, 4));
        }
    }
    return stream.bytes();
}

constexpr const char* SAMPLE_SINCE =
    "+ AIT 0x0009  PID 0x0130  version 0  section 0/0  packet 387  1.608 s  new  2025-06-15T21:30:01.600Z\n"
    "+ AIT 0x0001  PID 0x0130  version 0  section 0/0  packet 395  1.642 s  new  2025-06-15T21:30:01.633Z\n"
    "480 packets of 188 bytes, 73 sections on 9 PIDs: 2 shown, 0 rejected, 2 not chosen, 0 CRC errors, "
    "0 discontinuities\n";

} // namespace

TEST(Choosing, ByExtension) {
    const Finished finished = changes(threeNetworks(), {"--extension", "0x0735", "--extension", "1847"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output,
              "+ NIT 0x0735  PID 0x0010  version 3  section 0/0  packet 1  new\n"
              "+ NIT 0x0737  PID 0x0010  version 5  section 0/0  packet 3  new\n"
              "3 packets of 188 bytes, 3 sections on 1 PID: 2 shown, 0 rejected, 1 not chosen, 0 CRC errors, "
              "0 discontinuities\n");
}

TEST(Choosing, ByVersion) {
    const Finished finished = changes(threeNetworks(), {"--version", "4"});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(finished.output,
                StartsWith("+ NIT 0x0736  PID 0x0010  version 4  section 0/0  packet 2  new\n3 packets"));
    EXPECT_EQ(changes(threeNetworks(), {"--version=4"}).output, finished.output);
    EXPECT_THAT(changes(threeNetworks(), {"--version", "4", "--version", "5"}).output, HasSubstr(" 2 shown, "));
}

TEST(Choosing, ByVersionAndExtensionAtOnce) {
    EXPECT_THAT(changes(threeNetworks(), {"--version", "4", "--extension", "0x0735"}).output,
                HasSubstr(": 0 shown, 0 rejected, 3 not chosen, "));
}

/// Without a number it is what it is in other programs.
TEST(Choosing, ByVersionNeedsANumber) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"--version"},
                                                      {"-V"},
                                                      {"--version", SAMPLE_FILE},
                                                      {"--version", "--json", SAMPLE_FILE},
                                                      {SAMPLE_FILE, "--version"}}) {
        const Finished finished = inspect(arguments);
        EXPECT_EQ(finished.status, 0);
        EXPECT_EQ(finished.output, "isdbt-inspect " INSPECT_VERSION "\n");
    }
}

/// A TOT has neither.
TEST(Choosing, TablesWithTheShortHeaderHaveNoVersionAndNoExtension) {
    EXPECT_EQ(inspect({"--view", "diff", "--width", "200", "--table", "tot", "--version", "0", SAMPLE_FILE}).output,
              "480 packets of 188 bytes, 73 sections on 9 PIDs: 0 shown, 0 rejected, 2 not chosen, 0 CRC errors, "
              "0 discontinuities\n");
}

TEST(Choosing, RejectedOnes) {
    const ByteVector stream = StreamBuilder()
                                  .section(NIT_PID, nit(0x0735, 3))
                                  .section(NIT_PID, rejectedNit(0x0736, 4))
                                  .section(NIT_PID, rejectedNit(0x0737, 5))
                                  .bytes();
    const Finished all = changes(stream, {"--rejected"});
    EXPECT_EQ(all.status, 3);
    EXPECT_THAT(all.output, StartsWith("! NIT 0x0736  PID 0x0010  version 4  section 0/0  packet 2  REJECTED\n"));
    EXPECT_THAT(all.output, HasSubstr("\n! NIT 0x0737"));
    EXPECT_THAT(all.output, HasSubstr(": 0 shown, 2 rejected, 1 not chosen, "));
    EXPECT_THAT(changes(stream, {"--rejected", "--version", "5"}).output, StartsWith("! NIT 0x0737"));
}

/// What is not shown is no less wrong.
TEST(Choosing, LeavesTheExitStatusAsItIs) {
    const ByteVector stream = StreamBuilder().section(NIT_PID, rejectedNit(0x0736, 4)).bytes();
    const Finished finished = changes(stream, {"--version", "5"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output, "1 packet of 188 bytes, 1 section on 1 PID: 0 shown, 0 rejected, 1 not chosen, "
                               "0 CRC errors, 0 discontinuities\n");
}

/// The program map is not shown, and the AIT found by it.
TEST(Choosing, FollowsWhatIsNotShown) {
    const Finished finished =
        inspect({"--view", "diff", "--width", "200", "--table", "ait", "--since", "1.5", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, SAMPLE_SINCE);
}

TEST(Choosing, FromATimeOn) {
    for (const char* const time : {"4.5", "4.5s", "0:04.5", "00:00:04.5"}) {
        EXPECT_EQ(changes(tenSeconds(), {"--since", time}).output,
                  "+ NIT 0x0735  PID 0x0010  version 3  section 0/0  packet 57  5.100 s  new\n"
                  "+ NIT 0x0736  PID 0x0010  version 4  section 0/0  packet 58  5.200 s  new\n"
                  "113 packets of 188 bytes, 12 sections on 1 PID: 2 shown, 0 rejected, 1 not chosen, 0 CRC errors, "
                  "0 discontinuities\n");
    }
}

TEST(Choosing, UntilATime) {
    EXPECT_THAT(changes(tenSeconds(), {"--until", "4"}).output,
                StartsWith("+ NIT 0x0735  PID 0x0010  version 3  section 0/0  packet 2  new\n113 packets"));
    EXPECT_THAT(changes(tenSeconds(), {"--since", "6.5", "--until", "7.5"}).output,
                StartsWith("+ NIT 0x0735  PID 0x0010  version 3  section 0/0  packet 80  7.100 s  new\n113 packets"));
    EXPECT_THAT(changes(tenSeconds(), {"--since", "1:00:00"}).output, StartsWith("113 packets"));
}

TEST(Choosing, ByTimeNeedsAClock) {
    const std::string complaint =
        "isdbt-inspect: FILE: has no clock (PCR) by which --since and --until could be counted\n";
    const Finished packets = inspectBytes(threeNetworks(), {"--table", "nit", "--until", "1"});
    EXPECT_EQ(packets.status, 1);
    EXPECT_EQ(packets.errors, complaint);
    const Finished sections = inspect({"--sections", SAMPLE_FILE, "--since", "1"});
    EXPECT_EQ(sections.status, 2);
    EXPECT_THAT(sections.errors,
                StartsWith("isdbt-inspect: --since, --until: sections outside of packets have no time\n"));
}

/// What is chosen is no multiplex to draw a tree of.
TEST(Choosing, ShowsTablesUnlessAskedForAnotherView) {
    EXPECT_EQ(inspect({"--extension", "0x0735", SAMPLE_FILE}).output,
              inspectTables({"--extension", "0x0735", SAMPLE_FILE}).output);
    EXPECT_EQ(inspect({"--extension", "0x0735", "--json", "--table", "nit", SAMPLE_FILE}).output,
              inspect({"--json", "--table", "nit", SAMPLE_FILE}).output);
}

TEST(Choosing, OfSections) {
    Start start;
    start.input = join({nit(0x0735, 3), nit(0x0736, 4), rejectedNit(0x0737, 5)});
    const Finished finished = inspect({"--sections", "-", "--version", "4", "--view", "diff"}, start);
    EXPECT_EQ(finished.output, "+ NIT 0x0736  version 4  section 0/0  byte 22  new\n"
                               "3 sections: 1 shown, 0 rejected, 2 not chosen, 0 CRC errors\n");
}

TEST(Choosing, WithoutSense) {
    for (const auto& [arguments, complaint] :
         {std::pair<std::vector<std::string>, std::string>{{"--version", "32"},
                                                           "--version: 32 is no version_number (0 to 31)"},
          {{"--extension", "0x10000"},
           "--extension: 0x10000 is no table_id_extension (0 to 65535, or 0x0000 to 0xFFFF)"},
          {{"--extension", "NIT"}, "--extension: NIT is no table_id_extension (0 to 65535, or 0x0000 to 0xFFFF)"},
          {{"--since", "soon"}, "--since: soon is no time (90, 90s, 1:30 or 00:01:30)"},
          {{"--until", "1:2:3:4"}, "--until: 1:2:3:4 is no time (90, 90s, 1:30 or 00:01:30)"},
          {{"--until", "-1"}, "--until: -1 is no time (90, 90s, 1:30 or 00:01:30)"},
          {{"--since", "1:60"}, "--since: 1:60 is no time (90, 90s, 1:30 or 00:01:30)"},
          {{"--until", "1:"}, "--until: 1: is no time (90, 90s, 1:30 or 00:01:30)"},
          {{"--since", "2", "--until", "1"}, "--until is before --since"}}) {
        std::vector<std::string> all = arguments;
        all.emplace_back(SAMPLE_FILE);
        const Finished finished = inspect(all);
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.output, "");
        EXPECT_EQ(finished.errors, "isdbt-inspect: " + complaint + "\nRun with --help for more information.\n");
    }
    EXPECT_EQ(inspect({"--descriptor", "pmt", "--hex", "52 01 07", "--rejected"}).status, 2);
}

TEST(Choosing, WithoutSomeTables) {
    const ByteVector stream = StreamBuilder()
                                  .section(NIT_PID, nit(0x0735, 3))
                                  .section(TOT_PID, shortSection(TOT, hex("C079 124500 F000")))
                                  .section(0x0011, sdt("E6A0 FD 8000"))
                                  .bytes();
    const TemporaryFile file(stream);
    const Finished shown = inspect({"--view", "diff", "--without", "TOT,sdt,pat", file.path()});
    EXPECT_EQ(shown.status, 0); // none of them is missed
    EXPECT_EQ(shown.output, "+ NIT 0x0735  PID 0x0010  version 3  section 0/0  packet 1  new\n"
                            "3 packets of 188 bytes, 3 sections on 3 PIDs: 1 shown, 0 rejected, 0 CRC errors, "
                            "0 discontinuities\n");
    const Finished some =
        inspect({"--view", "diff", "--table", "nit,tot", "--without", "nit", "--width", "200", file.path()});
    EXPECT_THAT(some.output, StartsWith("+ TOT  PID 0x0014  packet 2  new\n3 packets"));
    const Finished counted = inspect({"--view", "stats", "--without", "tot,pat,sdt", file.path()});
    EXPECT_THAT(counted.output, HasSubstr("\n0x0010   NIT            1 "));
    EXPECT_THAT(counted.output, Not(HasSubstr("0x0014")));
}
