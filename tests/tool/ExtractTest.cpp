#include "CarouselStreams.h"
#include "CarouselWriter.h"
#include "Process.h"
#include "carousel/Sha256.h"
#include "support/RecordedFolder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <random>
#include <unistd.h>

using namespace wire;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::Pair;
using testing::UnorderedElementsAre;

namespace {

namespace fs = std::filesystem;

const std::string VERSION_1 = "pid-0x0140-carousel-0x00000002-version-1";
const std::string VERSION_2 = "pid-0x0140-carousel-0x00000002-version-2";

/// A folder to extract to, which goes with the object, and what stands beside it.
class Desk {
public:
    Desk() {
        std::string path = (fs::temp_directory_path() / "isdbt-inspect-test-XXXXXX").string();
        m_path = mkdtemp(path.data());
    }
    ~Desk() { fs::remove_all(m_path); }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    std::string folder() const { return m_path + "/to"; }
    std::string beside(const std::string& name) const { return m_path + '/' + name; }
    std::string in(const std::string& name) const { return folder() + '/' + name; }

    void put(const std::string& name, const std::string& content) const {
        fs::create_directories(fs::path(in(name)).parent_path());
        std::ofstream(in(name)) << content;
    }

    /// What has been extracted: files with their content, folders with a slash.
    std::map<std::string, std::string> content() const {
        std::map<std::string, std::string> found;
        for (const auto& each : fs::recursive_directory_iterator(folder())) {
            const std::string name = fs::relative(each.path(), folder()).string();
            if (each.is_symlink()) {
                found[name + '@'] = fs::read_symlink(each.path());
            } else if (each.is_directory()) {
                found[name + '/'] = "";
            } else {
                found[name] = readText(each.path());
            }
        }
        return found;
    }

private:
    std::string m_path;
};

Finished extract(const Desk& desk, const ByteVector& stream, std::vector<std::string> arguments = {}) {
    const TemporaryFile file(stream);
    arguments.insert(arguments.begin(), {"--table", "pat,pmt", "--extract", desk.folder(), file.path()});
    return inspect(arguments);
}

/// The lines that tell what has been extracted, without the path.
std::string told(const Desk& desk, const Finished& finished) {
    std::string text = finished.output.substr(std::min(finished.output.find("extracted "), finished.output.size()));
    for (std::size_t at = 0; (at = text.find(desk.folder() + '/')) != std::string::npos;) {
        text.erase(at, desk.folder().size() + 1);
    }
    return text;
}

ByteVector streamOf(const std::vector<ByteVector>& sections) {
    return serviceWithCarousel().sections(CAROUSEL_PID, sections).bytes();
}

ByteVector small(const std::string& content = "ab") {
    return streamOf(carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text(content))));
}

} // namespace

TEST(Extract, WritesFilesInTheirFolders) {
    const ByteVector objects =
        join({file(hex("02"), text("<ncl>")), directory("dir", hex("03"), {{"lua", "dir", 2, hex("04")}}),
              directory("dir", hex("04"), {{"a.lua", "fil", 2, hex("05")}}), file(hex("05"), fill(9000, 'x')),
              directory("dir", hex("06"), {}), file(hex("07"), {})});
    const Desk desk;
    const Finished finished = extract(desk, streamOf(carouselOf({{"main.ncl", "fil", 2, hex("02")},
                                                                 {"media", "dir", 2, hex("03")},
                                                                 {"none", "dir", 2, hex("06")},
                                                                 {"empty", "fil", 2, hex("07")}},
                                                                objects)));
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(told(desk, finished),
              "extracted " + VERSION_1 + ": 3 files of 9005 bytes, 0 partial, 0 incomplete, 0 refused\n");
    EXPECT_THAT(desk.content(),
                UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/main.ncl", "<ncl>"),
                                     Pair(VERSION_1 + "/media/", ""), Pair(VERSION_1 + "/media/lua/", ""),
                                     Pair(VERSION_1 + "/media/lua/a.lua", std::string(9000, 'x')),
                                     Pair(VERSION_1 + "/none/", ""), Pair(VERSION_1 + "/empty", "")));
}

