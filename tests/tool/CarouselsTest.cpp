#include "CarouselStreams.h"
#include "Process.h"
#include "support/RecordedFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr unsigned PID = CAROUSEL_PID;

Finished carousels(const ByteVector& stream, std::vector<std::string> arguments = {}) {
    const TemporaryFile file(stream);
    arguments.insert(arguments.begin(), {"--view", "carousels", "--table", "pat,pmt", file.path()});
    return inspect(arguments);
}

ByteVector wrongCrc(ByteVector section) {
    section.back() = static_cast<QUOR_U8>(section.back() ^ 1U);
    return section;
}

/// The lines of JSON of a type.
std::vector<nlohmann::json> linesOf(const std::string& type, const std::string& lines) {
    std::vector<nlohmann::json> found;
    std::istringstream stream(lines);
    for (std::string line; std::getline(stream, line);) {
        nlohmann::json object = nlohmann::json::parse(line);
        if (object.at("type") == type) {
            found.push_back(std::move(object));
        }
    }
    return found;
}

} // namespace

TEST(InspectCarousels, ShowsWhatCameAndWhatIsMissing) {
    const std::vector<ByteVector> sections = incompleteCarousel();
    const Finished finished = carousels(serviceWithCarousel().sections(PID, sections).sections(PID, sections).bytes());
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(
        finished.output,
        "Carousel 0x00000002  object carousel  PID 0x0140  service 0xE760 component tag 0x0C association tag 0x0140\n"
        "  DSI 0x80000000  version 0  came 2 times\n"
        "  DII 0x80000002  version 0  blocks of 4066 bytes  came 2 times\n"
        "    module 0x0001  version 1  340 bytes  complete  1 whole turn\n"
        "    module 0x0002  version 1  342 bytes  complete  1 whole turn  label \"ui\"\n"
        "      ! block 1 of 1 (byte 26)\n"
        "    module 0x0003  version 7  9085 bytes  2 of 3 blocks, missing 1  1 whole turn\n"
        "\n"
        "      main.ncl                    5 bytes  text/plain\n"
        "      media                                directory\n"
        "      media/film.ts                        module 0x0003 is incomplete\n"
        "      media/b                              module 0x0003 is incomplete\n"
        "      \\x1B[2J/a                   5 bytes  text/plain, no safe name\n"
        "      events                               stream events\n"
        "        event 0x0007 \"start\"\n"
        "      (module 0x0002, object 06)  8 bytes  no directory names it\n"
        "\n"
        "! PID 0x0140: block 1 of 1 (byte 26), 2 times, first  packet 40\n"
        "\n"
        "78 packets of 188 bytes, 16 sections on 3 PIDs: 2 shown, 0 rejected, 0 CRC errors, 0 discontinuities\n");
}

/// Of the others, the sizes stay in sight.
TEST(InspectCarousels, LetLongNamesStandOut) {
    const std::string longName(80, 'n');
    const std::string output =
        carousels(serviceWithCarousel()
                      .sections(PID, carouselOf({{"a", "fil", 2, hex("02")}, {longName, "fil", 2, hex("02")}},
                                                wire::file(hex("02"), text("ab"))))
                      .bytes())
            .output;
    EXPECT_THAT(output, HasSubstr("\n\n      a  2 bytes\n      " + longName + "  2 bytes\n\n"));
}

TEST(InspectCarousels, TellsTurnsByTheClock) {
    const std::vector<ByteVector> sections =
        carouselOf({{"a", "fil", 2, hex("02")}}, wire::file(hex("02"), text("ab")));
    StreamBuilder stream = serviceWithCarousel();
    for (unsigned turn = 0; turn < 4; ++turn) {
        stream.clock(0x0100, std::uint64_t{turn} * 13500000).sections(PID, sections).null(20);
    }
    const std::string output = carousels(stream.bytes()).output;
    EXPECT_THAT(output, HasSubstr("  DSI 0x80010000  version 1  came 4 times, every 0.500 s\n"));
    EXPECT_THAT(output, HasSubstr("complete  3 whole turns of 0.500 s\n"));
}

TEST(InspectCarousels, CountsSectionsWithAWrongCrc) {
    const std::vector<ByteVector> sections = incompleteCarousel();
    const Finished finished = carousels(
        serviceWithCarousel().sections(PID, {sections[0], wrongCrc(sections[1]), wrongCrc(sections[1])}).bytes());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("  ! no DII came\n"));
    EXPECT_THAT(finished.output, HasSubstr("! PID 0x0140: 2 of 3 sections with a wrong CRC_32\n"));
}

