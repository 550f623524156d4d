// Loops of entries that hold nothing: as many as a section takes, and then an end.

#include "ait/TAITTable.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "hostile/Tables.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"

#include <gmock/gmock.h>

namespace {

/// Entries that begin with their number in 16 bits.
ByteVector numbered(unsigned count, const ByteVector& rest) {
    ByteVector all;
    for (unsigned i = 0; i < count; ++i) {
        all = join({std::move(all), u16(i), rest});
    }
    return all;
}

template <class Table> Parsed<Table> expectTaken(QUOR_U8 tableId, const ByteVector& body) {
    auto parsed = parseSection<Table>(longSection(tableId, {}, body));
    EXPECT_NE(parsed.object, nullptr) << testing::PrintToString(parsed.lines);
    EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    return parsed;
}

class Progress : public testing::TestWithParam<DescriptorLoop> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, Progress, testing::ValuesIn(descriptorLoops()), caseName<DescriptorLoop>);

TEST_P(Progress, ALoopOfDescriptorsWithoutBodies) {
    ByteVector descriptors;
    for (int i = 0; i < 2000; ++i) {
        descriptors.insert(descriptors.end(), {0x7E, 0x00}); // a tag that no loop knows
    }
    const auto parsed = GetParam().parse(GetParam().section(descriptors), nullptr);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines.size(), 2000U);
}

TEST(Progress, AnAssociationForEachProgramOfAPat) {
    EXPECT_EQ(expectTaken<Quor::TPATTable>(0x00, numbered(1000, hex("E100")))->size(), 999U); // 0 is the network
}

TEST(Progress, StreamsWithoutDescriptorsInAPmt) {
    ByteVector streams;
    for (unsigned i = 0; i < 800; ++i) {
        streams = join({std::move(streams), hex("1B E111 F000")});
    }
    EXPECT_EQ(expectTaken<Quor::TPMTTable>(0x02, join({hex("E100 F000"), streams}))->size(), 800U);
}

TEST(Progress, StreamsWithoutDescriptorsInANit) {
    const ByteVector streams = numbered(600, hex("0001 F000"));
    EXPECT_EQ(expectTaken<Quor::TNITTable>(0x40, join({hex("F000"), loopOf(streams)}))->getTransportStreamLoopSize(),
              600U);
}

TEST(Progress, ServicesWithoutDescriptorsInAnSdt) {
    EXPECT_EQ(expectTaken<Quor::TSDTTable>(0x42, join({hex("0001 FF"), numbered(800, hex("FF 8000"))}))->size(), 800U);
}

TEST(Progress, ApplicationsWithoutDescriptorsInAnAit) {
    const ByteVector applications = numbered(400, hex("000A 0001 01 F000"));
    EXPECT_EQ(expectTaken<Quor::TAITTable>(0x74, join({hex("F000"), loopOf(applications)}))->getApplicationsCount(),
              400U);
}

TEST(Progress, ContentsWithoutAScheduleInAnSdtt) {
    const ByteVector contents = numbered(255, hex("0027 0000 0000"));
    EXPECT_EQ(expectTaken<Quor::TSDTTTable>(0xC3, join({hex("0735 0001 E6A0 FF"), contents}))->getDownloadContentSize(),
              255U);
}

TEST(Progress, ContentsThatAreCountedButNotThere) {
    const auto parsed = parseSection<Quor::TSDTTTable>(longSection(0xC3, {}, hex("0735 0001 E6A0 FF")));
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, Quor::TISDBTTable::ERROR_INVALID_ITEM);
}

TEST(Progress, EmptyParametersFillADescriptor) {
    const auto java = parseBytes<Quor::TGingaJavaApplicationDescriptor>(descriptor(0x03, fill(255, 0x00)));
    ASSERT_NE(java.object, nullptr);
    EXPECT_EQ(java->size(), 255U);
    const auto ncl = parseBytes<Quor::TGingaNCLApplicationDescriptor>(descriptor(0x06, fill(255, 0x00)));
    ASSERT_NE(ncl.object, nullptr);
    EXPECT_EQ(ncl->size(), 255U);
}
