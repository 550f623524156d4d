#include "pat/TPATTable.h"

#include "support/Parse.h"
#include "support/Recordings.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TPATTable;

namespace {

struct Association {
    QUOR_U16 programNumber;
    QUOR_U16 programMapPid;
};

/// The first section of a file must be this table.
void expectPat(const std::string& file, const LongHeader& header, QUOR_U16 networkPid,
               const std::vector<Association>& associations) {
    SCOPED_TRACE(file);
    const auto parsed = parseSection<TPATTable>(recordedSections(file).at(0));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getTransportStreamID(), header.extension);
    EXPECT_EQ(parsed->getVersion(), header.version);
    EXPECT_EQ(parsed->getCurrentIndicator() != 0, header.current);
    EXPECT_EQ(parsed->getSectionNumber(), header.section);
    EXPECT_EQ(parsed->getLastSectionNumber(), header.last);
    EXPECT_EQ(parsed->getNetworkPid(), networkPid);
    std::vector<QUOR_U16> numbers;
    for (const Association& each : associations) {
        numbers.push_back(each.programNumber);
        ASSERT_NE(parsed->get(each.programNumber), nullptr) << each.programNumber;
        EXPECT_EQ(parsed->get(each.programNumber)->getProgramMapPid(), each.programMapPid) << each.programNumber;
    }
    EXPECT_EQ(taken(parsed->getProgramNumbers()), numbers);
}

} // namespace

TEST(RecordedPAT, EverySectionIsParsed) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> sections = recordedSections(QUOR_U8{0x00});
    EXPECT_GE(sections.size(), 14U);
    for (const RecordedSection& section : sections) {
        SCOPED_TRACE(section.place);
        const auto parsed = parseSection<TPATTable>(section.bytes);
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed.lines, Lines{});
    }
}

TEST(RecordedPAT, BrazilianNetworkHasAFullSegAndAOneSegService) {
    SKIP_WITHOUT_RECORDINGS();
    expectPat("sections/tsduck-170-pid0x0000-tid0x00.sec", {0x02E1, 12}, 0x0010, {{0x5C20, 0x0101}, {0x5C38, 0x1FC8}});
}

TEST(RecordedPAT, OneSegMultiplexOfALab) {
    SKIP_WITHOUT_RECORDINGS();
    expectPat("sections/gr-isdbt-tx-pid0x0000-tid0x00.sec", {0x0001, 5}, 0x0010,
              {{0x0110, 0x0110}, {0x0111, 0x0118}, {0x0211, 0x0218}});
}

TEST(RecordedPAT, NetworkWithoutAnEntryForItsInformation) {
    SKIP_WITHOUT_RECORDINGS();
    expectPat("sections/tsduck-018-pid0x0000-tid0x00.sec", {0x1770, 2}, 0,
              {{0x0001, 0x0100}, {0x0002, 0x0101}, {0x0003, 0x0102}, {0x0004, 0x0103}, {0x0006, 0x0106},
               {0x0007, 0x0107}, {0x0008, 0x0108}, {0x0009, 0x0109}, {0x000A, 0x010A}, {0x000C, 0x010B},
               {0x000D, 0x010E}, {0x0047, 0x010F}, {0x0048, 0x0110}, {0x0065, 0x0119}, {0x0066, 0x011A},
               {0x0067, 0x011B}, {0x0068, 0x011C}, {0x0069, 0x011D}, {0x0325, 0x010D}, {0x0383, 0x010C}});
}

TEST(RecordedPAT, SatelliteNetworks) {
    SKIP_WITHOUT_RECORDINGS();
    expectPat("sections/tsduck-101-pid0x0000-tid0x00.sec", {0x40D0, 3}, 0x0010,
              {{141, 257}, {142, 513}, {143, 515}, {744, 1025}, {745, 1026}, {746, 1027}});
    expectPat("sections/tsduck-165-pid0x0000-tid0x00.sec", {0x110B, 5}, 0x0010, {});
}

TEST(RecordedPAT, CompiledSection) {
    SKIP_WITHOUT_RECORDINGS();
    expectPat("generated/gen-tsduck-005-pidNA-tid0x00.sec", {0x0012, 8}, 0x0010, {{1, 0x1234}, {2, 0x0678}});
}
