#include "Process.h"
#include "Streams.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace {

namespace fs = std::filesystem;

constexpr unsigned NIT_PID = 0x0010;

ByteVector nit(QUOR_U16 network, unsigned version, const std::string& payload) {
    LongHeader header;
    header.extension = network;
    header.version = version;
    header.section = 1;
    header.last = 1;
    return longSection(0x40, header, hex(payload));
}

const ByteVector GOOD = nit(0x0735, 3, "F000 F006 0735 0735 F000");
const ByteVector REJECTED = nit(0x0736, 4, "F002 40FF F000");
const ByteVector TIME = shortSection(0x73, hex("C079 124500 F000"));

ByteVector stream() {
    return StreamBuilder()
        .section(NIT_PID, GOOD)
        .section(NIT_PID, REJECTED)
        .section(NIT_PID, GOOD)
        .section(TOT_PID, TIME)
        .bytes();
}

/// A folder that goes with the object.
class Folder {
public:
    Folder() {
        std::string path = (fs::temp_directory_path() / "isdbt-inspect-test-XXXXXX").string();
        m_path = mkdtemp(path.data());
    }
    ~Folder() { fs::remove_all(m_path); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string operator/(const std::string& name) const { return m_path + '/' + name; }

private:
    std::string m_path;
};

std::vector<std::string> filesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& each : fs::directory_iterator(folder)) {
        names.push_back(each.path().filename());
    }
    return names;
}

Finished exportTo(const std::string& place, const ByteVector& bytes, std::vector<std::string> arguments = {}) {
    arguments.insert(arguments.end(), {"--table", "nit,tot", "--export", place});
    return inspectBytes(bytes, arguments);
}

} // namespace

TEST(InspectExport, ToAFileOfSections) {
    const Folder folder;
    const Finished finished = exportTo(folder / "all.sec", stream());
    EXPECT_EQ(finished.status, 3);
    EXPECT_EQ(finished.errors, "");
    EXPECT_THAT(finished.output, HasSubstr(": 2 shown, 1 rejected, "));
    EXPECT_EQ(readFile(folder / "all.sec"), join({GOOD, REJECTED, TIME}));
}

TEST(InspectExport, ToText) {
    const Folder folder;
    exportTo(folder / "all.hex", stream());
    EXPECT_EQ(readText(folder / "all.hex"), "// NIT  PID 0x0010  version 3  section 1/1  current  packet 1\n"
                                            "40 B0 13 07 35 C7 01 01 F0 00 F0 06 07 35 07 35\n"
                                            "F0 00 EF C9 DD C6\n"
                                            "// NIT  PID 0x0010  version 4  section 1/1  current  packet 2  REJECTED\n"
                                            "40 B0 0F 07 36 C9 01 01 F0 02 40 FF F0 00 02 09\n"
                                            "3F 4C\n"
                                            "// TOT  PID 0x0014  packet 4\n"
                                            "73 70 0B C0 79 12 45 00 F0 00 4E ED 84 55\n");
}

/// The sections, whatever they are, come out of the text as they came out of the packets.
TEST(InspectExport, ToTextIsReadAgain) {
    const Folder folder;
    exportTo(folder / "all.hex", stream());
    Start start;
    start.input = readFile(folder / "all.hex");
    const Finished finished = inspect({"--hex", "-", "--export", folder / "again.sec"}, start);
    EXPECT_EQ(finished.status, 3);
    EXPECT_THAT(finished.output, EndsWith("3 sections: 2 shown, 1 rejected, 0 CRC errors\n"));
    EXPECT_EQ(readFile(folder / "again.sec"), join({GOOD, REJECTED, TIME}));
}

TEST(InspectExport, OfTheSampleIsReadAgain) {
    const Folder folder;
    inspect({"--export", folder / "all.hex", SAMPLE_FILE});
    inspect({"--export", folder / "all.sec", SAMPLE_FILE});
    Start start;
    start.input = readFile(folder / "all.hex");
    inspect({"--hex", "-", "--export", folder / "again.sec"}, start);
    EXPECT_EQ(readFile(folder / "again.sec"), readFile(folder / "all.sec"));
    const Finished finished = inspect({"--view", "diff", "--lenient", SAMPLE_FILE, folder / "all.sec"});
    EXPECT_THAT(finished.output, EndsWith("11 sections: 11 shown, 0 rejected, 0 CRC errors\n"));
}

TEST(InspectExport, ToAFolder) {
    const Folder folder;
    const std::string place = folder / "new/of sections/";
    exportTo(place, stream());
    EXPECT_THAT(filesIn(place), UnorderedElementsAre("pid0x0010-tid0x40-ext0x0735-v3-s1.sec",
                                                     "pid0x0010-tid0x40-ext0x0736-v4-s1.sec", "pid0x0014-tid0x73.sec"));
    EXPECT_EQ(readFile(place + "pid0x0010-tid0x40-ext0x0735-v3-s1.sec"), GOOD);
    EXPECT_EQ(readFile(place + "pid0x0010-tid0x40-ext0x0736-v4-s1.sec"), REJECTED);
    EXPECT_EQ(readFile(place + "pid0x0014-tid0x73.sec"), TIME);
}

