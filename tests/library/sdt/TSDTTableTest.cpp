#include "sdt/TSDTTable.h"

#include "ServiceKinds.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Survival.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TSDTTable;
using Quor::TServiceDescription;
using testing::ElementsAre;

using Ids = std::vector<QUOR_U16>;
using Tags = std::vector<QUOR_U8>;

namespace {

std::string entryLine(const std::string& rest) {
    return "ISDBTUtils: TServiceDescription::parse: " + rest;
}

const std::string invalidItem = "ISDBTUtils: TSDTTable::parse: Invalid item. Aborting!";

class TSDTTableKind : public testing::TestWithParam<ServiceKind> {};

/// A section with every kind of descriptor wherever it can stand.
ByteVector rich() {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(serviceKinds(), all);
    return sdt(join({serviceEntry(1, descriptors), serviceEntry(2, hex("42 01 00 50 00"))}));
}

const ByteVector NAMED = sdt(serviceEntry(1, hex("47 01 42")));

void expectNamed(const TSDTTable& table) {
    EXPECT_NE(table.getServiceDescription(1)->getBouquetNameDescriptor(), nullptr);
}

} // namespace

TEST(TSDTTable, ChecksTheSectionHeader) {
    expectSectionChecks<TSDTTable>(0x42, 3, NAMED, expectNamed);
}

TEST(TSDTTable, IsReadWholeWhateverTheSwitchesSay) {
    expectSwitchesMakeNoDifference<TSDTTable>(NAMED, expectNamed);
}

TEST(TSDTTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TSDTTable>(
        [](const LongHeader& header) { return sdt(serviceEntry(header.version), header); });
    EXPECT_EQ(taken(versions.previous->getServiceIDs()), (Ids{5}));
    EXPECT_EQ(taken(versions.next->getServiceIDs()), (Ids{6}));
}

TEST(TSDTTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TSDTTable>(sdt({}));
}

TEST(TSDTTable, Getters) {
    EXPECT_GETTER(QUOR_U16, TSDTTable, getTransportStreamID);
    EXPECT_GETTER(QUOR_U16, TSDTTable, getOriginalNetworkID);
    EXPECT_GETTER(QUOR_U32, TSDTTable, size);
    EXPECT_GETTER(std::list<QUOR_U16>*, TSDTTable, getServiceIDs);
}

TEST(TSDTTable, StartsEmpty) {
    HeapBytes bytes(sdt(serviceEntry(1)));
    const InDirtyMemory<TSDTTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::SDT);
    EXPECT_EQ(table->getTransportStreamID(), 0);
    EXPECT_EQ(table->getOriginalNetworkID(), 0);
    EXPECT_EQ(table->size(), 0U);
    EXPECT_EQ(taken(table->getServiceIDs()), Ids{});
    EXPECT_EQ(table->getServiceDescription(1), nullptr);
}

TEST(TSDTTable, WithoutServices) {
    const auto table = expectTable<TSDTTable>(sdt({}));
    EXPECT_EQ(table->getOriginalNetworkID(), 0x7ED4);
    EXPECT_EQ(table->size(), 0U);
    EXPECT_EQ(taken(table->getServiceIDs()), Ids{});
}

TEST(TSDTTable, ReservedByteBehindTheNetworkIsNotRead) {
    for (const char* const reserved : {"00", "01", "FF"}) {
        const auto table = expectTable<TSDTTable>(longSection(0x42, {}, join({hex("FEDC"), hex(reserved)})));
        EXPECT_EQ(table->getOriginalNetworkID(), 0xFEDC);
        EXPECT_EQ(table->size(), 0U);
    }
}

TEST(TSDTTable, ReadsItsHeader) {
    const auto table = expectTable<TSDTTable>(sdt({}, {0x02E1, 12, true, 1, 3}));
    EXPECT_EQ(table->getType(), TISDBTTable::SDT);
    EXPECT_EQ(table->getTransportStreamID(), 0x02E1);
    EXPECT_EQ(table->getGenericDataField(), 0x02E1);
    EXPECT_EQ(table->getVersion(), 12);
    EXPECT_TRUE(table->getCurrentIndicator());
    EXPECT_EQ(table->getSectionNumber(), 1);
    EXPECT_EQ(table->getLastSectionNumber(), 3);
}

