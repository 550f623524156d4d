// Bytes off the air taken for an index or a key: whatever they are, what is found is there or nothing is.

#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "hostile/Tables.h"
#include "pmt/TPMTTable.h"
#include "sdtt/TSDTTTable.h"
#include "support/FullSections.h"
#include "support/Survival.h"

#include <gmock/gmock.h>

namespace {

class Indexes : public testing::TestWithParam<TableClass> {};

/// The indexes for which @p get finds something.
template <class Get> std::vector<unsigned> found(Get get) {
    std::vector<unsigned> indexes;
    for (unsigned index = 0; index <= 0xFF; ++index) {
        if (get(static_cast<QUOR_U8>(index)) != nullptr) {
            indexes.push_back(index);
        }
    }
    return indexes;
}

using Each = std::vector<unsigned>;

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, Indexes, testing::ValuesIn(tableClasses()), caseName<TableClass>);

TEST_P(Indexes, DescriptorsOfEveryTagAreThoseThatTheTableNames) {
    const auto parsed = GetParam().parse(GetParam().full, nullptr);
    ASSERT_NE(parsed.object, nullptr);
    const auto tags = taken(parsed->getDescriptorTags());
    EXPECT_THAT(found([&](QUOR_U8 tag) { return parsed->getDescriptor(tag); }),
                testing::UnorderedElementsAreArray(tags));
    survival::expectSound<Quor::TISDBTTable>(*parsed.object);
}

TEST(Indexes, StreamsOfAPmt) {
    const auto pmt = parseSection<Quor::TPMTTable>(fullPmt());
    ASSERT_NE(pmt.object, nullptr);
    EXPECT_EQ(found([&](QUOR_U8 index) { return pmt->getProgramMap(index); }), Each{0});
    EXPECT_FALSE(pmt->removeProgramMap(0xFF));
    EXPECT_EQ(pmt->size(), 1U);
}

TEST(Indexes, ContentsOfAnSdttAndTheirSchedules) {
    const auto sdtt = parseSection<Quor::TSDTTTable>(fullSdtt());
    ASSERT_NE(sdtt.object, nullptr);
    EXPECT_EQ(found([&](QUOR_U8 index) { return sdtt->getDownloadContent(index); }), Each{0});
    const auto* const content = sdtt->getDownloadContent(0);
    EXPECT_EQ(found([&](QUOR_U8 index) { return content->getScheduleInfo(index); }), Each{0});
    EXPECT_FALSE(sdtt->removeDownloadContent(0xFF));
}

TEST(Indexes, ProtocolsSelectAVariantOrNone) {
    std::vector<unsigned> accepted;
    for (unsigned protocol = 0; protocol <= 0xFFFF; ++protocol) {
        const auto parsed = parseBytes<Quor::TTransportProtocolDescriptor>(
            descriptor(0x02, join({u16(protocol), hex("01 80 0001 0002 0003 0B")})));
        if (parsed.object != nullptr) {
            accepted.push_back(protocol);
        } else {
            EXPECT_FALSE(parsed.lines.empty()) << protocol;
        }
    }
    EXPECT_EQ(accepted, (std::vector<unsigned>{1, 2, 4}));
}
