#include "Process.h"
#include "Streams.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace {

/// The JSON in a page, as docs/page.md gets it out.
std::string dataOf(const std::string& page) {
    const std::string script = "sed -n 's/^<script type=\"application.gzip;base64\">\\(.*\\)<.script>$/\\1/p' " + page +
                               " | while read -r part; do echo \"$part\" | base64 -d | gunzip; done";
    return runProgram("/bin/bash", {"-c", script}).output;
}

/// What a page of a stream says.
std::string reported(const ByteVector& stream, std::vector<std::string> arguments = {}) {
    const TemporaryFile input(stream);
    const TemporaryFile page;
    arguments.insert(arguments.end(), {"--report", page.path(), input.path()});
    inspect(arguments);
    return dataOf(page.path());
}

std::ptrdiff_t linesOf(const std::string& data, const std::string& type) {
    std::ptrdiff_t count = 0;
    const std::string begin = "{\"type\":\"" + type + "\"";
    for (std::size_t at = data.find(begin); at != std::string::npos; at = data.find(begin, at + 1)) {
        ++count;
    }
    return count;
}

} // namespace

TEST(InspectReport, IsAPageBesideTheView) {
    const TemporaryFile page;
    const Finished finished = inspect({"--full", "--report", page.path(), SAMPLE_FILE});
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.output, inspect({"--full", SAMPLE_FILE}).output);
    const std::string text = readText(page.path());
    EXPECT_THAT(text, StartsWith("<!DOCTYPE html>\n"));
    EXPECT_THAT(text, testing::EndsWith("</script>\n</body>\n</html>\n"));
    EXPECT_LT(text.size(), 200000U);
}

TEST(InspectReport, HasNothingThatIsElsewhere) {
    const TemporaryFile page;
    inspect({"--report", page.path(), SAMPLE_FILE});
    const std::string text = readText(page.path());
    EXPECT_THAT(text, HasSubstr("default-src 'none'"));
    for (const char* const reference :
         {"src=\"", "href=\"http", "@import", "url(", "import(", "innerHTML", "document.write"}) {
        EXPECT_THAT(text, Not(HasSubstr(reference)));
    }
}

TEST(InspectReport, HasTheSameJson) {
    const std::string data = reported(sampleStream());
    EXPECT_EQ(linesOf(data, "section"), 11);
    EXPECT_EQ(linesOf(data, "table_history"), 11);
    EXPECT_EQ(linesOf(data, "table_statistics"), 11);
    EXPECT_EQ(linesOf(data, "stream"), 1);
    EXPECT_EQ(linesOf(data, "outline"), 1);
    EXPECT_THAT(data, HasSubstr(R"("type":"history","schema_version":1,)"));
    EXPECT_THAT(data, HasSubstr(R"("step":0.015625,"sections_left_out":0,"events_left_out":0})"));
    EXPECT_THAT(data, HasSubstr(R"j("title":"Service 0xE6A0 (59040)","names":["\"Maré-Açu HD\""])j"));
}

/// A PAT comes each 0.1 s, which is 6.4 steps.
TEST(InspectReport, SaysWhatCameWhen) {
    const std::string data = reported(sampleStream());
    const std::string pat =
        R"j("pid":0,"table":"PAT","table_id":0,"table_id_name":"PAT (program association)","gaps":[)j";
    EXPECT_THAT(data, HasSubstr(pat + "0,6,7,6,6,7,6,7,6,6,"));
    EXPECT_THAT(data, HasSubstr(R"("event":"pcr_interval","pid":256)"));
}

TEST(InspectReport, HasTheBytesOfAllSections) {
    const std::string data = reported(StreamBuilder().section(PAT_PID, pat("E6A0 E101")).bytes());
    EXPECT_THAT(data, HasSubstr(R"("loops":[],"bytes":"00B00D0735C10000E6A0E101)"));
    const TemporaryFile input(StreamBuilder().section(PAT_PID, pat("E6A0 E101")).bytes());
    const TemporaryFile page;
    EXPECT_THAT(inspect({"--view", "tables", "--report", page.path(), input.path()}).output, Not(HasSubstr("bytes (")));
    EXPECT_THAT(inspect({"--bytes", "--report", page.path(), input.path()}).output, HasSubstr("bytes (16)"));
}

TEST(InspectReport, HasTheBytesOfEachField) {
    EXPECT_THAT(reported(sampleStream()),
                HasSubstr(R"("places":{"transport_stream_id":"3-4","network_pid":"10-11","programs":[)"
                          R"({"program_number":"12-13","program_map_pid":"14-15"},)"
                          R"({"program_number":"16-17","program_map_pid":"18-19"}]})"));
    EXPECT_THAT(inspect({"--json", "--bytes", SAMPLE_FILE}).output, Not(HasSubstr("\"places\"")));
}

TEST(InspectReport, SaysWhenBlocksCame) {
    const std::string data = reported(sampleStream());
    EXPECT_THAT(data, HasSubstr(R"("arrivals":{"gaps":[9,3,4,1],"blocks":["0","1","2","3"]})"));
    EXPECT_THAT(inspect({"--json", "--view", "carousels", SAMPLE_FILE}).output, Not(HasSubstr("arrivals")));
}

TEST(InspectReport, KeepsEvents) {
    const std::string data = reported(
        StreamBuilder().section(PAT_PID, pat("E6A0 E101")).lose(PAT_PID, 1).section(PAT_PID, pat("E6A0 E101")).bytes());
    EXPECT_THAT(data, HasSubstr(R"("type":"event_history")"));
    EXPECT_THAT(data, HasSubstr(R"("event":"discontinuity","pid":0,"packet":2,)"));
}

TEST(InspectReport, OfSeveralInputsHasAll) {
    const TemporaryFile page;
    const TemporaryFile other(StreamBuilder().section(PAT_PID, pat("E6A0 E101")).bytes());
    inspect({"--report", page.path(), SAMPLE_FILE, other.path()});
    const std::string data = dataOf(page.path());
    EXPECT_EQ(linesOf(data, "stream"), 2);
    EXPECT_THAT(data, HasSubstr("\"source\":\"" + other.path() + "\""));
}

TEST(InspectReport, OfSectionsHasNoTime) {
    const TemporaryFile page;
    EXPECT_EQ(inspect({"--report", page.path(), "--hex", "00 B0 0D 07 35 C1 00 00 E6 A0 E1 01 A2 C3 29 41"}).status, 3);
    const std::string data = dataOf(page.path());
    EXPECT_EQ(linesOf(data, "section"), 1);
    EXPECT_EQ(linesOf(data, "table_history"), 0);
}

TEST(InspectReport, NeedsAFileThatCanBeWritten) {
    const Finished finished = inspect({"--report", "/nowhere/page.html", SAMPLE_FILE});
    EXPECT_EQ(finished.status, 1);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.errors, "isdbt-inspect: /nowhere/page.html: No such file or directory\n");
}

TEST(InspectReport, IsNotOfDescriptors) {
    const TemporaryFile page;
    const Finished finished = inspect({"--descriptor", "pmt", "--report", page.path(), "--hex", "52 01 07"});
    EXPECT_EQ(finished.status, 2);
}