TEST(TSDTTable, ReadsServices) {
    const auto table = expectTable<TSDTTable>(
        sdt(join({serviceEntry(0xFFFF), serviceEntry(0x5C20, hex("48 05 01 01 41 01 42")), serviceEntry(0x0001)})));
    EXPECT_EQ(table->size(), 3U);
    EXPECT_EQ(taken(table->getServiceIDs()), (Ids{0x0001, 0x5C20, 0xFFFF}));
    ASSERT_NE(table->getServiceDescription(0x5C20), nullptr);
    EXPECT_EQ(table->getServiceDescription(0x5C20)->getServiceID(), 0x5C20);
    EXPECT_FALSE(table->getServiceDescription(0x5C20)->hasEITSchedule());
    EXPECT_TRUE(table->getServiceDescription(0x5C20)->hasEITPresentFollowing());
    EXPECT_EQ(table->getServiceDescription(0x5C20)->getRunningStatus(), 4);
    EXPECT_EQ(table->getServiceDescription(0x5C20)->getServiceDescriptor()->getServiceName(), "B");
    EXPECT_EQ(table->getServiceDescription(0x0001)->getServiceDescriptor(), nullptr);
    EXPECT_EQ(table->getServiceDescription(0x5C21), nullptr);
}

TEST(TSDTTable, LastEntryOfAServiceWins) {
    const auto table = expectTable<TSDTTable>(
        sdt(join({serviceEntry(1, hex("47 01 41")), serviceEntry(2), serviceEntry(1, hex("48 03 01 00 00"))})));
    EXPECT_EQ(table->size(), 2U);
    EXPECT_EQ(table->getServiceDescription(1)->getBouquetNameDescriptor(), nullptr);
    EXPECT_NE(table->getServiceDescription(1)->getServiceDescriptor(), nullptr);
}

TEST(TSDTTable, HasNoDescriptorsOfItsOwn) {
    const auto all = [](std::size_t) { return true; };
    const auto table = expectTable<TSDTTable>(sdt(serviceEntry(1, descriptorsOf(serviceKinds(), all))));
    EXPECT_EQ(taken(table->getDescriptorTags()), Tags{});
    for (const ServiceKind& kind : serviceKinds()) {
        EXPECT_EQ(table->getDescriptor(kind.tag), nullptr) << kind.name;
    }
}

TEST(TSDTTable, StuffingIsSkippedSilentlyAndUnknownTagsAreLogged) {
    const auto table = expectTable<TSDTTable>(sdt(serviceEntry(1, hex("42 02 0000  50 00  42 00  47 01 41"))),
                                              {entryLine("Unknown descriptor: 0x50. Ignored!")});
    EXPECT_EQ(taken(table->getServiceDescription(1)->getDescriptorTags()), (Tags{0x47}));
}

TEST_P(TSDTTableKind, IsHeldByItsService) {
    const ServiceKind& kind = GetParam();
    const auto table = expectTable<TSDTTable>(sdt(join({serviceEntry(1), serviceEntry(2, kind.good)})), kind.lines);
    EXPECT_EQ(table->getServiceDescription(1)->getDescriptor(kind.tag), nullptr);
    Quor::TISDBTDescriptor* const held = kind.ofEntry(*table->getServiceDescription(2));
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getData(), table.bytes.data() + 11 + 5 + 5) << "it points into the caller's bytes";
}

TEST_P(TSDTTableKind, FailureOfItsParseIsAnInvalidItem) {
    const ServiceKind& kind = GetParam();
    Lines lines = kind.badLines;
    lines.push_back(invalidItem);
    expectNoTable<TSDTTable>(sdt(join({serviceEntry(1, hex("47 01 41")), serviceEntry(2, kind.bad)})),
                             TISDBTTable::ERROR_INVALID_ITEM, lines);
}

INSTANTIATE_TEST_SUITE_P(, TSDTTableKind, testing::ValuesIn(serviceKinds()), kindName<ServiceKind>);

TEST(TSDTTable, StringFailureOfADescriptorIsAnInvalidItem) {
    expectNoTable<TSDTTable>(
        sdt(serviceEntry(1, hex("48 05 01 01 41 02 42"))), TISDBTTable::ERROR_INVALID_ITEM,
        Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 2 > 1.Aborting!",
              "ISDBTUtils: TServiceDescriptor:: parse: ERROR: parsing Service Name. Aborting!", invalidItem});
}