TEST(Extract, WritesEachVersion) {
    std::vector<ByteVector> sections = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("one")));
    for (const ByteVector& each : carouselOf({{"b", "fil", 2, hex("02")}}, file(hex("02"), text("two")), 2)) {
        sections.push_back(each);
    }
    const Desk desk;
    const Finished finished = extract(desk, streamOf(sections));
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(
        told(desk, finished),
        AllOf(HasSubstr("extracted " + VERSION_1 + ": 1 file of 3 bytes, 0 partial, 0 incomplete, 0 refused\n"),
              HasSubstr("extracted " + VERSION_2 + ": 1 file of 3 bytes, 0 partial, 0 incomplete, 0 refused\n")));
    EXPECT_THAT(desk.content(), UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/a", "one"),
                                                     Pair(VERSION_2 + "/", ""), Pair(VERSION_2 + "/b", "two")));
}

/// Where nothing of a version came, and its announcement not again, another is already there.
TEST(Extract, PassesOverWhatIsBetweenVersions) {
    const std::vector<ByteVector> first = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("one")));
    const std::vector<ByteVector> second = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("two")), 2);
    const std::vector<ByteVector> third = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("three")), 3);
    std::vector<ByteVector> sections = first;
    sections.push_back(second[1]);
    sections.insert(sections.end(), third.begin(), third.end());
    const Desk desk;
    EXPECT_EQ(extract(desk, streamOf(sections)).status, 0);
    EXPECT_THAT(desk.content(), UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/a", "one"),
                                                     Pair(VERSION_2 + "/", ""), Pair(VERSION_2 + "/a", "three")));
}

TEST(Extract, WritesAnIncompleteVersionWhoseAnnouncementCameAgain) {
    std::vector<ByteVector> sections =
        carouselOf({{"a", "fil", 2, hex("02")}, {"b", "fil", 3, hex("02")}}, file(hex("02"), text("one")));
    sections.push_back(sections[1]);
    const std::vector<ByteVector> second = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("two")), 2);
    sections.insert(sections.end(), second.begin(), second.end());
    const Desk desk;
    const Finished finished = extract(desk, streamOf(sections));
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr(": 1 file of 3 bytes, 0 partial, 1 incomplete, 0 refused\n"
                                           "  ! b: not written: module 0x0003 is not announced\n"));
    EXPECT_THAT(desk.content(), UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/a", "one"),
                                                     Pair(VERSION_2 + "/", ""), Pair(VERSION_2 + "/a", "two")));
}

TEST(Extract, WritesAVersionThatReturnsOnce) {
    const std::vector<ByteVector> first = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("one")));
    const std::vector<ByteVector> second = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("two")), 2);
    std::vector<ByteVector> sections;
    for (int count = 0; count < 3; ++count) {
        sections.insert(sections.end(), first.begin(), first.end());
        sections.insert(sections.end(), second.begin(), second.end());
    }
    const Desk desk;
    const Finished finished = extract(desk, streamOf(sections));
    EXPECT_EQ(finished.status, 0) << finished.output;
    EXPECT_EQ(desk.content().size(), 4U);
}

/// Blocks on the PID that the tap names: by its own tag, by its component_tag, or left to another service.
TEST(Extract, FindsBlocksOnAnotherPid) {
    const std::vector<ByteVector> sections = carouselOf({{"a", "fil", 2, hex("02")}}, file(hex("02"), text("one")));
    const std::string carousel = "0B E140 F003 52010C ";
    const auto extracted = [&](const std::string& program, const std::string& blocks) {
        StreamBuilder stream;
        stream.section(PAT_PID, pat("E760 E100 E761 E101"));
        stream.section(0x0100, longSection(PMT, named(0xE760), hex("FFFF " + program + carousel + blocks)));
        stream.section(0x0101, longSection(PMT, named(0xE761), hex("FFFF F000 0B E142 F003 52010B")));
        stream.sections(CAROUSEL_PID, {sections[0], sections[1]});
        for (const unsigned pid : {0x0141U, 0x0142U}) {
            const bool isIt = (pid == 0x0141) == !blocks.empty();
            stream.sections(pid, isIt ? std::vector<ByteVector>(sections.begin() + 2, sections.end())
                                      : std::vector<ByteVector>{block({9}, text("none"))});
        }
        const Desk desk;
        const Finished finished = extract(desk, stream.bytes());
        EXPECT_EQ(finished.status, 0) << finished.output;
        return desk.content();
    };
    const auto whole = UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/a", "one"));
    EXPECT_THAT(extracted("F000 ", "0B E141 F007 14 05 000B 0000 00"), whole);
    EXPECT_THAT(extracted("F000 ", "0B E141 F003 52010B"), whole);
    EXPECT_THAT(extracted("F009 15 07 02 000B 0735 E761 ", ""), whole);
}

