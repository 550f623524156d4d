#include "tool/json/Schema.h"

#include "support/FullSections.h"
#include "support/RecordedFolder.h"
#include "tool/BroadcastStream.h"
#include "tool/Process.h"
#include "tool/Streams.h"
#include "tool/json/CarriedSections.h"
#include "tool/json/ExampleSections.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;

/// What the schema says of lines: a line for each fault, and how many lines and faults there were.
std::string validated(const std::string& lines) {
    Start start;
    start.input = text(lines);
    const Finished finished = runProgram("/usr/bin/env", {"python3", LINE_VALIDATOR, SCHEMA_FILE}, start);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    return finished.output;
}

std::string withoutFaults(const std::string& lines) {
    return std::to_string(std::count(lines.begin(), lines.end(), '\n')) + " lines, 0 faults\n";
}

std::string jsonOf(const std::vector<ByteVector>& sections) {
    const TemporaryFile file(streamOf(0x0321, sections));
    return inspect({"--json", "--pid", "0x321", file.path()}).output;
}

TEST(Schema, IsWhatItsProgramWrites) {
    EXPECT_TRUE(readText(SCHEMA_FILE) == schemaText()) << "run make-json-schema and commit what it writes";
}

TEST(Schema, AllowsTheSample) {
    const Finished finished = inspect({"--json", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(validated(finished.output), "11 lines, 0 faults\n");
}

TEST(Schema, AllowsTheStatisticsOfTheSample) {
    const Finished finished = inspect({"--json", "--view", "stats", SAMPLE_FILE});
    EXPECT_THAT(finished.output, HasSubstr(R"("type":"pid_statistics")"));
    EXPECT_EQ(validated(finished.output), withoutFaults(finished.output));
}

/// The lines that are in a page.
std::string pageLines(const std::string& page) {
    const std::string script = "sed -n 's/^<script type=\"application.gzip;base64\">\\(.*\\)<.script>$/\\1/p' " + page +
                               " | while read -r part; do echo \"$part\" | base64 -d | gunzip; done";
    return runProgram("/bin/bash", {"-c", script}).output;
}

TEST(Schema, AllowsWhatAPageIsMadeOf) {
    const TemporaryFile page;
    const TemporaryFile damaged(BroadcastStream(3).lose(500).bytes());
    inspect({"--limits", "isdbt", "--report", page.path(), SAMPLE_FILE, damaged.path()});
    const std::string lines = pageLines(page.path());
    EXPECT_THAT(lines, HasSubstr(R"("type":"outline")"));
    EXPECT_THAT(lines, HasSubstr(R"("type":"event")"));
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

TEST(Schema, AllowsApplications) {
    const Finished finished = inspect({"--json", "--view", "applications", "--pid", "0x140", SAMPLE_FILE});
    EXPECT_THAT(finished.output, HasSubstr(R"("type":"application")"));
    EXPECT_EQ(validated(finished.output), "2 lines, 0 faults\n");
}

TEST(Schema, AllowsAlarmsAndChecks) {
    const TemporaryFile limits(
        text(R"({"based_on": "dvb", "checks": {"pat_interval": {"alarm": {"seconds": 0.001, "source": "none"}}}})"));
    const std::string lines = inspect({"--json", "--view", "stats", "--limits", limits.path(), SAMPLE_FILE}).output;
    EXPECT_THAT(lines, HasSubstr(R"("type":"alarm")"));
    EXPECT_THAT(lines, HasSubstr(R"("type":"check")"));
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

TEST(Schema, AllowsBroadcastStreams) {
    const char* const reserved = "7F 00 3C 9677FFFFFE 9677FFFFFF FFFFFF 6FD55F85";
    std::string lines;
    for (const ByteVector& stream :
         {BroadcastStream(3).lose(500).bytes(), BroadcastStream(2).withoutTrailers(),
          BroadcastStream(2).configure(reserved).bytes(), BroadcastStream(1).lose(100, FRAME - 100).bytes()}) {
        const TemporaryFile file(stream);
        lines += inspect({"--json", file.path()}).output;
        lines += inspect({"--json", "--view", "stats", file.path()}).output;
    }
    EXPECT_THAT(lines, HasSubstr(R"("type":"transmission")"));
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

TEST(Schema, AllowsEveryFieldInEveryForm) {
    const std::string lines = jsonOf(exampleSections());
    std::size_t sections = 0;
    for (std::size_t at = 0; (at = lines.find(R"({"type":"section")", at)) != std::string::npos; ++at) {
        ++sections;
    }
    EXPECT_EQ(sections, exampleSections().size());
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

/// The section with one of its bytes made the largest, for many of them; the CRC_32 is right again.
std::vector<ByteVector> spoilt(const ByteVector& section) {
    constexpr std::size_t HEADER_SIZE = 8;
    constexpr std::size_t CRC_SIZE = 4;
    constexpr std::size_t STEP = 5;
    std::vector<ByteVector> sections;
    for (std::size_t at = HEADER_SIZE; at + CRC_SIZE < section.size(); at += STEP) {
        ByteVector body = slice(section, 0, section.size() - CRC_SIZE);
        body[at] = 0xFF;
        const QUOR_U32 crc = crc32(body);
        sections.push_back(join({body, u16(crc >> 16U), u16(crc & 0xFFFFU)}));
    }
    return sections;
}

TEST(Schema, AllowsSectionsThatAreOddOrRejected) {
    std::vector<ByteVector> sections;
    for (const ByteVector& full : exampleSections()) {
        const std::vector<ByteVector> some = spoilt(full);
        sections.insert(sections.end(), some.begin(), some.end());
    }
    const std::string lines = jsonOf(sections);
    EXPECT_THAT(lines, HasSubstr(R"("at_fault":true)"));
    EXPECT_GT(std::count(lines.begin(), lines.end(), '\n'), 200);
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

TEST(Schema, AllowsRecordedStreams) {
    SKIP_WITHOUT_RECORDINGS();
    std::string lines;
    for (const auto& entry : std::filesystem::directory_iterator(TEST_DATA "/streams")) {
        lines += inspect({"--json", entry.path()}).output;
        lines += inspect({"--json", "--view", "stats", entry.path()}).output;
        lines += inspect({"--json", "--view", "diff", entry.path(), SAMPLE_FILE}).output;
    }
    EXPECT_THAT(lines, HasSubstr(R"("error":{"code":2570,"name":"ERROR_INVALID_ITEM"})"));
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

TEST(Schema, AllowsRecordedSections) {
    SKIP_WITHOUT_RECORDINGS();
    std::vector<std::string> arguments{"--json", "--sections"};
    for (const char* const folder : {TEST_DATA "/sections", TEST_DATA "/generated"}) {
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            arguments.push_back(entry.path());
        }
    }
    const std::string lines = inspect(arguments).output;
    EXPECT_THAT(lines, HasSubstr(R"("pid":null,"table":"SDTT")"));
    EXPECT_EQ(validated(lines), withoutFaults(lines));
}

TEST(Schema, AllowsDescriptorsByThemselves) {
    const std::string lines =
        inspect({"--json", "--descriptor", "pmt", "--hex", "52 01 07  55 04 42 52 41 16  FF 00"}).output +
        inspect({"--json", "--descriptor", "ait", "--hex", "02 02 00 03  00 09 01"}).output;
    EXPECT_EQ(validated(lines), "5 lines, 0 faults\n");
}

/// A change to the line of a section, and what is wrong with it then.
struct Fault {
    std::string part;
    std::string other;
    std::string complaint;
};

const Fault FAULTS[] = {
    {"{\"transport", "{\"x\":1,\"transport", "$.fields: Additional properties are not allowed ('x' was unexpected)"},
    {"network_pid", "other_pid", "$.fields: 'network_pid' is a required property"},
    {"\"network_pid\":16", "\"network_pid\":\"16\"", "$.fields.network_pid: '16' is not of type 'integer'"},
    {"\"network_pid\":16", "\"network_pid\":65536", "$.fields.network_pid: 65536 is greater than the maximum of 65535"},
    {"\"network_pid\":16", "\"network_pid\":16,\"network_pid\":16", "two members of one name"},
    {"\"PAT\"", "\"PMT\"", "$.fields: 'pcr_pid' is a required property"},
    {"\"fields\"", "\"error\"", "$.error: 'code' is a required property"},
    {"\"section\"", "\"other\"", "$.type: 'other' is not one of"},
    {"\"version\":0", "\"version\":0,\"x\":1", "$: Additional properties are not allowed ('x' was unexpected)"},
    {"\"pid\":801", "\"pid\":8192", "$.pid: 8192 is greater than the maximum of 8191"},
    {"}", "", "Expecting ',' delimiter"},
};

TEST(Schema, AllowsNothingElse) {
    const std::string all = jsonOf({fullPat()});
    EXPECT_THAT(all, HasSubstr(R"("type":"fault")"));
    EXPECT_EQ(validated(all), withoutFaults(all));
    const std::string line = all.substr(0, all.find('\n') + 1);
    EXPECT_EQ(validated(line), "1 lines, 0 faults\n");
    std::string lines;
    for (const Fault& fault : FAULTS) {
        ASSERT_THAT(line, HasSubstr(fault.part));
        lines += std::string(line).replace(line.find(fault.part), fault.part.size(), fault.other);
    }
    const std::string said = validated(lines);
    int number = 0;
    for (const Fault& fault : FAULTS) {
        EXPECT_THAT(said, HasSubstr("line " + std::to_string(++number) + ": " + fault.complaint));
    }
}

} // namespace
