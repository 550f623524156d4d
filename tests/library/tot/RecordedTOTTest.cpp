#include "tot/TTOTTable.h"

#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "support/Parse.h"
#include "support/Recordings.h"

#include <gtest/gtest.h>

#include <ctime>

using Quor::TISDBTTable;
using Quor::TTOTTable;

namespace {

/// Country code, region, polarity and offset of one item.
struct Local {
    std::string country;
    int region;
    int polarity;
    int offset;
};

void expectTot(const ByteVector& section, QUOR_S32 unixTime, const std::vector<Local>& locals) {
    const auto parsed = parseSection<TTOTTable>(section);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getUnixTime(), unixTime);
    ASSERT_NE(parsed->getLocalTimeOffsetDescriptor(), nullptr);
    Lines countries;
    for (const Local& local : locals) {
        countries.push_back(local.country);
        const auto* const item = parsed->getLocalTimeOffsetDescriptor()->get(local.country);
        ASSERT_NE(item, nullptr);
        EXPECT_EQ(item->getCountryRegionID(), local.region);
        EXPECT_EQ(item->getLocalTimeOffsetPolarity(), local.polarity);
        EXPECT_EQ(item->getLocalTimeOffset(), local.offset);
    }
    EXPECT_EQ(taken(parsed->getLocalTimeOffsetDescriptor()->getCountryCodes()), countries);
}

/// The times of the TOTs in a listing, where the TDTs of the same PID stand between them.
std::vector<std::time_t> listedTimes(const std::string& file) {
    std::vector<std::time_t> times;
    bool inTot = false;
    for (const std::string& line : recordedLines(file)) {
        if (line.rfind("* ", 0) == 0) {
            inTot = line.rfind("* TOT", 0) == 0;
        }
        const std::size_t at = line.find("UTC time: ");
        std::tm fields{};
        if (inTot && at != std::string::npos &&
            strptime(line.c_str() + at, "UTC time: %Y/%m/%d %H:%M:%S", &fields) != nullptr) {
            times.push_back(timegm(&fields));
        }
    }
    return times;
}

} // namespace

TEST(RecordedTOT, EverySectionIsParsed) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> sections = recordedSections(QUOR_U8{0x73});
    EXPECT_GE(sections.size(), 97U);
    for (const RecordedSection& section : sections) {
        SCOPED_TRACE(section.place);
        const auto parsed = parseSection<TTOTTable>(section.bytes);
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed.lines, Lines{});
        EXPECT_NE(parsed->getLocalTimeOffsetDescriptor(), nullptr);
    }
}

TEST(RecordedTOT, ThreeSecondsOfATerrestrialNetwork) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<ByteVector> sections = recordedSections("sections/tsduck-018-pid0x0014-tid0x73.sec");
    ASSERT_EQ(sections.size(), 3U);
    expectTot(sections[0], 1518525305, {{"ITA", 0, 0, 3600}}); // 2018-02-13 12:35:05
    expectTot(sections[1], 1518525306, {{"ITA", 0, 0, 3600}});
    expectTot(sections[2], 1518525307, {{"ITA", 0, 0, 3600}});
}

TEST(RecordedTOT, FirstAndLastOfALabClock) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<ByteVector> sections = recordedSections("sections/tsduck-182.1-pid0x0014-tid0x73.sec");
    ASSERT_EQ(sections.size(), 91U);
    const std::vector<Local> locals = {{"GBR", 0, 0, 3600}, {"IRL", 0, 0, 3600}};
    expectTot(sections.front(), 1903823940, locals); // 2030-04-30 23:59:00
    expectTot(sections.back(), 1903824120, locals);  // 2030-05-01 00:02:00
}

TEST(RecordedTOT, LabClockShowsEveryTimeOfItsListing) {
    SKIP_WITHOUT_RECORDINGS();
    std::vector<std::time_t> times;
    for (const ByteVector& section : recordedSections("sections/tsduck-182.1-pid0x0014-tid0x73.sec")) {
        const auto parsed = parseSection<TTOTTable>(section);
        ASSERT_NE(parsed.object, nullptr);
        times.push_back(parsed->getUnixTime());
    }
    const std::vector<std::time_t> listed = listedTimes("decoded/tsduck-182.1.txt");
    ASSERT_EQ(listed.size(), 91U);
    EXPECT_EQ(times, listed);
}

TEST(RecordedTOT, CompiledSectionHasTwoRegions) {
    SKIP_WITHOUT_RECORDINGS();
    // 2017-09-12 14:28:10
    expectTot(recordedSections("generated/gen-tsduck-005-pidNA-tid0x73.sec").at(0), 1505226490,
              {{"abc", 1, 1, 7200}, {"erg", 17, 0, 7200}});
}