/// No directory has that name.
TEST(Extract, EscapesASlashInAName) {
    const Desk desk;
    const Finished finished =
        extract(desk, streamOf(carouselOf({{"a/b", "fil", 2, hex("02")}}, file(hex("02"), text("x")))));
    EXPECT_THAT(finished.output, HasSubstr("\n  a/b: written as a%2Fb (no safe name)\n"));
    EXPECT_THAT(desk.content(), UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/a%2Fb", "x")));
}

TEST(Extract, StaysInItsFolderWhateverNamesSay) {
    const std::string longName(100, '\x01');
    const Desk desk;
    const Finished finished =
        extract(desk, streamOf(carouselOf(
                          {{"../up", "fil", 2, hex("02")},
                           {"..", "dir", 2, hex("03")},
                           {"/etc/x", "fil", 2, hex("02")},
                           {"C:\\x", "fil", 2, hex("02")},
                           {"a\n\x1B", "fil", 2, hex("02")},
                           {".", "fil", 2, hex("02")},
                           {"same", "fil", 2, hex("02")},
                           {"same", "fil", 2, hex("04")},
                           {"%2E", "fil", 2, hex("04")},
                           {longName, "fil", 2, hex("02")}},
                          join({file(hex("02"), text("x")), directory("dir", hex("03"), {{"in", "fil", 2, hex("02")}}),
                                file(hex("04"), text("y"))}))));
    EXPECT_EQ(finished.status, 0);
    const std::string in = VERSION_1 + '/';
    EXPECT_THAT(
        desk.content(),
        UnorderedElementsAre(
            Pair(in, ""), Pair(in + "..%2Fup", "x"), Pair(in + "%2E%2E/", ""), Pair(in + "%2E%2E/in", "x"),
            Pair(in + "%2Fetc%2Fx", "x"), Pair(in + "C%3A%5Cx", "x"), Pair(in + "a%0A%1B", "x"), Pair(in + "%2E", "x"),
            Pair(in + "same", "x"), Pair(in + "same~2", "y"), Pair(in + "%2E~2", "y"),
            Pair(
                in +
                    "%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01%01" +
                    "%%~9B792059",
                "x")));
    EXPECT_THAT(told(desk, finished),
                AllOf(HasSubstr("  ../up: written as ..%2Fup (no safe name)\n"),
                      HasSubstr("  a\\x0A\\x1B: written as a%0A%1B (no safe name)\n"),
                      HasSubstr("  same: written as same~2 (a name that is there already)\n"),
                      HasSubstr("  %2E: written as %2E~2 (there is another of this name, or it can be none)\n")));
}

TEST(Extract, FollowsNoLinkThatIsThere) {
    const Desk desk;
    fs::create_directories(desk.folder());
    fs::create_directories(desk.beside("other"));
    fs::create_directory_symlink(desk.beside("other"), desk.in(VERSION_1));
    const Finished finished = extract(desk, small());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(told(desk, finished), "extracted " + VERSION_1 +
                                        ": 0 files of 0 bytes, 0 partial, 0 incomplete, 1 refused\n"
                                        "  ! not written: there is a symbolic link of this name\n");
    EXPECT_TRUE(fs::is_empty(desk.beside("other")));
}

TEST(Extract, FollowsNoLinkInAFolder) {
    const ByteVector stream = streamOf(
        carouselOf({{"a", "fil", 2, hex("02")}, {"media", "dir", 2, hex("03")}},
                   join({file(hex("02"), text("x")), directory("dir", hex("03"), {{"b", "fil", 2, hex("02")}})})));
    for (const bool overwrite : {false, true}) {
        const Desk desk;
        fs::create_directories(desk.in(VERSION_1));
        fs::create_directories(desk.beside("other"));
        std::ofstream(desk.beside("file")) << "mine";
        fs::create_directory_symlink(desk.beside("other"), desk.in(VERSION_1 + "/media"));
        fs::create_symlink(desk.beside("file"), desk.in(VERSION_1 + "/a"));
        const Finished finished =
            extract(desk, stream, overwrite ? std::vector<std::string>{"--overwrite"} : std::vector<std::string>{});
        EXPECT_EQ(finished.status, 3);
        EXPECT_THAT(finished.output, HasSubstr("  ! media: not written: there is a symbolic link of this name\n"));
        EXPECT_TRUE(fs::is_empty(desk.beside("other")));
        EXPECT_EQ(readText(desk.beside("file")), "mine");
        EXPECT_EQ(fs::is_symlink(desk.in(VERSION_1 + "/a")), !overwrite);
    }
}

TEST(Extract, KeepsWhatIsThere) {
    const Desk desk;
    desk.put(VERSION_1 + "/a", "mine");
    const Finished finished = extract(desk, small());
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("  ! a: not written: there is one of this name already\n"));
    EXPECT_EQ(desk.content().at(VERSION_1 + "/a"), "mine");
}