TEST(InspectCarousels, HaveDamagedSectionsShown) {
    const TemporaryFile file(
        serviceWithCarousel().sections(PID, {wrongCrc(wire::block({1, 0}, text("abcd")))}).bytes());
    EXPECT_THAT(inspect({"--show-damaged", file.path()}).output,
                HasSubstr("0x3C  PID 0x0140  version 1  section 0/0  current  packet 3  DAMAGED\n"
                          "  size  34 bytes\n"));
    EXPECT_THAT(inspect({"--show-damaged", "--json", file.path()}).output,
                HasSubstr(R"("damaged":true,"fields":{"size":34}})"));
}

/// Whatever the sections on these PIDs are.
TEST(InspectCarousels, AndTheirTablesAreSaidAndShownWhereEachCrcIsWrong) {
    const auto damaged = [](const std::string& fault, const std::string& table) {
        const TemporaryFile file{ByteVector()};
        runBuilt(MAKE_SAMPLE_PROGRAM, {"--seconds", "3", "--fault", fault, file.path()});
        const Finished finished = inspect({"--show-damaged", file.path()});
        EXPECT_EQ(finished.status, 3);
        const std::string output = '\n' + finished.output;
        std::size_t count = 0;
        for (std::size_t at = 0; (at = output.find('\n' + table + "  PID ", at)) != std::string::npos; ++at) {
            const std::string line = output.substr(at + 1, output.find('\n', at + 1) - at - 1);
            EXPECT_THAT(line, EndsWith("  DAMAGED"));
            ++count;
        }
        return std::to_string(count) + " of" + output.substr(output.rfind(" rejected,") + 10);
    };
    EXPECT_EQ(damaged("app-ait-crc", "AIT"), "12 of 12 CRC errors (PID 0x0130), 0 discontinuities\n");
    EXPECT_EQ(damaged("app-crc", "DSM-CC messages 0x3B"), "12 of 28 CRC errors (PID 0x0140), 0 discontinuities\n");
    EXPECT_EQ(damaged("app-crc", "DSM-CC data 0x3C"), "16 of 28 CRC errors (PID 0x0140), 0 discontinuities\n");
}

TEST(InspectCarousels, AreFoundWhereNothingAnnouncesThem) {
    const std::string output = carousels(StreamBuilder().sections(0x0555, incompleteCarousel()).bytes()).output;
    EXPECT_THAT(output, HasSubstr("Carousel 0x00000002  object carousel  PID 0x0555\n"));
    EXPECT_THAT(output, HasSubstr("no whole turn"));
}

TEST(InspectCarousels, AreNotLookedAtInOtherViews) {
    const TemporaryFile file(serviceWithCarousel().sections(PID, incompleteCarousel()).bytes());
    EXPECT_THAT(inspect({"--view", "stats", "--table", "pat,pmt", file.path()}).output,
                HasSubstr(" 2 sections on 2 PIDs"));
    EXPECT_THAT(inspect({"--view", "tree", "--table", "pat,pmt", file.path()}).output,
                HasSubstr(" 9 sections on 3 PIDs"));
}

TEST(InspectCarousels, AreCountedInTheTree) {
    const TemporaryFile file(serviceWithCarousel().sections(PID, incompleteCarousel()).bytes());
    EXPECT_THAT(inspect({"--table", "pat,pmt", file.path()}).output, HasSubstr("2 of 3 modules, 3 files"));
}

TEST(InspectCarousels, OfAnotherServiceAreNamedByTheTagsThatLeadThere) {
    const ByteVector other =
        longSection(PMT, named(0xE761), hex("FFFF F000 0B E141 F00D 14 0B 0141 0000 04 80000000 FFFF"));
    StreamBuilder stream;
    stream.section(PAT_PID, pat("E760 E100 E761 E101")).section(0x0101, other);
    stream.section(0x0100, longSection(PMT, named(0xE760), hex("FFFF F009 15 07 02 0141 0735 E761")));
    const TemporaryFile file(stream.bytes());
    EXPECT_THAT(inspect({"--table", "pat,pmt", file.path()}).output,
                HasSubstr("association tag 0x0141 is PID 0x0141 of service 0xE761"));
}

TEST(InspectCarousels, AreNone) {
    EXPECT_THAT(carousels(serviceWithCarousel().bytes()).output, testing::StartsWith("no carousel came\n\n"));
}

TEST(InspectCarousels, AreShownAgainAndAgain) {
    const std::vector<ByteVector> sections = incompleteCarousel();
    StreamBuilder stream = serviceWithCarousel();
    for (unsigned turn = 0; turn < 4; ++turn) {
        stream.clock(0x0100, std::uint64_t{turn} * 13500000).sections(PID, sections);
    }
    const std::string output = carousels(stream.bytes(), {"--every", "0.6s"}).output;
    EXPECT_THAT(output, HasSubstr("-- 0.6 s --\nCarousel 0x00000002"));
    EXPECT_THAT(output, HasSubstr("-- 1.2 s --\nCarousel 0x00000002"));
    const std::vector<nlohmann::json> lines =
        linesOf("carousel", carousels(stream.bytes(), {"--every", "0.6s", "--json"}).output);
    ASSERT_EQ(lines.size(), 4U);
    EXPECT_EQ(lines[0].count("interim"), 1U);
    EXPECT_EQ(lines[3].count("interim"), 0U);
}