/// A TOT says another time whenever it comes. What is there already stays, and is not written twice.
TEST(InspectExport, ToAFolderNumbersThoseOfOneName) {
    const Folder folder;
    const std::string place = folder / "";
    const ByteVector later = shortSection(0x73, hex("C079 124501 F000"));
    const ByteVector evenLater = shortSection(0x73, hex("C079 124502 F000"));
    const auto show = [&place](const ByteVector& first, const ByteVector& second) {
        exportTo(place, StreamBuilder()
                            .section(TOT_PID, first)
                            .section(TOT_PID, second)
                            .section(TOT_PID, first)
                            .section(TOT_PID, second)
                            .bytes());
    };
    show(TIME, later);
    EXPECT_THAT(filesIn(place), UnorderedElementsAre("pid0x0014-tid0x73.sec", "pid0x0014-tid0x73-2.sec"));
    show(TIME, evenLater);
    EXPECT_THAT(filesIn(place),
                UnorderedElementsAre("pid0x0014-tid0x73.sec", "pid0x0014-tid0x73-2.sec", "pid0x0014-tid0x73-3.sec"));
    EXPECT_EQ(readFile(place + "pid0x0014-tid0x73.sec"), TIME);
    EXPECT_EQ(readFile(place + "pid0x0014-tid0x73-2.sec"), later);
    EXPECT_EQ(readFile(place + "pid0x0014-tid0x73-3.sec"), evenLater);
}

TEST(InspectExport, ToAFolderSaysWhatItLeavesAsItIs) {
    const Folder folder;
    EXPECT_EQ(exportTo(folder / "", stream()).errors, "");
    EXPECT_EQ(exportTo(folder / "", stream()).errors, "isdbt-inspect: " + folder / "" +
                                                          ": 3 of 3 sections were there already, and are left as they "
                                                          "are\n");
    EXPECT_EQ(filesIn(folder / "").size(), 3U);
}

TEST(InspectExport, OfSectionsWithoutPackets) {
    const Folder folder;
    const Finished finished =
        inspect({"--hex", "00 B0 0D 00 01 C1 00 00 00 01 E1 00 E8 F9 5E 7D", "--export", folder / ""});
    EXPECT_EQ(finished.status, 0);
    EXPECT_THAT(filesIn(folder / ""), UnorderedElementsAre("tid0x00-ext0x0001-v0-s0.sec"));
}

TEST(InspectExport, OfThoseThatAreChosen) {
    const Folder folder;
    exportTo(folder / "rejected.sec", stream(), {"--rejected"});
    EXPECT_EQ(readFile(folder / "rejected.sec"), REJECTED);
    exportTo(folder / "version.sec", stream(), {"--version", "3"});
    EXPECT_EQ(readFile(folder / "version.sec"), GOOD);
    ByteVector damaged = TIME;
    damaged.back() ^= 0x01U;
    exportTo(folder / "damaged.sec", StreamBuilder().section(TOT_PID, TIME).section(TOT_PID, damaged).bytes(),
             {"--rejected", "--show-damaged"});
    EXPECT_EQ(readFile(folder / "damaged.sec"), damaged);
}

/// Neither with the file nor with the outcome of the last run lost is anybody helped.
TEST(InspectExport, WritesOverNothing) {
    const Folder folder;
    exportTo(folder / "all.sec", stream());
    const Finished finished = exportTo(folder / "all.sec", StreamBuilder().section(TOT_PID, TIME).bytes());
    EXPECT_EQ(finished.status, 2);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: --export: " + folder / "all.sec" +
                                   " exists already\nRun with --help for more information.\n");
    EXPECT_EQ(readFile(folder / "all.sec"), join({GOOD, REJECTED, TIME}));
}

TEST(InspectExport, OfNothingMakesNoFile) {
    const Folder folder;
    exportTo(folder / "none.sec", stream(), {"--version", "31"});
    EXPECT_THAT(filesIn(folder / ""), UnorderedElementsAre());
}

TEST(InspectExport, ThatCannotBeWritten) {
    const Finished file = exportTo("/no-such-folder/all.sec", stream());
    EXPECT_EQ(file.status, 1);
    EXPECT_EQ(file.errors, "isdbt-inspect: /no-such-folder/all.sec: No such file or directory\n");
    const TemporaryFile other;
    const Finished folder = exportTo(other.path() + "/all/", stream());
    EXPECT_EQ(folder.status, 1);
    EXPECT_EQ(folder.errors, "isdbt-inspect: " + other.path() + "/all/: Not a directory\n");
}

TEST(InspectExport, IsIncompleteWhenTheOutputIsNotRead) {
    const Folder folder;
    Start start;
    start.outputIsClosed = true;
    const Finished finished = inspectTables({"--export", folder / "all.sec", SAMPLE_FILE}, start);
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.errors,
              "isdbt-inspect: " + folder / "all.sec" + ": incomplete, as the output was not read to its end\n");
}

TEST(InspectExport, WithoutSense) {
    const Finished ending = exportTo("all.bin", stream());
    EXPECT_EQ(ending.status, 2);
    EXPECT_THAT(ending.errors,
                StartsWith("isdbt-inspect: --export: all.bin is no folder and ends neither in .sec nor in "
                           ".hex; the name of a new folder ends in /\n"));
    EXPECT_EQ(inspect({"--descriptor", "pmt", "--hex", "52 01 07", "--export", "all.sec"}).status, 2);
}
