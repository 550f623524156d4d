#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr unsigned NIT_PID = 0x0010;
constexpr unsigned SDT_PID = 0x0011;
constexpr unsigned PMT_PID = 0x0101;

constexpr const char* VIEWS[] = {"tree", "tables", "stats", "diff"};

/// A NIT that has the transport stream.
ByteVector nit(QUOR_U8 lastSection = 0) {
    LongHeader header = named(0x0735);
    header.last = lastSection;
    return longSection(0x40, header, hex("F000 F006 0735 0735 F000"));
}

ByteVector pmt(const std::string& streams, unsigned version = 0) {
    return longSection(0x02, named(0xE6A0, version), hex("E131 F000" + streams));
}

StreamBuilder withoutPmts() {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E6A0 E101  E6A1 E102  E6B8 E103"))
        .section(NIT_PID, nit())
        .section(SDT_PID, sdt("E6A0 FD 8000  E6A1 FD 8000  E6B8 FD 8000"));
    return stream;
}

constexpr const char* NO_PMTS =
    "\n3 faults:\n"
    "! Service 0xE6A0 (59040), Service 0xE6A1 (59041), Service 0xE6B8 (59064): no PMT came\n"
    "3 packets of 188 bytes, 3 sections on 3 PIDs: 3 shown, 0 rejected, 0 CRC errors, "
    "0 discontinuities\n";

/// Everything that one service needs.
StreamBuilder well() {
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E6A0 E101"))
        .section(NIT_PID, nit())
        .section(SDT_PID, sdt("E6A0 FD 8000"))
        .section(PMT_PID, pmt("1B E131 F000"));
    return stream;
}

Finished inspectStream(const StreamBuilder& stream, std::vector<std::string> arguments) {
    Start start;
    start.input = stream.bytes();
    arguments.emplace_back("-");
    return inspect(arguments, start);
}

} // namespace

TEST(InspectFaults, NoneInAStreamThatHasAll) {
    for (const char* const view : VIEWS) {
        const Finished finished = inspectStream(well(), {"--view", view});
        EXPECT_EQ(finished.status, 0) << view;
        EXPECT_THAT(finished.output, Not(HasSubstr("fault"))) << view;
    }
}

TEST(InspectFaults, AreListedInEveryView) {
    for (const char* const view : VIEWS) {
        const Finished finished = inspectStream(withoutPmts(), {"--view", view, "--width", "200"});
        EXPECT_EQ(finished.status, 3) << view;
        EXPECT_EQ(finished.errors, "") << view;
        EXPECT_THAT(finished.output, EndsWith(NO_PMTS)) << view;
        const Finished lenient = inspectStream(withoutPmts(), {"--view", view, "--width", "200", "--lenient"});
        EXPECT_EQ(lenient.status, 0) << view;
        EXPECT_EQ(lenient.output, finished.output) << view;
    }
}

TEST(InspectFaults, AreTheLastObjectsInJson) {
    for (const char* const view : VIEWS) {
        const Finished finished = inspectStream(withoutPmts(), {"--json", "--view", view});
        EXPECT_EQ(finished.status, 3) << view;
        const std::size_t first = finished.output.find(R"({"type":"fault")");
        ASSERT_NE(first, std::string::npos) << view;
        EXPECT_EQ(finished.output.substr(first),
                  R"~({"type":"fault","schema_version":1,"source":"standard input","id":"45f6765bf281197e",)~"
                  R"~("fault":"table_missing","severity":"error",)~"
                  R"~("about":"Service 0xE6A0 (59040)","text":"no PMT came","pid":257,"table":"PMT","table_id":2,)~"
                  R"~("table_id_extension":59040,"packet":null,"offset":null,"seconds":null,"time":null,)~"
                  R"~("time_source":null})~"
                  "\n"
                  R"~({"type":"fault","schema_version":1,"source":"standard input","id":"20ad6b1785841b74",)~"
                  R"~("fault":"table_missing","severity":"error",)~"
                  R"~("about":"Service 0xE6A1 (59041)","text":"no PMT came","pid":258,"table":"PMT","table_id":2,)~"
                  R"~("table_id_extension":59041,"packet":null,"offset":null,"seconds":null,"time":null,)~"
                  R"~("time_source":null})~"
                  "\n"
                  R"~({"type":"fault","schema_version":1,"source":"standard input","id":"170adbb7a97142c6",)~"
                  R"~("fault":"table_missing","severity":"error",)~"
                  R"~("about":"Service 0xE6B8 (59064)","text":"no PMT came","pid":259,"table":"PMT","table_id":2,)~"
                  R"~("table_id_extension":59064,"packet":null,"offset":null,"seconds":null,"time":null,)~"
                  R"~("time_source":null})~"
                  "\n")
            << view;
    }
}