TEST(Extract, ReplacesWhatIsThereWhenTold) {
    const Desk desk;
    desk.put(VERSION_1 + "/a", "mine");
    fs::create_hard_link(desk.in(VERSION_1 + "/a"), desk.beside("also"));
    EXPECT_EQ(extract(desk, small(), {"--overwrite"}).status, 0);
    EXPECT_EQ(desk.content().at(VERSION_1 + "/a"), "ab");
    EXPECT_EQ(readText(desk.beside("also")), "mine");
    desk.put(VERSION_1 + "/a~", "");
    fs::remove(desk.in(VERSION_1 + "/a"));
    desk.put(VERSION_1 + "/a/b", "a folder");
    const Finished finished = extract(desk, small(), {"--overwrite"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, HasSubstr("  ! a: not written: there is a folder of this name\n"));
}

TEST(Extract, EndsWhereNothingCanBeWritten) {
    const Desk desk;
    std::ofstream(desk.beside("to")) << "a file";
    const Finished finished = extract(desk, small());
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: " + desk.folder() + ": Not a directory\n");
}

TEST(Extract, LeavesNoHalfFileWhereThereIsNoSpace) {
    const Desk desk;
    const TemporaryFile stream(small(std::string(3000, 'x')));
    std::string command = "trap '' XFSZ; ulimit -f 2; exec";
    for (const std::string& word : commandOf(INSPECT_PROGRAM, {"--extract", desk.folder(), stream.path()})) {
        command += " '" + word + "'";
    }
    const Finished finished = runProgram("/bin/bash", {"-c", command + " > /dev/null"});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors, "isdbt-inspect: " + desk.in(VERSION_1) + "/a: File too large\n");
    EXPECT_THAT(desk.content(), ElementsAre(Pair(VERSION_1 + "/", "")));
}

TEST(Extract, WritesNoIncompleteFiles) {
    const Desk desk;
    const Finished finished = extract(desk, streamOf(incompleteCarousel()));
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(told(desk, finished), "extracted " + VERSION_1 +
                                        ": 3 files of 18 bytes, 0 partial, 2 incomplete, 0 refused\n"
                                        "  ! media/film.ts: not written: 2 of 3 blocks of module 0x0003 came\n"
                                        "  ! media/b: not written: 2 of 3 blocks of module 0x0003 came\n"
                                        "  \\x1B[2J/a: written as %1B[2J%2Fa (no safe name)\n"
                                        "  events: no file, but a stream\n"
                                        "  written as unnamed-module-0x0002-object-06 (no name leads to it)\n");
}