TEST(TSDTTable, IncompleteServiceIsAnInvalidItem) {
    expectNoTable<TSDTTable>(sdt(hex("0001 FD 80")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 4. Aborting!"), invalidItem});
    expectNoTable<TSDTTable>(sdt(join({serviceEntry(1), hex("00")})), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 1. Aborting!"), invalidItem});
    expectNoTable<TSDTTable>(sdt(hex("0001 FD 8004  47 01 41")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 4 > 3. Aborting!"), invalidItem});
    expectNoTable<TSDTTable>(sdt(hex("0001 FD 8003  47 02 41")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 2 > 3. Aborting!"), invalidItem});
}

TEST(TSDTTable, DescriptorThatOverrunsItsLoopReadsTheFollowingServices) {
    expectNoTable<TSDTTable>(
        sdt(hex("0001 FD 8002  50 01 00  40 00  47 01 41  51 09 00")), TISDBTTable::ERROR_INVALID_ITEM,
        Lines{entryLine("Unknown descriptor: 0x50. Ignored!"), entryLine("Unknown descriptor: 0x40. Ignored!"),
              entryLine("Item length not valid: 9 > 3. Aborting!"), invalidItem});
}

TEST(TSDTTable, ServicesEndWithTheSection) {
    // Bytes behind the section are no services.
    const auto table = expectTable<TSDTTable>(join({sdt(serviceEntry(1)), serviceEntry(2)}));
    EXPECT_EQ(taken(table->getServiceIDs()), (Ids{1}));
}

TEST(TSDTTable, TooSmallASectionLengthIsWalkedBeyondUntilItsSixteenBitsComeToZero) {
    // 5 - 12 leaves 65529 bytes of services: one of 9 and 13104 of 5.
    ByteVector section = rawSection(0x42, 5, hex("7ED4 FF"));
    const auto append = [&section](const ByteVector& bytes) {
        section.insert(section.end(), bytes.begin(), bytes.end());
    };
    append(serviceEntry(0xFFFF, hex("47 02 4142")));
    for (unsigned id = 0; id < 13104; ++id) {
        append(serviceEntry(id));
    }
    ASSERT_EQ(section.size(), 11U + 65529U);
    const auto table = expectTable<TSDTTable>(join({section, hex("FF FF")}));
    EXPECT_EQ(table->size(), 13105U);
    EXPECT_NE(table->getServiceDescription(13103), nullptr);
    EXPECT_EQ(table->getServiceDescription(0xFFFF)->getBouquetNameDescriptor()->getBouquetName(), "AB");

    // A byte less, and the last service is refused.
    expectNoTable<TSDTTable>(withoutLast(section, 1), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(lengthLine("TServiceDescription"), invalidItem));
}

TEST(TSDTTable, SectionThatEndsInItsHeadersIsRefused) {
    expectNoTableWithin<TSDTTable>(0x42, 3, 10);
}

TEST(TSDTTable, ServicesAreRefusedWhereTheBytesEnd) {
    // The bytes may end behind original_network_id: the next one is reserved.
    expectNoTable<TSDTTable>(rawSection(0x42, 7, hex("0001")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 5 > 0. Aborting!"), invalidItem});
    const auto refused = lengthLine("TServiceDescription");
    // No service at all, though the wrapped count states many ...
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(refused, invalidItem));
    expectNoTable<TSDTTable>(rawSection(0x42, 11, hex("7ED4 FF 0001 FD")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(refused, invalidItem));
    // ... in the header of the second, after the first was read ...
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF  0001 FD 8002 50 00  0002 FD 80")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x50. Ignored!"), refused, invalidItem));
    // ... in a descriptor, after those before it were read.
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF  0001 FD 8006  50 00  47 02 41")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x50. Ignored!"), refused, invalidItem));
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF  0001 FD 8006  50 00  47")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x50. Ignored!"), refused, invalidItem));
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF  0001 FD 8FFF  50 00")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x50. Ignored!"), refused, invalidItem));
    // A descriptor that ends with the bytes is read.
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF  0001 FD 8006  53 00")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 2 < 4. Aborting!",
                                   invalidItem});
}

TEST(TSDTTable, DescriptorBelowItsMinimumFailsThoughItsBodyIsNotThere) {
    // Its class looks at its header alone.
    expectNoTable<TSDTTable>(rawSection(0x42, 8, hex("7ED4 FF  0001 FD 8008  4A 06 0001")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 8 < 9. Aborting!",
                                   invalidItem});
}

TEST(TSDTTable, KeepsACopyOfTheSection) {
    const ByteVector section = sdt(serviceEntry(7, hex("48 05 01 01 41 01 42")));
    std::unique_ptr<TSDTTable> table;
    {
        const HeapBytes bytes(section);
        table.reset(TSDTTable::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
        ASSERT_NE(table, nullptr);
        EXPECT_NE(table->getData(), bytes.data());
    }
    EXPECT_EQ(elements(table->getData(), table->getDataLength()), section);
    EXPECT_EQ(table->getServiceDescription(7)->getServiceDescriptor()->getServiceProviderName(), "A");
}

TEST(TSDTTable, SurvivesEveryPrefixAndEveryByteChange) {
    expectEveryPrefixSurvives<TSDTTable>(rich());
    expectEveryByteChangeSurvives<TSDTTable>(rich());
}