/// The list as the standard has it; receivers read it otherwise.
TEST(InspectFaults, ServiceListThatIsNotThatOfThePat) {
    const auto faults = [](const std::string& services) {
        const ByteVector list = hex(services);
        const auto size = static_cast<unsigned>(list.size());
        StreamBuilder stream;
        stream.section(PAT_PID, pat("E6A0 E101"))
            .section(NIT_PID, longSection(NIT, named(0x0735),
                                          join({hex("F000"),
                                                u16(size + 8, 0xF000),
                                                hex("0735 0735"),
                                                u16(size + 2, 0xF000),
                                                {0x41, static_cast<QUOR_U8>(size)},
                                                list})))
            .section(SDT_PID, sdt("E6A0 FD 8000"))
            .section(PMT_PID, pmt("1B E131 F000"));
        const std::string output = inspectStream(stream, {"--view", "stats"}).output;
        const std::size_t begin = output.find("fault");
        return begin == std::string::npos ? "" : output.substr(begin, output.rfind('\n', output.size() - 2) - begin);
    };
    EXPECT_EQ(faults("E6A0 01 E6A0 01"), "");
    EXPECT_EQ(faults("E6A0 01 E6A1 01"),
              "fault:\n! Service 0xE6A1 (59041): the NIT has it in its service_list_descriptor, but not the PAT");
    EXPECT_EQ(faults("E6A1 01 E6A1 01"),
              "faults:\n! Service 0xE6A0 (59040): the PAT has it, but not the service_list_descriptor of the NIT\n"
              "! Service 0xE6A1 (59041): the NIT has it in its service_list_descriptor, but not the PAT");
    EXPECT_EQ(faults("E6A1 E6A1"), ""); // no entries of three bytes: nobody knows what is meant
}

/// A receiver that has the version already does not look at what changes under it; that another version comes in the
/// end does not help those who watched until then.
TEST(InspectFaults, ChangeWithoutANewVersion) {
    StreamBuilder stream = well();
    stream.section(PMT_PID, pmt("1B E132 F000"));
    for (const unsigned packets : {5U, 6U}) {
        for (const char* const view : VIEWS) {
            EXPECT_EQ(inspectStream(stream, {"--view", view}).status, 3) << view << ", " << packets << " packets";
        }
        const std::string output = inspectStream(stream, {}).output;
        EXPECT_THAT(output, HasSubstr("      │  ! PMT changed without a new version\n"));
        EXPECT_THAT(output, HasSubstr("\n1 fault:\n"
                                      "! Service 0xE6A0 (59040): PMT changed without a new version\n" +
                                      std::to_string(packets) + " packets"));
        stream.section(PMT_PID, pmt("1B E131 F000", 1));
    }
}

/// What changed is gone, was never valid, or is of a transport stream that is no more: it was wrong all the same.
TEST(InspectFaults, SilentChangeOfASectionThatIsNotThereInTheEnd) {
    LongHeader second = named(0x0735);
    second.section = 1;
    second.last = 1;
    LongHeader next = named(0xE6A0, 1);
    next.current = false;
    StreamBuilder shorter = well();
    shorter.section(SDT_PID, longSection(0x42, second, hex("0735 FF E6A1 FD 8000")))
        .section(SDT_PID, longSection(0x42, second, hex("0735 FF E6A1 FC 8000")))
        .section(SDT_PID, longSection(0x42, named(0x0735, 1), hex("0735 FF E6A0 FD 8000")));
    const Finished ended = inspectStream(shorter, {"--view", "stats"});
    EXPECT_EQ(ended.status, 3);
    EXPECT_THAT(ended.output,
                HasSubstr("1 fault:\n! Transport stream 0x0735 (1845): SDT changed without a new version\n"));

    StreamBuilder announcing = well();
    announcing.section(PMT_PID, longSection(0x02, next, hex("E131 F000 1B E131 F000")))
        .section(PMT_PID, longSection(0x02, next, hex("E131 F000 1B E132 F000")));
    const Finished announced = inspectStream(announcing, {});
    EXPECT_EQ(announced.status, 3);
    EXPECT_THAT(announced.output, HasSubstr("1 fault:\n! Service 0xE6A0 (59040): PMT changed without a new version\n"));

    LongHeader other = named(0x0736);
    StreamBuilder pats = well();
    pats.section(PAT_PID, longSection(0x00, other, hex("E6A0 E101")))
        .section(PAT_PID, longSection(0x00, other, hex("E6A0 E102")))
        .section(PAT_PID, longSection(0x00, named(0x0735, 1), hex("E6A0 E101")));
    EXPECT_THAT(inspectStream(pats, {}).output,
                HasSubstr("1 fault:\n! Transport stream: PAT changed without a new version\n"));
}