TEST(Extract, WritesIncompleteFilesAsPartial) {
    const Desk desk;
    const Finished finished = extract(desk, streamOf(incompleteCarousel()), {"--partial"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                AllOf(HasSubstr(": 3 files of 18 bytes, 2 partial, 0 incomplete, 0 refused\n"),
                      HasSubstr("  ! media/film.ts: written as media/film.ts.partial: 2 of 3 blocks of module 0x0003 "
                                "came: 4066 of 9000 bytes are missing, and zeros\n")));
    const std::string film = desk.content().at(VERSION_1 + "/media/film.ts.partial");
    ASSERT_EQ(film.size(), 9000U);
    EXPECT_EQ(std::count(film.begin(), film.end(), '\0'), 4066);
    EXPECT_EQ(film.find('\0'), 4025U);
    EXPECT_EQ(desk.content().at(VERSION_1 + "/media/b.partial"), "end");
}

TEST(Extract, SaysWhyNothingOfAFileIsPartial) {
    const ByteVector root = directory("srg", hex("01"), {{"a", "fil", 2, hex("02")}});
    const Desk desk;
    const Finished finished =
        extract(desk,
                streamOf({gatewaySection(2, 1, hex("01")),
                          objectDii({2, 4066}, {{1, root.size()}, {2, 5000, 1, hex("09 05 78 00002000")}}),
                          block({1}, root), block({2}, fill(4066, 'x'))}),
                {"--partial"});
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output,
                HasSubstr("  ! a: not written: 1 of 2 blocks of module 0x0002 came, which is compressed\n"));
}

TEST(Extract, WritesTheModulesOfADataCarousel) {
    const std::vector<ByteVector> sections{
        dataDii({2, 4066}, {{1, 3, 1, join({hex("02 04"), text("name")})}, {2, 3}, {3, 3, 1, hex("02 02 2F78")}}),
        block({1}, text("one")), block({2}, text("two")), block({3}, text("six"))};
    const Desk desk;
    EXPECT_EQ(extract(desk, streamOf(sections)).status, 0);
    EXPECT_THAT(desk.content(),
                UnorderedElementsAre(Pair(VERSION_1 + "/", ""), Pair(VERSION_1 + "/name", "one"),
                                     Pair(VERSION_1 + "/module-0x0002", "two"), Pair(VERSION_1 + "/%2Fx", "six")));
}

TEST(Extract, WritesTwoThousandFiles) {
    std::vector<Bound> bindings;
    ByteVector objects;
    for (unsigned number = 0; number < 2000; ++number) {
        bindings.push_back({"file" + std::to_string(number), "fil", 2, u16(number)});
        const ByteVector object = file(u16(number), text(std::to_string(number * 7)));
        objects.insert(objects.end(), object.begin(), object.end());
    }
    const Desk desk;
    const Finished finished = extract(desk, streamOf(carouselOf(bindings, objects)));
    EXPECT_EQ(finished.status, 0);
    const std::map<std::string, std::string> content = desk.content();
    EXPECT_EQ(content.size(), 2001U);
    EXPECT_EQ(content.at(VERSION_1 + "/file1999"), "13993");
}

/// What is small on air must not fill the disk.
TEST(Extract, WritesOfAFileWithManyNamesNoMoreThanItMay) {
    std::vector<Bound> bindings;
    for (unsigned number = 0; number < 1000; ++number) {
        bindings.push_back({"file" + std::to_string(number), "fil", 2, hex("02")});
    }
    const Desk desk;
    const Finished finished = extract(desk, streamOf(carouselOf(bindings, file(hex("02"), fill(4'000'000, 'x')))));
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(
        told(desk, finished),
        AllOf(HasSubstr(": 67 files of 268000000 bytes, 0 partial, 0 incomplete, 933 refused\n"),
              HasSubstr("  ! file67: not written: the files of a carousel would be more than 268435456 bytes\n")));
}

