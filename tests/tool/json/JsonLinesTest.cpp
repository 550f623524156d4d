#include "tool/Process.h"
#include "tool/Running.h"
#include "tool/Streams.h"
#include "tool/json/CarriedSections.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <unistd.h>

namespace {

using Json = nlohmann::json;
using testing::HasSubstr;

/// Of a section that no other stands beside: behind it comes what is missed.
Json objectOf(const ByteVector& section) {
    const TemporaryFile file(streamOf(0x0321, {section}));
    const std::string lines = inspect({"--json", "--pid", "0x321", file.path()}).output;
    return Json::parse(lines.substr(0, lines.find('\n')));
}

using Severities = std::map<std::string, std::string>;

/// The kinds of faults that are found.
Severities faultsIn(std::vector<std::string> arguments) {
    arguments.insert(arguments.end(), {"--json", "--lenient"});
    std::istringstream lines(inspect(arguments).output);
    Severities severities;
    for (std::string line; std::getline(lines, line);) {
        const Json object = Json::parse(line);
        if (object["type"] == "fault") {
            severities[object["fault"]] = object["severity"];
        }
    }
    return severities;
}

TEST(JsonLines, SayWhereASectionWasFound) {
    const Finished finished = inspect({"--json", "--table", "nit", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    const Json object = Json::parse(finished.output);
    EXPECT_EQ(object["type"], "section");
    EXPECT_EQ(object["source"], SAMPLE_FILE);
    EXPECT_EQ(object["pid"], 0x10);
    EXPECT_EQ(object["table_id"], 0x40);
    EXPECT_EQ(object["table_id_extension"], 0x735);
    EXPECT_EQ(object["packet"], 15);
    EXPECT_EQ(object["offset"], 14 * PACKET_SIZE);
    EXPECT_EQ(object["seconds"], 0.058333); // 14 of 240 packets a second
    EXPECT_EQ(object["damaged"], false);
}

TEST(JsonLines, NumbersOfThirtyTwoBitsAreUnsigned) {
    const Json object = objectOf(longSection(0x3D, {}, hex("01 12 85 FF FFFFFFFF FFFFFFFF FFFFFFFF FFFF FFFE")));
    const Json& reference = object["fields"]["npt_reference_descriptor"];
    EXPECT_EQ(reference["stc_reference_l"], 4294967295U);
    EXPECT_EQ(reference["npt_reference_l"], 4294967295U);
    EXPECT_EQ(reference["scale_denominator"], 65534);
}

TEST(JsonLines, TextsAreDecodedInTheCharacterSetThatIsNamed) {
    const ByteVector nit = longSection(0x40, {}, hex("F006 40 04 E9 81 5C 22 F000"));
    const Json name = objectOf(nit)["fields"]["network_name_descriptor"];
    EXPECT_EQ(name["network_name"], R"(é\\")");
    EXPECT_EQ(name["network_name_reading"], "1 control code left out");
    EXPECT_EQ(name["network_name_hex"], "E9815C22");
    const TemporaryFile file(streamOf(0x0010, {nit}));
    const std::string lines = inspect({"--json", "--charset", "ISO-8859-7", file.path()}).output;
    const Json greek = Json::parse(lines.substr(0, lines.find('\n')));
    EXPECT_EQ(greek["fields"]["network_name_descriptor"]["network_name"], R"(ι\x81\\")");
}

TEST(JsonLines, HaveTheBytesOnDemand) {
    const char* const pat = "00 B0 0D 00 01 C1 00 00 00 01 E1 00 E8 F9 5E 7D";
    EXPECT_FALSE(Json::parse(inspect({"--json", "--hex", pat}).output).contains("bytes"));
    const Json object = Json::parse(inspect({"--json", "--bytes", "--hex", pat}).output);
    EXPECT_EQ(object["bytes"], "00B00D0001C100000001E100E8F95E7D");
    EXPECT_TRUE(object.contains("fields"));
}

TEST(JsonLines, ARejectedSectionIsShownWithTheDescriptorAtFault) {
    LongHeader header;
    header.version = 3;
    const Json object = objectOf(longSection(0x02, header, hex("E100 F003 520181  0F E112 F002 5200")));
    EXPECT_EQ(object["version"], 3);
    EXPECT_FALSE(object.contains("fields"));
    EXPECT_EQ(object["error"], Json({{"code", 2570}, {"name", "ERROR_INVALID_ITEM"}}));
    EXPECT_EQ(object["log"][1], "ISDBTUtils: TPMTTable::parse: Invalid item. Aborting!");
    EXPECT_EQ(object["bytes"].get<std::string>().substr(0, 24), "02B0170001C70000E100F003");
    ASSERT_EQ(object["loops"].size(), 2U);
    EXPECT_EQ(object["loops"][0]["descriptors"][0]["at_fault"], false);
    EXPECT_EQ(object["loops"][1]["loop"], "elementary_stream 0x0112");
    EXPECT_EQ(object["loops"][1]["descriptors"][0], Json({{"offset", 20},
                                                          {"descriptor_tag", 0x52},
                                                          {"descriptor_tag_name", "stream_identifier_descriptor"},
                                                          {"known", true},
                                                          {"length", 0},
                                                          {"fits", true},
                                                          {"error_code", 2568},
                                                          {"error_code_name", "ERROR_INVALID_DESCRIPTOR_LENGTH"},
                                                          {"error_code_reading", nullptr},
                                                          {"refused_though_right", nullptr},
                                                          {"bytes", ""},
                                                          {"at_fault", true}}));
}

TEST(JsonLines, SayWhatAnErrorMeansThatDoesNotSayIt) {
    const Json object = objectOf(longSection(0x74, named(9), hex("F007 02 05 0009 01 7F 00  F000")));
    const Json& descriptor = object["loops"][0]["descriptors"][0];
    EXPECT_EQ(descriptor["error_code_name"], "ERROR_OK");
    EXPECT_EQ(descriptor["error_code_reading"],
              "ERROR_OK is what this receiver says of a transport that it does not support");
}

TEST(JsonLines, HaveADurationInSeconds) {
    const Json object = objectOf(longSection(
        0xC3, named(0x1234), hex("0735 0001 E6A0 01  2FFF 0030 0100 0100 EDA9123456013000 EDA900000001300A")));
    const Json& schedules = object["fields"]["download_contents"][0]["schedule_infos"];
    EXPECT_EQ(schedules[0]["duration"], 0x013000);
    EXPECT_EQ(schedules[0]["duration_seconds"], 5400);
    EXPECT_EQ(schedules[1]["duration_seconds"], nullptr);
}

TEST(JsonLines, ADescriptorThatDoesNotFitIsAtFault) {
    const Json object = objectOf(longSection(0x02, {}, hex("E100 F000  1B E111 F001 55")));
    const Json& loop = object["loops"][1];
    EXPECT_EQ(loop["descriptors"][0]["length"], nullptr);
    EXPECT_EQ(loop["descriptors"][0]["fits"], false);
    EXPECT_EQ(loop["descriptors"][0]["error_code"], nullptr);
    EXPECT_EQ(loop["descriptors"][0]["at_fault"], true);
}

TEST(JsonLines, HaveADescriptorThatCameByItself) {
    EXPECT_EQ(
        inspect({"--json", "--descriptor", "pmt", "--hex", "52 01 07 FF 01 AA"}).output,
        R"({"type":"descriptor","schema_version":1,"source":"--hex","table":"PMT","table_id":2,"damaged":false,)"
        R"("on_wire":{"offset":0,"descriptor_tag":82,"descriptor_tag_name":"stream_identifier_descriptor",)"
        R"("known":true,"length":1,"fits":true,"error_code":null,"error_code_name":null,"error_code_reading":null,)"
        R"("refused_though_right":null,"bytes":"07",)"
        R"("at_fault":false},"fields":{"stream_identifier_descriptor":{"descriptor_tag":82,"component_tag":7}}})"
        "\n"
        R"({"type":"descriptor","schema_version":1,"source":"--hex","table":"PMT","table_id":2,"damaged":false,)"
        R"("on_wire":{"offset":3,"descriptor_tag":255,"descriptor_tag_name":null,"known":false,"length":1,)"
        R"("fits":true,"error_code":null,"error_code_name":null,"error_code_reading":null,)"
        R"("refused_though_right":null,"bytes":"AA","at_fault":false},"fields":null})"
        "\n");
}

TEST(JsonLines, FileNamesMayHoldAnything) {
    const TemporaryFile temporary;
    const std::string path = temporary.path() + "-\xE9\n\"\x1B.ts";
    std::filesystem::copy(SAMPLE_FILE, path);
    const Finished finished = inspect({"--json", "--table", "nit", path});
    std::filesystem::remove(path);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(Json::parse(finished.output)["source"], temporary.path() + "-\uFFFD\n\"\x1B.ts");
}

TEST(JsonLines, SayWhatIsMissing) {
    const TemporaryFile file(StreamBuilder().null(20).bytes());
    const Finished finished = inspect({"--json", "--table", "nit", file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.output,
              R"({"type":"fault","schema_version":1,"source":")" + file.path() +
                  R"(","id":"0416d4aea142ead8","fault":"table_missing","severity":"error","about":"Transport stream",)"
                  R"("text":"no NIT came","pid":16,"table":"NIT","table_id":64,)"
                  R"("table_id_extension":null,"packet":null,"offset":null,"seconds":null,)"
                  R"("time":null,"time_source":null})"
                  "\n");
    EXPECT_EQ(finished.errors, "");
}

/// A multiplex in which little fits together.
TEST(JsonLines, NameKindAndSeverityOfFaults) {
    LongHeader stream;
    stream.extension = 0x0735;
    LongHeader first = stream;
    first.last = 1;
    LongHeader service;
    service.extension = 0xE6A0;
    LongHeader rejected;
    rejected.extension = 0xE6B8;
    LongHeader ginga;
    ginga.extension = 0x0009;
    const ByteVector applications =
        hex("00000735 0001 01 F007  02 05 0001 01 7F 77   00000735 0002 01 F007  02 05 0001 01 7F 01");
    const ByteVector sections =
        join({streamOf(0x0000, {longSection(0x00, stream, hex("0000 E020  E6A0 E101  E6B8 E103  E6B9 E104"))}),
              streamOf(0x0010, {longSection(0x40, first, hex("F000 F006 0735 0735 F000"))}),
              streamOf(0x0011, {longSection(0x42, stream, hex("0736 FF  E6C0 FD 8000"))}),
              streamOf(0x0101, {longSection(0x02, service,
                                            hex("E131 F000  1B E131 F003 520101  1B E131 F003 520101  "
                                                "05 E321 F004 FD0200A3  0B E322 F004 FD0200A0")),
                                longSection(0x02, service,
                                            hex("E131 F000  1B E131 F003 520101  1B E131 F003 520101  "
                                                "05 E321 F004 FD0200A3  0B E322 F003 520140"))}),
              streamOf(0x0321, {longSection(0x74, ginga, join({hex("F000"), u16(0xF020U), applications}))}),
              streamOf(0x0103, {longSection(0x02, rejected, hex("E131 F000  1B E111 F002 5200"))}),
              streamOf(0x0555, {longSection(0x74, ginga, hex("F000 F000"))})});
    const TemporaryFile file(sections);
    EXPECT_EQ(faultsIn({"--pid", "0x555", file.path()}), (Severities{{"carousel_is_none", "error"},
                                                                     {"carousel_missing", "error"},
                                                                     {"pid_unannounced", "warning"},
                                                                     {"rejected", "error"},
                                                                     {"table_empty", "warning"},
                                                                     {"changed_without_new_version", "error"},
                                                                     {"component_tag_twice", "error"},
                                                                     {"descriptor_missing", "error"},
                                                                     {"networks_differ", "warning"},
                                                                     {"not_in_pat", "error"},
                                                                     {"not_in_sdt", "warning"},
                                                                     {"pid_twice", "warning"},
                                                                     {"section_missing", "error"},
                                                                     {"table_missing", "error"},
                                                                     {"wrong_pid", "error"}}));
}

/// One of two services is in the ts_information_descriptor, and the other one has no AIT.
TEST(JsonLines, NameFaultsOfApplicationsAndOfTheNit) {
    LongHeader stream;
    stream.extension = 0x0735;
    LongHeader service;
    service.extension = 0xE6A0;
    LongHeader listed;
    listed.extension = 0xE6A1;
    LongHeader ginga;
    ginga.extension = 0x0009;
    const ByteVector descriptors =
        hex("00 09 05 0001 010000 FF 28 02  02 05 0001 01 7F 40  07 09 02 2F61 00 782E6E636C");
    const TemporaryFile file(join(
        {streamOf(0x0000, {longSection(0x00, stream, hex("E6A0 E101  E6A1 E102"))}),
         streamOf(0x0010, {longSection(0x40, stream, hex("F000 F010 0735 0735 F00A  CD 08 21 09 5456 0F 01 E6A1"))}),
         streamOf(0x0011, {longSection(0x42, stream, hex("0735 FF  E6A0 FD 8000  E6A1 FD 8000"))}),
         streamOf(0x0101, {longSection(0x02, service, hex("E131 F000  0D E322 F004 FD0200A0"))}),
         streamOf(0x0102, {longSection(0x02, listed, hex("E131 F000  05 E321 F004 FD0200A3  0B E323 F003 520140"))}),
         streamOf(0x0321, {longSection(0x74, ginga, join({hex("F000 F026 00000735 0001 01 F01D"), descriptors}))})}));
    EXPECT_EQ(faultsIn({file.path()}),
              (Severities{{"ait_missing", "error"}, {"label_unknown", "error"}, {"not_in_ts_information", "warning"}}));
}

TEST(JsonLines, NameFaultsOfSectionsOutsideOfPackets) {
    LongHeader stream;
    stream.extension = 0x0735;
    ByteVector damaged = longSection(0x00, stream, hex("E6A0 E101"));
    damaged.back() ^= 1U;
    const TemporaryFile file(join({longSection(0x40, stream, hex("F000 F006 0736 0735 F000")), damaged}));
    EXPECT_EQ(faultsIn({"--sections", file.path()}),
              (Severities{{"crc_errors", "error"}, {"damaged", "error"}, {"not_in_nit", "warning"}}));
}

/// In text the summary says so; in JSON there is none.
TEST(JsonLines, NameWhatDidNotComeWhole) {
    StreamBuilder stream;
    stream.section(PAT_PID, longSection(0x00, {}, hex("0001 E100")));
    stream.lose(PAT_PID, 1).section(PAT_PID, longSection(0x00, {}, hex("0001 E100"))).null(20);
    const TemporaryFile file(join({hex("FFFFFF"), stream.bytes()}));
    const Finished finished = inspect({"--json", "--table", "pat", file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr(R"("fault":"discontinuities","severity":"error","about":"Transport stream",)"
                                           R"("text":"1 discontinuity on PID 0x0000","pid":0,)"));
    EXPECT_THAT(finished.output, HasSubstr(R"("fault":"bytes_skipped","severity":"error","about":"Transport stream",)"
                                           R"("text":"3 bytes skipped","pid":null,"table":null,"table_id":null,)"
                                           R"("table_id_extension":null,"packet":1,"offset":0,)"));
}

TEST(JsonLines, NameWhatPacketsSuffered) {
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    const ByteVector begun = longSection(0x00, {}, fill(240, 0xE1));
    StreamBuilder stream;
    stream.begin(PAT_PID, join({hex("00"), slice(begun, 0, 183)})).section(PAT_PID, pat);
    stream.section(PAT_PID, pat).patch(1, 0xC0).section(0x0010, pat).patch(4, 184).null(20);
    const TemporaryFile file(stream.bytes());
    const std::string output = inspect({"--json", "--table", "pat", file.path()}).output;
    for (const char* const fault : {R"("fault":"sections_cut_short","severity":"error","about":"Transport stream",)"
                                    R"("text":"1 section cut short on PID 0x0000","pid":0,)",
                                    R"("fault":"transport_errors","severity":"error","about":"Transport stream",)"
                                    R"("text":"1 packet marked as damaged on PID 0x0000","pid":0,)",
                                    R"("fault":"malformed_packets","severity":"error","about":"Transport stream",)"
                                    R"("text":"1 malformed packet on PID 0x0010","pid":16,)"}) {
        EXPECT_THAT(output, HasSubstr(fault));
    }
}

TEST(JsonLines, SayWhichSectionShowsAFault) {
    LongHeader header;
    header.extension = 0xE6A0;
    const TemporaryFile file(longSection(0x02, header, hex("E100 F000")));
    const std::string lines = inspect({"--json", "--sections", file.path()}).output;
    EXPECT_EQ(Json::parse(lines.substr(lines.find('\n'))), Json({{"type", "fault"},
                                                                 {"schema_version", 1},
                                                                 {"source", file.path()},
                                                                 {"id", "0400117bd8bb2256"},
                                                                 {"fault", "table_empty"},
                                                                 {"severity", "warning"},
                                                                 {"about", "Service 0xE6A0 (59040)"},
                                                                 {"text", "its PMT has no component"},
                                                                 {"pid", nullptr},
                                                                 {"table", "PMT"},
                                                                 {"table_id", 2},
                                                                 {"table_id_extension", 0xE6A0},
                                                                 {"packet", nullptr},
                                                                 {"offset", 0},
                                                                 {"seconds", nullptr},
                                                                 {"time", nullptr},
                                                                 {"time_source", nullptr}}));
}

TEST(JsonLines, NothingIsWrittenOfAnInputWithoutSectionsOfWhatIsOfInterest) {
    const TemporaryFile file(StreamBuilder().null(20).bytes());
    const Finished finished = inspect({"--json", "--table", "tot", file.path()});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "");
}

TEST(JsonLines, AClosedPipeEndsItQuietly) {
    Start start;
    start.outputIsClosed = true;
    const Finished finished = inspect({"--json", SAMPLE_FILE}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
}

std::vector<Json> statisticsOfSample(const std::string& type) {
    std::istringstream lines(inspect({"--json", "--view", "stats", SAMPLE_FILE}).output);
    std::vector<Json> objects;
    for (std::string line; std::getline(lines, line);) {
        Json object = Json::parse(line);
        EXPECT_EQ(object["source"], SAMPLE_FILE);
        if (object["type"] == type) {
            objects.push_back(std::move(object));
        }
    }
    return objects;
}

/// Nothing was measured.
const Json NO_SPREAD{{"count", 0},         {"sum", 0.0},         {"minimum", nullptr},
                     {"maximum", nullptr}, {"longest", nullptr}, {"buckets", std::vector<int>(17)}};

/// The sample has 480 packets in two seconds. The time of the TOT is known before it ends.
TEST(JsonLines, HaveTheStatisticsOfEachPid) {
    const std::vector<Json> pids = statisticsOfSample("pid_statistics");
    EXPECT_EQ(pids.size(), 19U); // three of them announced, without packets
    EXPECT_EQ(pids.front(), Json({{"type", "pid_statistics"},
                                  {"schema_version", 1},
                                  {"source", SAMPLE_FILE},
                                  {"pid", 0},
                                  {"content", nullptr},
                                  {"announced", true},
                                  {"layers", nullptr},
                                  {"packets", 20},
                                  {"share", 0.041667},
                                  {"bit_rate", 15040},
                                  {"lowest_bit_rate", nullptr},
                                  {"highest_bit_rate", nullptr},
                                  {"discontinuities", 0},
                                  {"announced_discontinuities", 0},
                                  {"packets_lost", 0},
                                  {"duplicates", 0},
                                  {"transport_errors", 0},
                                  {"scrambled", 0},
                                  {"pcrs", 0},
                                  {"pcr_intervals", NO_SPREAD},
                                  {"pcr_jumps", 0},
                                  {"pts_intervals", NO_SPREAD},
                                  {"seconds", 1.995833},
                                  {"time", "2025-06-15T21:30:01.988Z"},
                                  {"time_source", "TOT"}}));
    EXPECT_EQ(pids.back()["content"], "null packets");
    EXPECT_EQ(pids.back()["announced"], true);
}

TEST(JsonLines, HaveTheStatisticsOfEachTable) {
    const std::vector<Json> tables = statisticsOfSample("table_statistics");
    ASSERT_EQ(tables.size(), 9U);
    const Json& pat = tables.front();
    EXPECT_EQ(pat["pid"], 0);
    EXPECT_EQ(pat["table"], "PAT");
    EXPECT_EQ(pat["table_id_name"], "PAT (program association)");
    EXPECT_EQ(pat["sections"], 20);
    EXPECT_EQ(pat["distinct"], 1);
    EXPECT_EQ(pat["versions"], Json::parse(R"([{"version":0,"sections":20}])"));
    EXPECT_EQ(pat["rejected"], 0);
    EXPECT_EQ(pat["rejected_distinct"], 0);
    EXPECT_EQ(pat["bit_rate"], 1920); // ten sections of 24 bytes a second
    EXPECT_EQ(tables[3]["table"], "TOT");
    EXPECT_EQ(tables[3]["distinct"], 2);
    EXPECT_EQ(tables[3]["versions"], Json::array());
    EXPECT_EQ(tables[4]["table"], "SDTT");
    EXPECT_EQ(tables[4]["intervals"], NO_SPREAD);
    EXPECT_EQ(tables[4]["open_at_end"], 1.8125);
}

/// A second with the clock and a PAT in each tenth, and a TOT in the middle.
ByteVector secondWithTot() {
    StreamBuilder stream;
    for (std::uint64_t tenth = 0; tenth < 10; ++tenth) {
        LongHeader header;
        header.version = tenth < 8 ? 0 : 1;
        stream.clock(0x0100, tenth * 2700000).section(PAT_PID, longSection(0x00, header, hex("0007 E101")));
        if (tenth == 5) {
            stream.section(TOT_PID, shortSection(0x73, hex("C079 124530 F000")));
        }
    }
    return stream.bytes();
}

std::vector<Json> linesOf(const ByteVector& stream, std::vector<std::string> options) {
    const TemporaryFile file(stream);
    options.insert(options.end(), {"--json", file.path()});
    std::istringstream lines(inspect(options).output);
    std::vector<Json> objects;
    for (std::string line; std::getline(lines, line);) {
        objects.push_back(Json::parse(line));
    }
    return objects;
}

/// The PAT changes a quarter of a second behind the TOT, which says 12:45:30 by the clock of Brasília.
TEST(JsonLines, HaveTheTimeOfTheWorldOnceItIsKnown) {
    const std::vector<Json> changes = linesOf(secondWithTot(), {"--view", "diff", "--table", "pat,tot"});
    ASSERT_EQ(changes.size(), 3U);
    EXPECT_EQ(changes[0]["table"], "PAT");
    EXPECT_EQ(changes[0]["time"], nullptr);
    EXPECT_EQ(changes[0]["time_source"], nullptr);
    EXPECT_EQ(changes[1]["table"], "TOT");
    EXPECT_EQ(changes[1]["time"], "1993-10-13T15:45:30.000Z");
    EXPECT_EQ(changes[1]["time_source"], "TOT");
    EXPECT_EQ(changes[2]["table"], "PAT");
    EXPECT_EQ(changes[2]["event"], "changed");
    EXPECT_EQ(changes[2]["time"], "1993-10-13T15:45:30.250Z");
    EXPECT_EQ(changes[2]["time_source"], "TOT");
}

TEST(JsonLines, HaveAnIdentityForEachEvent) {
    std::set<Json> identities;
    std::size_t events = 0;
    for (const char* const view : {"tables", "diff"}) {
        const std::vector<Json> lines = linesOf(secondWithTot(), {"--view", view});
        const std::vector<Json> again = linesOf(secondWithTot(), {"--view", view});
        ASSERT_EQ(lines.size(), again.size());
        for (std::size_t at = 0; at < lines.size(); ++at) {
            EXPECT_EQ(lines[at].contains("id"), lines[at]["type"] != "section");
            if (lines[at].contains("id")) {
                EXPECT_EQ(lines[at]["id"], again[at]["id"]);
                identities.insert(lines[at]["id"]);
                ++events;
            }
        }
    }
    EXPECT_EQ(events, 9U); // three faults in each view, the same ones, and three changes
    EXPECT_EQ(identities.size(), 6U);
}

/// Both tags of two components stand twice, in the same section.
TEST(JsonLines, TellFaultsOfOnePlaceApart) {
    LongHeader header;
    header.extension = 0xE6A0;
    const ByteVector twice =
        hex("E131 F000  1B E131 F003 520101  1B E132 F003 520101  1B E133 F003 520102  1B E134 F003 520102");
    std::set<Json> identities;
    for (const Json& line : linesOf(streamOf(0x0321, {longSection(0x02, header, twice)}), {"--pid", "0x321"})) {
        if (line.value("fault", "") == "component_tag_twice") {
            identities.insert(line["id"]);
        }
    }
    EXPECT_EQ(identities.size(), 2U);
}

TEST(JsonLines, HaveIntervalsThatMerge) {
    for (const Json& line : linesOf(secondWithTot(), {"--view", "stats", "--table", "pat"})) {
        if (line["type"] == "table_statistics") {
            EXPECT_EQ(line["intervals"], Json::parse(R"({"count":9,"sum":0.9,"minimum":0.083333,"maximum":0.116667,)"
                                                     R"("longest":{"packet":17,"offset":3008,"seconds":0.75,)"
                                                     R"("time":"1993-10-13T15:45:30.150Z","time_source":"TOT"},)"
                                                     R"("buckets":[0,0,0,8,1,0,0,0,0,0,0,0,0,0,0,0,0]})"));
            EXPECT_EQ(line["open_at_begin"], 0.05);
            EXPECT_EQ(line["open_at_end"], 0);
        }
    }
}

/// Two recordings, one behind the other: what is counted adds up.
TEST(JsonLines, CountsOfTwoHalvesAreThoseOfTheWhole) {
    const ByteVector whole = sampleStream();
    const std::size_t middle = whole.size() / 2;
    std::map<std::string, std::uint64_t> counts[2];
    const auto add = [](std::map<std::string, std::uint64_t>& sums, const ByteVector& part) {
        for (const Json& line : linesOf(part, {"--view", "stats"})) {
            for (const char* const name : {"packets", "sections", "crc_errors", "rejected", "discontinuities",
                                           "packets_lost", "duplicates", "transport_errors", "scrambled"}) {
                if (line.contains(name)) {
                    sums[line["type"].get<std::string>() + line.value("pid", Json()).dump() + name] +=
                        line[name].get<std::uint64_t>();
                }
            }
        }
    };
    add(counts[0], whole);
    add(counts[1], slice(whole, 0, middle));
    add(counts[1], slice(whole, middle, whole.size()));
    EXPECT_EQ(counts[0].size(), 149U);
    EXPECT_EQ(counts[0], counts[1]);
}

/// Those of the PAT: twenty of them, a tenth of a second apart.
Json intervalsOf(const ByteVector& stream) {
    for (Json& line : linesOf(stream, {"--view", "stats", "--table", "pat"})) {
        if (line["type"] == "table_statistics") {
            return line;
        }
    }
    return {};
}

/// But for the one that is open at the end of the one half, and at the begin of the other.
TEST(JsonLines, IntervalsOfTwoHalvesAreThoseOfTheWhole) {
    const ByteVector stream = sampleStream();
    const Json whole = intervalsOf(stream)["intervals"];
    const Json first = intervalsOf(slice(stream, 0, stream.size() / 2));
    const Json second = intervalsOf(slice(stream, stream.size() / 2, stream.size()));
    EXPECT_EQ(whole["count"], 19);
    EXPECT_EQ(first["intervals"]["count"], 9);
    EXPECT_EQ(second["intervals"]["count"], 9);
    EXPECT_NEAR(whole["sum"].get<double>(), 1.9, 1e-5);
    EXPECT_NEAR(first["intervals"]["sum"].get<double>() + second["intervals"]["sum"].get<double>(), 1.8, 1e-5);
    EXPECT_NEAR(first["open_at_end"].get<double>() + second["open_at_begin"].get<double>(), 0.1, 0.01);
    for (std::size_t bucket = 0; bucket < 17; ++bucket) {
        const std::uint64_t both = first["intervals"]["buckets"][bucket].get<std::uint64_t>() +
                                   second["intervals"]["buckets"][bucket].get<std::uint64_t>();
        EXPECT_EQ(both, bucket == 3 ? 18U : 0U); // up to 0.1 s
    }
}

TEST(JsonLines, HaveTheWholeStreamInOne) {
    const std::vector<Json> streams = statisticsOfSample("stream");
    ASSERT_EQ(streams.size(), 1U);
    EXPECT_EQ(streams[0]["packets"], 480);
    EXPECT_EQ(streams[0]["packet_spacing"], 188);
    EXPECT_EQ(streams[0]["duration"], 2.0);
    EXPECT_EQ(streams[0]["bit_rate"], 360960);
    EXPECT_EQ(streams[0]["sections"], 73);
    EXPECT_EQ(streams[0]["discontinuities"], 0);
    EXPECT_EQ(streams[0]["first_time"], "2025-06-15T21:29:59.992Z");
    EXPECT_EQ(streams[0]["time"], "2025-06-15T21:30:01.988Z");
}

/// Those of the sections, without the faults behind them.
std::vector<Json> changesOf(const std::vector<ByteVector>& sections) {
    const TemporaryFile file(streamOf(0x0321, sections));
    std::istringstream lines(inspect({"--json", "--view", "diff", "--pid", "0x321", file.path()}).output);
    std::vector<Json> objects;
    for (std::string line; std::getline(lines, line);) {
        objects.push_back(Json::parse(line));
    }
    while (!objects.empty() && objects.back()["type"] == "fault") {
        objects.pop_back();
    }
    return objects;
}

TEST(JsonLines, HaveWhatChangesFromVersionToVersion) {
    LongHeader first;
    first.extension = 0xE6A0;
    LongHeader second = first;
    second.version = 1;
    const std::vector<Json> changes = changesOf({
        longSection(0x02, first, hex("E100 F000  1B E111 F003 520101")),
        longSection(0x02, second, hex("E100 F000  02 E111 F003 520101  0F E112 F000")),
        longSection(0x02, first, hex("E100 F000  1B E111 F002 5200")),
    });
    ASSERT_EQ(changes.size(), 3U);
    EXPECT_EQ(changes[0]["event"], "new");
    EXPECT_EQ(changes[1]["event"], "changed");
    EXPECT_EQ(changes[1]["version"], 1);
    EXPECT_EQ(changes[1]["former_version"], 0);
    EXPECT_EQ(changes[1]["former_pid"], 0x321);
    ASSERT_EQ(changes[1]["changes"].size(), 2U);
    EXPECT_EQ(changes[1]["changes"][0], Json({{"path", "elementary_streams[0x0111].stream_type"},
                                              {"before", {{"value", 27}, {"value_name", "H.264 video"}}},
                                              {"after", {{"value", 2}, {"value_name", "MPEG-2 video"}}}}));
    EXPECT_EQ(changes[1]["changes"][1]["path"], "elementary_streams[0x0112]");
    EXPECT_EQ(changes[1]["changes"][1]["before"], nullptr);
    EXPECT_EQ(changes[1]["changes"][1]["after"]["value"]["elementary_pid"], 0x112);
    EXPECT_EQ(changes[2]["event"], "rejected");
    EXPECT_EQ(changes[2]["error"]["name"], "ERROR_INVALID_ITEM");
}

TEST(JsonLines, CanBeReadWhileTheInputGoesOn) {
    Running tool({"--json", "-"});
    const ByteVector stream = sampleStream();
    tool.write(slice(stream, 0, 20 * PACKET_SIZE));
    EXPECT_TRUE(
        tool.waitFor("\n{\"type\":\"section\",\"schema_version\":1,\"source\":\"standard input\",\"pid\":257,"));
    EXPECT_EQ(Json::parse(tool.output().substr(0, tool.output().find('\n')))["table"], "PAT");
    tool.write(slice(stream, 20 * PACKET_SIZE, 40 * PACKET_SIZE));
    EXPECT_TRUE(tool.waitFor("\"pid\":8136,"));
    tool.endInput();
    EXPECT_EQ(tool.finish().status, 0);
}

} // namespace