/// Where the section is shown, that is said of it already.
TEST(InspectFaults, OfAShownSectionAreNotSaidAgain) {
    StreamBuilder stream = well();
    stream.section(PMT_PID, pmt("1B E132 F000"));
    for (const char* const view : {"tables", "diff"}) {
        const std::string output = inspectStream(stream, {"--view", view}).output;
        EXPECT_THAT(output, HasSubstr("  packet 5  CHANGED WITHOUT A NEW VERSION\n")) << view;
        EXPECT_THAT(output, Not(HasSubstr("fault"))) << view;
    }
}

TEST(InspectFaults, TablesWhoseCrcIsWrong) {
    ByteVector ait = longSection(0x74, named(0x0009), hex("F000 F000"));
    ait.back() = static_cast<QUOR_U8>(ait.back() ^ 1U);
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E6A0 E101")).section(PMT_PID, pmt("05 E321 F004 FD02 00A3"));
    stream.section(0x0321, ait).section(0x0321, ait);
    EXPECT_THAT(inspectStream(stream, {"--table", "pat,pmt,ait"}).output,
                HasSubstr("! Component PID 0x0321: no AIT came, but 2 with a wrong CRC_32\n"));
}

/// Receivers need it in the clear.
TEST(InspectFaults, TablesThatAreScrambled) {
    const ByteVector announcing = pmt("05 E321 F004 FD02 00A3");
    const ByteVector ait = longSection(0x74, named(0x0009), hex("F000 F000"));
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E6A0 E101  E6A1 E102")).section(PMT_PID, announcing);
    stream.section(0x0102, announcing).patch(3, 0x90).section(0x0321, ait).patch(3, 0xD0);
    const Finished finished = inspectStream(stream, {"--table", "pat,pmt,ait"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("\n│        ! its AIT is scrambled\n"));
    EXPECT_THAT(finished.output, HasSubstr("\n2 faults:\n"
                                           "! Component PID 0x0321: its AIT is scrambled\n"
                                           "! Service 0xE6A1 (59041): its PMT is scrambled\n"));
    EXPECT_THAT(inspectStream(stream, {"--json", "--table", "pat,pmt"}).output,
                HasSubstr(R"~("fault":"scrambled","severity":"error","about":"Service 0xE6A1 (59041)")~"));
}

TEST(InspectFaults, StreamWithoutAnyTable) {
    for (const char* const view : VIEWS) {
        const Finished finished = inspectStream(StreamBuilder().null(10), {"--view", view});
        EXPECT_EQ(finished.status, 3) << view;
        EXPECT_THAT(finished.output, HasSubstr("3 faults:\n"
                                               "! Transport stream: no PAT came\n"
                                               "! Transport stream: no NIT came\n"
                                               "! Transport stream: no SDT came\n"
                                               "10 packets"))
            << view;
    }
}

TEST(InspectFaults, OnlyTablesOfInterestAreMissed) {
    EXPECT_EQ(inspectStream(withoutPmts(), {"--table", "pat,nit,sdt"}).status, 0);
    const Finished finished = inspectStream(StreamBuilder().null(10), {"--view", "tables", "--table", "nit,tot"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output, "1 fault:\n"
                               "! Transport stream: no NIT came\n"
                               "10 packets of 188 bytes, 0 sections on 0 PIDs: 0 shown, 0 rejected, 0 CRC errors, "
                               "0 discontinuities\n");
    EXPECT_EQ(inspectStream(StreamBuilder().null(10), {"--table", "tot"}).status, 0);
}

/// Who has the first section of two in hand knows that there is another one.
TEST(InspectFaults, OtherSectionsAreMissedInPacketsOnly) {
    StreamBuilder stream;
    stream.section(NIT_PID, nit(1));
    const Finished packets = inspectStream(stream, {"--table", "nit", "--view", "diff"});
    EXPECT_EQ(packets.status, 3);
    EXPECT_EQ(packets.output, "+ NIT 0x0735  PID 0x0010  version 0  section 0/1  packet 1  new\n"
                              "1 fault:\n"
                              "! Network 0x0735 (1845): section 1 of the NIT did not come\n"
                              "1 packet of 188 bytes, 1 section on 1 PID: 1 shown, 0 rejected, 0 CRC errors, "
                              "0 discontinuities\n");

    const char* const shown = "+ NIT 0x0735  version 0  section 0/1  byte 0  new\n"
                              "1 section: 1 shown, 0 rejected, 0 CRC errors\n";
    const TemporaryFile file(nit(1));
    const Finished sections = inspect({"--sections", "--view", "diff", file.path()});
    EXPECT_EQ(sections.status, 0);
    EXPECT_EQ(sections.output, shown);
    const Finished digits =
        inspect({"--hex", "40 B0 13 07 35 C1 00 01 F0 00 F0 06 07 35 07 35 F0 00 92 64 F1 B0", "--view", "diff"});
    EXPECT_EQ(digits.status, 0);
    EXPECT_EQ(digits.output, shown);
}