TEST(InspectCarousels, AreWrittenInJson) {
    const std::vector<ByteVector> sections = incompleteCarousel();
    const Finished finished =
        carousels(serviceWithCarousel().sections(PID, sections).sections(PID, sections).bytes(), {"--json"});
    const std::vector<nlohmann::json> pids = linesOf("carousel_pid", finished.output);
    ASSERT_EQ(pids.size(), 1U);
    EXPECT_EQ(pids[0].at("components"), R"([{"service_id":59232,"component_tag":12,"association_tags":[320]}])"_json);
    EXPECT_EQ(pids[0].at("sections"), 14);
    EXPECT_EQ(pids[0].at("crc_errors"), 0);
    ASSERT_EQ(pids[0].at("refusals").size(), 1U);
    EXPECT_EQ(pids[0].at("refusals")[0].at("refusal"), "block_number");
    EXPECT_EQ(pids[0].at("refusals")[0].at("count"), 2);
    const std::vector<nlohmann::json> lines = linesOf("carousel", finished.output);
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0].at("carousel_id"), 2);
    EXPECT_EQ(lines[0].at("kind"), "object");
    EXPECT_EQ(lines[0].at("gateway"), "complete");
    EXPECT_EQ(lines[0].at("dsi").at("came"),
              R"({"count":2,"first":null,"last":null,"shortest":null,"longest":null})"_json);
    const nlohmann::json& film = lines[0].at("groups").at(0).at("modules").at(2);
    EXPECT_EQ(film.at("module_id"), 3);
    EXPECT_EQ(film.at("version"), 7);
    EXPECT_EQ(film.at("state"), "incomplete");
    EXPECT_EQ(film.at("received"), 2);
    EXPECT_EQ(film.at("missing"), R"([{"first":1,"last":1}])"_json);
    EXPECT_EQ(film.at("whole_turns"), 1);
    EXPECT_EQ(lines[0].at("groups").at(0).at("modules").at(1).at("label"), "ui");
    const nlohmann::json& files = lines[0].at("files");
    ASSERT_EQ(files.size(), 7U);
    EXPECT_EQ(files[0], R"({"path":"main.ncl","path_hex":"6D61696E2E6E636C","naming":"good","kind":"file",
                            "state":"complete","module_id":2,"object_key":"01","size":5,"content_type":"text/plain",
                            "stream":null})"_json);
    EXPECT_EQ(files[4].at("path"), R"(\x1B[2J/a)");
    EXPECT_EQ(files[4].at("naming"), "unsafe");
    EXPECT_EQ(files[5].at("stream").at("events"), R"([{"event_id":7,"name":"start"}])"_json);
    EXPECT_EQ(files[6].at("path"), nullptr);
    EXPECT_EQ(files[6].at("naming"), "none");
}

/// Modules and files as others read them.
TEST(InspectCarousels, OfRecordedStreams) {
    SKIP_WITHOUT_RECORDINGS();
    const std::string folder = TEST_DATA "/carousel/";
    for (const char* const name : {"gen-plain", "gen-compressed-nested", "gen-stream-events", "gen-arib",
                                   "tsduck-203.1", "tsduck-179.1", "rustdvb-m6", "opencaster-ocdir1"}) {
        const nlohmann::json truth = nlohmann::json::parse(readText(folder + name + ".json"));
        const std::vector<nlohmann::json> lines =
            linesOf("carousel", inspect({"--view", "carousels", "--json", folder + name + ".ts"}).output);
        ASSERT_EQ(lines.size(), truth.at("carousels").size()) << name;
        for (std::size_t at = 0; at < lines.size(); ++at) {
            const nlohmann::json& last = truth.at("carousels")[at].at("history").back();
            nlohmann::json modules = nlohmann::json::array();
            for (const nlohmann::json& group : lines[at].at("groups")) {
                for (const nlohmann::json& module : group.at("modules")) {
                    modules.push_back({module.at("module_id"), module.at("version"), module.at("size"),
                                       module.at("blocks"), module.at("received"), module.at("state")});
                }
            }
            nlohmann::json expected = nlohmann::json::array();
            for (const nlohmann::json& module : last.at("modules")) {
                expected.push_back({module.at("id"), module.at("version"), module.at("size"), module.at("blocks"),
                                    module.at("received"), module.at("state")});
            }
            EXPECT_EQ(modules, expected) << name;
            EXPECT_EQ(lines[at].at("files").size(), last.at("files").size()) << name;
        }
    }
}