/// A file that stays, one that changes, one that goes and one that is new: each version is what went in.
TEST(Extract, WritesThreeVersionsAsTheyWentIn) {
    std::map<std::string, std::string> files{{"a/stays", "same"}, {"a/changes", "1"}, {"goes", std::string(9000, 'x')}};
    const auto entries = [&files] {
        std::vector<sample::CarouselEntry> all;
        for (const auto& [path, content] : files) {
            all.push_back({path, text(content)});
        }
        return all;
    };
    for (const bool isCompressed : {false, true}) {
        files = {{"a/stays", "same"}, {"a/changes", "1"}, {"goes", std::string(9000, 'x')}};
        std::map<std::string, std::string> expected;
        std::vector<ByteVector> sections;
        sample::CarouselPlan plan;
        plan.moduleSize = 1;
        plan.compressed = isCompressed;
        sample::CarouselWriter carousel(plan, entries());
        for (const int version : {1, 2, 3}) {
            for (const auto& [path, content] : files) {
                expected["pid-0x0140-carousel-0x00000001-version-" + std::to_string(version) + '/' + path] = content;
            }
            const std::vector<ByteVector> turn = carousel.turn();
            sections.insert(sections.end(), turn.begin(), turn.end());
            files["a/changes"] += "2";
            files.erase("goes");
            files["new/" + std::to_string(version)] = "new";
            carousel.update(entries());
        }
        const Desk desk;
        EXPECT_EQ(extract(desk, streamOf(sections)).status, 0);
        std::map<std::string, std::string> extracted = desk.content();
        for (auto at = extracted.begin(); at != extracted.end();) {
            at = at->first.back() == '/' ? extracted.erase(at) : std::next(at);
        }
        EXPECT_EQ(extracted, expected);
    }
}

TEST(Extract, IsToldInJson) {
    const Desk desk;
    const std::string output = extract(desk, streamOf(incompleteCarousel()), {"--json"}).output;
    const std::size_t at = output.find(R"({"type":"extraction")");
    ASSERT_NE(at, std::string::npos);
    const nlohmann::json line = nlohmann::json::parse(output.substr(at, output.find('\n', at) - at));
    EXPECT_EQ(line.at("folder"), desk.in(VERSION_1));
    EXPECT_EQ(line.at("pid"), 0x0140);
    EXPECT_EQ(line.at("carousel_id"), 2);
    EXPECT_EQ(line.at("version"), 1);
    EXPECT_EQ(line.at("files"), 3);
    EXPECT_EQ(line.at("bytes"), 18);
    EXPECT_EQ(line.at("incomplete"), 2);
    ASSERT_EQ(line.at("others").size(), 5U);
    EXPECT_EQ(line.at("others")[2], R"({"kind":"renamed","path":"\\x1B[2J/a","path_hex":"1B5B324A2F61",
                                        "written_as":"%1B[2J%2Fa","text":"no safe name"})"_json);
    EXPECT_EQ(line.at("others")[4].at("path"), nullptr);
}

TEST(Extract, FindsNothing) {
    const Desk desk;
    const TemporaryFile file(serviceWithCarousel().bytes());
    const Finished finished = inspect({"--table", "pat,pmt", "--extract", desk.folder(), file.path()});
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors,
              "isdbt-inspect: " + file.path() + ": nothing to extract, as no carousel came with its DII\n");
    EXPECT_FALSE(fs::exists(desk.folder()));
}

TEST(Extract, IsRefusedWhereItMakesNoSense) {
    const auto usageErrorOf = [](const std::vector<std::string>& arguments) {
        const Finished finished = inspect(arguments);
        EXPECT_EQ(finished.status, 2);
        return finished.errors.substr(0, finished.errors.find('\n'));
    };
    EXPECT_EQ(usageErrorOf({"--extract", "to", SAMPLE_FILE, SAMPLE_FILE}),
              "isdbt-inspect: --extract: one input at a time, as each has its own carousels");
    EXPECT_EQ(usageErrorOf({"--extract", "to", "--hex", "00"}),
              "isdbt-inspect: --extract: sections outside of packets have no PID");
    EXPECT_EQ(usageErrorOf({"--partial", SAMPLE_FILE}), "isdbt-inspect: --partial requires --extract");
    EXPECT_EQ(usageErrorOf({"--overwrite", SAMPLE_FILE}), "isdbt-inspect: --overwrite requires --extract");
    EXPECT_EQ(usageErrorOf({"--extract", "", SAMPLE_FILE}), "isdbt-inspect: --extract: a folder needs a name");
}

#ifdef NDEBUG // thousands of files take long where each access is checked
/// Byte for byte what was put in. The last is one module of more than 256 blocks, compressed or not.
TEST(Extract, OfTheFilesOfAFolder) {
    constexpr std::size_t BLOCK = 4066; // bytes
    for (const auto& [files, bytes] :
         {std::pair<unsigned, std::size_t>(1, 6), {50, 5000}, {2000, 100}, {1, 520 * BLOCK}}) {
        const Desk desk;
        std::map<std::string, std::string> put;
        std::minstd_rand random(files);
        for (unsigned number = 0; number < files; ++number) {
            const std::string name = "d" + std::to_string(number % 7) + "/" + std::to_string(number % 3) + "/file " +
                                     std::to_string(number) + ".txt";
            std::string& content = put["pid-0x0140-carousel-0x00000001-version-1/" + name];
            content.assign(bytes, 'a');
            std::generate_n(content.begin(), bytes / 2, [&random] { return static_cast<char>(random() >> 8U); });
            const fs::path path = desk.beside("from/" + name);
            fs::create_directories(path.parent_path());
            std::ofstream(path, std::ios::binary) << content;
        }
        for (const bool isCompressed : {true, false}) {
            std::vector<std::string> arguments{
                "--seconds", "3", "--bit-rate", "20000000", "--files", desk.beside("from"), desk.beside("made.ts")};
            if (!isCompressed) {
                arguments.emplace_back("--uncompressed");
            }
            EXPECT_EQ(runBuilt(MAKE_SAMPLE_PROGRAM, arguments).status, 0);
            const Finished finished =
                inspect({"--table", "pat,pmt", "--extract", desk.folder(), desk.beside("made.ts")});
            EXPECT_EQ(finished.status, 0) << finished.output;
            std::map<std::string, std::string> extracted = desk.content();
            for (auto at = extracted.begin(); at != extracted.end();) {
                at = at->first.back() == '/' ? extracted.erase(at) : std::next(at);
            }
            EXPECT_TRUE(extracted == put) << files << " files, compressed: " << isCompressed;
            fs::remove_all(desk.folder());
        }
    }
}
#endif

/// Byte for byte what others extract.
TEST(Extract, OfRecordedStreams) {
    SKIP_WITHOUT_RECORDINGS();
    for (const char* const name :
         {"gen-plain", "gen-compressed-nested", "gen-stream-events", "tsduck-203.1", "opencaster-ocdir1"}) {
        const std::string stream = std::string(TEST_DATA "/carousel/") + name;
        const Desk desk;
        inspect({"--lenient", "--extract", desk.folder(), stream + ".ts"});
        std::map<std::string, std::string> extracted; // SHA-256 by path
        for (const auto& [path, content] : desk.content()) {
            const std::size_t slash = path.find('/');
            if (path.back() != '/' && path.substr(0, slash).find("version-1") != std::string::npos) {
                extracted[path.substr(slash + 1)] = sha256(text(content));
            }
        }
        const nlohmann::json truth = nlohmann::json::parse(readText(stream + ".json"));
        std::size_t files = 0;
        for (const nlohmann::json& file : truth.at("carousels").at(0).at("history").at(0).at("files")) {
            if (file.at("kind") == "fil" && file.at("state") == "ok") {
                const std::string path = file.at("path");
                const bool isAscii =
                    std::all_of(path.begin(), path.end(), [](unsigned char each) { return each < 0x80; });
                ++files;
                if (isAscii) { // others are written as they were broadcast
                    EXPECT_EQ(extracted[path], file.at("sha256")) << name << ": " << path;
                }
            }
        }
        EXPECT_EQ(extracted.size(), files) << name;
    }
}
