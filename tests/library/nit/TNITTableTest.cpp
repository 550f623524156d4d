#include "nit/TNITTable.h"

#include "NetworkKinds.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Survival.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TNITTable;
using testing::ElementsAre;

using Ids = std::vector<QUOR_U16>;
using Tags = std::vector<QUOR_U8>;

namespace {

std::string line(const std::string& rest) {
    return "ISDBTUtils: TNITTable::parse: " + rest;
}

std::string entryLine(const std::string& rest) {
    return "ISDBTUtils: TNITTransportStreamInfo::parse: " + rest;
}

const std::string invalidItem = line("Invalid item. Aborting!");

class TNITTableKind : public testing::TestWithParam<NetworkKind> {};

/// A section with every kind of descriptor wherever it can stand.
ByteVector rich() {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(networkKinds(), all);
    return nit(descriptors, join({transportStream(1, 2, descriptors), transportStream(3, 4, hex("42 01 00 48 00"))}));
}

const ByteVector NAMED = nit(hex("40 01 41"), transportStream(1, 2, hex("40 01 42")));

void expectNamed(const TNITTable& table) {
    EXPECT_NE(table.getNetworkNameDescriptor(), nullptr);
    EXPECT_NE(table.getTransportStreamInfo(1)->getNetworkNameDescriptor(), nullptr);
}

} // namespace

TEST(TNITTable, ChecksTheSectionHeader) {
    expectSectionChecks<TNITTable>(0x40, 4, NAMED, expectNamed);
}

TEST(TNITTable, IsReadWholeWhateverTheSwitchesSay) {
    expectSwitchesMakeNoDifference<TNITTable>(NAMED, expectNamed);
}

TEST(TNITTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TNITTable>(
        [](const LongHeader& header) { return nit({}, transportStream(header.version, 2), header); });
    EXPECT_EQ(taken(versions.previous->getTransportStreamIDs()), (Ids{5}));
    EXPECT_EQ(taken(versions.next->getTransportStreamIDs()), (Ids{6}));
}

TEST(TNITTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TNITTable>(nit({}, {}));
}

TEST(TNITTable, Getters) {
    EXPECT_GETTER(QUOR_U16, TNITTable, getNetworkID);
    EXPECT_GETTER(QUOR_U32, TNITTable, getTransportStreamLoopSize);
    EXPECT_GETTER(std::list<QUOR_U16>*, TNITTable, getTransportStreamIDs);
}

TEST(TNITTable, StartsEmpty) {
    HeapBytes bytes(nit(hex("40 01 41"), transportStream(1, 2)));
    const InDirtyMemory<TNITTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::NIT);
    EXPECT_EQ(table->getNetworkID(), 0);
    EXPECT_EQ(table->getTransportStreamLoopSize(), 0U);
    EXPECT_EQ(taken(table->getTransportStreamIDs()), Ids{});
    EXPECT_EQ(table->getTransportStreamInfo(1), nullptr);
    EXPECT_EQ(taken(table->getDescriptorTags()), Tags{});
    for (const NetworkKind& kind : networkKinds()) {
        EXPECT_EQ(kind.ofTable(*table), nullptr) << kind.name;
    }
}

TEST(TNITTable, EmptyLoopsMakeAnEmptyTable) {
    const auto table = expectTable<TNITTable>(nit({}, {}));
    EXPECT_EQ(taken(table->getDescriptorTags()), Tags{});
    EXPECT_EQ(table->getTransportStreamLoopSize(), 0U);
    EXPECT_EQ(taken(table->getTransportStreamIDs()), Ids{});
}

TEST(TNITTable, ReadsItsHeader) {
    const auto table = expectTable<TNITTable>(nit({}, {}, {0x7ED4, 12, true, 1, 3}));
    EXPECT_EQ(table->getType(), TISDBTTable::NIT);
    EXPECT_EQ(table->getNetworkID(), 0x7ED4);
    EXPECT_EQ(table->getGenericDataField(), 0x7ED4);
    EXPECT_EQ(table->getVersion(), 12);
    EXPECT_TRUE(table->getCurrentIndicator());
    EXPECT_EQ(table->getSectionNumber(), 1);
    EXPECT_EQ(table->getLastSectionNumber(), 3);
}

TEST(TNITTable, ReadsTransportStreams) {
    const auto table = expectTable<TNITTable>(
        nit({}, join({transportStream(0xFFFF, 0x0007), transportStream(0x02E1, 0x02E1, hex("40 01 41")),
                      transportStream(0x0001, 0x7ED4)})));
    // The number of transport streams, not of bytes.
    EXPECT_EQ(table->getTransportStreamLoopSize(), 3U);
    EXPECT_EQ(taken(table->getTransportStreamIDs()), (Ids{0x0001, 0x02E1, 0xFFFF}));
    ASSERT_NE(table->getTransportStreamInfo(0x02E1), nullptr);
    EXPECT_EQ(table->getTransportStreamInfo(0x02E1)->getTransportStreamID(), 0x02E1);
    EXPECT_EQ(table->getTransportStreamInfo(0x02E1)->getNetworkNameDescriptor()->getNetworkName(), "A");
    EXPECT_EQ(table->getTransportStreamInfo(0xFFFF)->getOriginalNetworkID(), 0x0007);
    EXPECT_EQ(table->getTransportStreamInfo(0x0002), nullptr);
    EXPECT_EQ(table->getNetworkNameDescriptor(), nullptr);
}

TEST(TNITTable, LastEntryOfATransportStreamWins) {
    const auto table = expectTable<TNITTable>(
        nit({}, join({transportStream(1, 2, hex("40 01 41")), transportStream(5, 6), transportStream(1, 3)})));
    EXPECT_EQ(table->getTransportStreamLoopSize(), 2U);
    EXPECT_EQ(table->getTransportStreamInfo(1)->getOriginalNetworkID(), 3);
    EXPECT_EQ(table->getTransportStreamInfo(1)->getNetworkNameDescriptor(), nullptr);
}

TEST(TNITTable, HoldsAllKindsInBothLoops) {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(networkKinds(), all);
    const auto table = expectTable<TNITTable>(nit(descriptors, transportStream(1, 2, descriptors)));
    const Tags tags = tagsOf(networkKinds());
    EXPECT_EQ(taken(table->getDescriptorTags()), tags);
    EXPECT_EQ(taken(table->getTransportStreamInfo(1)->getDescriptorTags()), tags);
    for (const NetworkKind& kind : networkKinds()) {
        ASSERT_NE(kind.ofTable(*table.object), nullptr) << kind.name;
        EXPECT_EQ(kind.ofTable(*table.object), table->getDescriptor(kind.tag)) << kind.name;
        EXPECT_NE(kind.ofTable(*table.object), kind.ofEntry(*table->getTransportStreamInfo(1))) << kind.name;
    }
}

TEST(TNITTable, AnswersThroughItsBase) {
    const auto table = expectTable<TNITTable>(nit(hex("CD 09 07 0D 474C42 0F 01 5C20  40 01 41"), {}));
    const TISDBTTable& base = *table.object;
    EXPECT_EQ(base.getDescriptor(0x40), table->getNetworkNameDescriptor());
    EXPECT_EQ(base.getDescriptor(0x41), nullptr);
    EXPECT_EQ(taken(base.getDescriptorTags()), (Tags{0x40, 0xCD}));
}

TEST(TNITTable, ListsSubsetsOfTagsInTheSameOrder) {
    const std::vector<NetworkKind> kinds = networkKinds();
    for (unsigned subset = 0; subset < 1U << kinds.size(); ++subset) {
        const auto wanted = [&](std::size_t i) { return (subset >> i & 1U) != 0; };
        const auto table = parseSection<TNITTable>(nit(descriptorsOf(kinds, wanted), {}));
        ASSERT_NE(table.object, nullptr);
        ASSERT_EQ(taken(table->getDescriptorTags()), tagsOf(kinds, wanted));
    }
}

TEST(TNITTable, TagsOfATSInformationAndANetworkName) {
    const auto table = expectTable<TNITTable>(nit(hex("CD 09 07 0D 474C42 0F 01 5C20  40 01 41"), {}));
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{0x40, 0xCD}));
}

TEST(TNITTable, TagsOfRepeatedDescriptorsAreListedOnce) {
    const auto table = expectTable<TNITTable>(nit(hex("40 01 41  FB 02 5C38  40 01 42"), {}));
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{0x40, 0xFB}));
    EXPECT_EQ(table->getNetworkNameDescriptor()->getNetworkName(), "B");
}

TEST(TNITTable, HoldsNothingUnderOtherTags) {
    const auto table = expectTable<TNITTable>(nit(hex("42 01 00  40 01 41"), {}));
    EXPECT_EQ(table->getDescriptor(0x42), nullptr);
    EXPECT_EQ(table->getDescriptor(0x48), nullptr);
    EXPECT_EQ(table->getDescriptor(0x00), nullptr);
    EXPECT_EQ(table->getDescriptor(0xFF), nullptr);
}

TEST(TNITTable, StuffingIsSkippedSilentlyAndUnknownTagsAreLogged) {
    const auto table = expectTable<TNITTable>(
        nit(hex("42 00  48 03 010000  42 02 FFFF  FF 00  40 01 41"), transportStream(1, 2, hex("42 00  0A 00"))),
        {line("Unknown descriptor: 0x48. Ignored!"), line("Unknown descriptor: 0xFF. Ignored!"),
         entryLine("Unknown descriptor: 0x0A. Ignored!")});
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{0x40}));
}

TEST_P(TNITTableKind, IsHeld) {
    const NetworkKind& kind = GetParam();
    const auto table = expectTable<TNITTable>(nit(kind.good, {}), kind.lines);
    Quor::TISDBTDescriptor* const held = kind.ofTable(*table.object);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getDescriptorTag(), kind.tag);
    EXPECT_EQ(held->getData(), table.bytes.data() + 10) << "it points into the caller's bytes";
    EXPECT_EQ(held->getDataLength(), kind.good.size());
    EXPECT_EQ(table->getDescriptor(kind.tag), held);
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{kind.tag}));
    for (const NetworkKind& other : networkKinds()) {
        if (other.tag != kind.tag) {
            EXPECT_EQ(other.ofTable(*table.object), nullptr) << other.name;
        }
    }
}

TEST_P(TNITTableKind, LastOneWins) {
    const NetworkKind& kind = GetParam();
    const auto table = expectTable<TNITTable>(nit(join({kind.good, kind.good}), {}));
    ASSERT_NE(kind.ofTable(*table.object), nullptr);
    EXPECT_EQ(kind.ofTable(*table.object)->getData(), table.bytes.data() + 10 + kind.good.size());
}

TEST_P(TNITTableKind, FailureOfItsParseFailsTheTable) {
    const NetworkKind& kind = GetParam();
    expectNoTable<TNITTable>(nit(join({kind.good, kind.bad, hex("48 00")}), transportStream(1, 2)), kind.badCode,
                             kind.badLines);
}

TEST_P(TNITTableKind, FailureInAnEntryIsAnInvalidItem) {
    const NetworkKind& kind = GetParam();
    Lines lines = kind.badLines;
    lines.push_back(invalidItem);
    expectNoTable<TNITTable>(
        nit(hex("40 01 41"), join({transportStream(1, 2, hex("41 02 20 01")), transportStream(3, 4, kind.bad)})),
        TISDBTTable::ERROR_INVALID_ITEM, lines);
}

INSTANTIATE_TEST_SUITE_P(, TNITTableKind, testing::ValuesIn(networkKinds()), kindName<NetworkKind>);

TEST(TNITTable, StringFailureOfADescriptorFailsTheTableWithItsCode) {
    expectNoTable<TNITTable>(
        nit(hex("CD 08 07 FC 474C42474C42"), {}), TISDBTTable::ERROR_INVALID_STRING,
        Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 63 > 6.Aborting!",
              "ISDBTUtils: TTSInformationDescriptor:: parse: ERROR: parsing TS Name. Aborting!"});
}

TEST(TNITTable, NetworkDescriptorsPastTheSectionFail) {
    // The length itself is not among the bytes that are left.
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F003  F000")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 3 > 2. Aborting!")});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("FFFF  40 01 41  F000")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 4095 > 5. Aborting!")});
}

TEST(TNITTable, DescriptorLongerThanTheSectionFails) {
    // Seven bytes are left, two of them for the header of the descriptor.
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F005  40 06 414243  F000")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 6 > 5. Aborting!")});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F005  48 FF 000000  F000")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 255 > 5. Aborting!")});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F008  42 01 00  42 06 000000  F000")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 6 > 5. Aborting!")});
}

TEST(TNITTable, DescriptorThatOverrunsItsLoopIsReadAndTheWalkGoesOn) {
    // Four bytes of descriptors are stated; the transport streams behind are read as descriptors as well.
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F004  48 06 000000000000  49 00  40 01 41  50 05 AABB")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Unknown descriptor: 0x48. Ignored!"),
                                   line("Unknown descriptor: 0x49. Ignored!"),
                                   line("Item length not valid: 5 > 2. Aborting!")});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F004  48 06 000000000000  40 00  AABB")),
                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{line("Unknown descriptor: 0x48. Ignored!"),
                                   "ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 2 < 3. Aborting!"});
}

TEST(TNITTable, OverrunLoopFailsInFrontOfTheCrc) {
    // Nothing is left, and the bytes of the CRC_32 are looked at for a descriptor: the difference is below zero.
    const ByteVector none = longSection(0x40, {}, hex("F003  48 02 0000"));
    expectNoTable<TNITTable>(
        none, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x48. Ignored!"),
              line("Item length not valid: " + numberAt(none, none.size() - 3) + " > 4294967294. Aborting!")});
    const ByteVector one = longSection(0x40, {}, hex("F003  48 02 0000  40"));
    expectNoTable<TNITTable>(
        one, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x48. Ignored!"),
              line("Item length not valid: " + numberAt(one, one.size() - 4) + " > 4294967295. Aborting!")});
    const ByteVector two = longSection(0x40, {}, hex("F003  48 02 0000  40 01"));
    expectNoTable<TNITTable>(
        two, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x48. Ignored!"), line("Item length not valid: 1 > 0. Aborting!")});
}

TEST(TNITTable, TransportStreamsPastTheSectionFail) {
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F000  F007  0001 0002 F000")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 7 > 6. Aborting!")});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F003  40 01 41  FFFF")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 4095 > 0. Aborting!")});
}

TEST(TNITTable, BytesBehindTheTransportStreamsAreIgnored) {
    const auto table = expectTable<TNITTable>(longSection(0x40, {}, hex("F000  F006  0001 0002 F000  0003 0004 F0")));
    EXPECT_EQ(taken(table->getTransportStreamIDs()), (Ids{0x0001}));
}

TEST(TNITTable, IncompleteTransportStreamIsAnInvalidItem) {
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F000  F005  0001 0002 F0")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 5. Aborting!"), invalidItem});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F000  F00A  0001 0002 F000  0003 0004")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 4. Aborting!"), invalidItem});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F000  F006  0001 0002 F001")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 1 > 0. Aborting!"), invalidItem});
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F000  F00A  0001 0002 F004  40 03 4142")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 3 > 4. Aborting!"), invalidItem});
}

TEST(TNITTable, EntryMayUseAllThatIsLeftOfTheSection) {
    // It is offered the rest of the section, not of the loop: the loop is overrun, and the walk goes on until it fails.
    expectNoTable<TNITTable>(longSection(0x40, {}, hex("F000  F007  0001 0002 F002 48 00  0003 0004 F002 49 00")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Unknown descriptor: 0x48. Ignored!"),
                                   entryLine("Unknown descriptor: 0x49. Ignored!"),
                                   entryLine("Item length not valid: 0. Aborting!"), invalidItem});
}

TEST(TNITTable, LengthOfTheTransportStreamsIsReadFromTheCrcOfASectionWithoutIt) {
    // The count of what is left wraps; the CRC_32 is not verified, and here it happens to say that there are none.
    const auto table = expectTable<TNITTable>(rawSection(0x40, 14, hex("F003  40 01 41  F000 1234")));
    EXPECT_EQ(table->getTransportStreamLoopSize(), 0U);
    EXPECT_EQ(table->getNetworkNameDescriptor()->getNetworkName(), "A");

    expectNoTable<TNITTable>(rawSection(0x40, 14, hex("F003  40 01 41  F006 1234")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(lengthLine("TNITTransportStreamInfo"), invalidItem));
}

TEST(TNITTable, LengthOfTheTransportStreamsMayEndTheBytes) {
    EXPECT_EQ(expectTable<TNITTable>(rawSection(0x40, 9, hex("F000 F000")))->getTransportStreamLoopSize(), 0U);
}

TEST(TNITTable, TooSmallASectionLengthIsWalkedBeyond) {
    // Whatever wraps, the walk goes on inside the bytes that were given.
    const ByteVector loops =
        join({loopOf(hex("40 01 41")), loopOf(join({transportStream(1, 2), transportStream(3, 4)}))});
    for (const unsigned sectionLength : {0U, 1U, 4U, 5U, 8U, 9U, 10U}) {
        SCOPED_TRACE(sectionLength);
        const auto table = expectTable<TNITTable>(rawSection(0x40, sectionLength, loops));
        EXPECT_EQ(table->getNetworkNameDescriptor()->getNetworkName(), "A");
        EXPECT_EQ(taken(table->getTransportStreamIDs()), (Ids{1, 3}));
    }
    // With 11 and 12 nothing and one byte are left for network descriptors, but the count wraps behind their length.
    const ByteVector noNetwork = join({loopOf({}), loopOf(transportStream(1, 2))});
    for (const unsigned sectionLength : {11U, 12U}) {
        SCOPED_TRACE(sectionLength);
        EXPECT_EQ(taken(expectTable<TNITTable>(rawSection(0x40, sectionLength, noNetwork))->getTransportStreamIDs()),
                  (Ids{1}));
    }
    expectNoTable<TNITTable>(rawSection(0x40, 11, loops), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 3 > 0. Aborting!")});
    expectNoTable<TNITTable>(rawSection(0x40, 13, noNetwork), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 6 > 0. Aborting!")});
}

TEST(TNITTable, SectionThatEndsInItsHeadersIsRefused) {
    expectNoTableWithin<TNITTable>(0x40, 4, 12);
}

TEST(TNITTable, NetworkDescriptorsAreRefusedWhereTheBytesEnd) {
    const auto refused = lengthLine("TNITTable");
    // In the body of a descriptor that is read ...
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F005  40 03 41")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(refused));
    // ... in a header, after all that lies before it was read ...
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F005  48 00  40")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), refused));
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F005  48 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), refused));
    // ... behind a descriptor that nobody reads ...
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F009  48 03 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), refused));
    // ... and in the length that follows them.
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F003  40 01 41  F0")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(refused));
    // A descriptor that ends with the bytes is read.
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F009  40 01 41  FB 00")),
                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 2 < 4. Aborting!"});
}

TEST(TNITTable, DescriptorBelowItsMinimumFailsThoughItsBodyIsNotThere) {
    // Its class looks at its header alone.
    const std::string tooShort = "ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: "
                                 "8 < 9. Aborting!";
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F008  4A 06 0001")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{tooShort});
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F000  F00E  0001 0002 F008  4A 06 0001")),
                             TISDBTTable::ERROR_INVALID_ITEM, Lines{tooShort, invalidItem});
}

TEST(TNITTable, TransportStreamsAreRefusedWhereTheBytesEnd) {
    const auto refused = lengthLine("TNITTransportStreamInfo");
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F000  F00C  0001 0002 F000")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(refused, invalidItem));
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F000  F00C  0001 0002 F000  0003 0004 F0")),
                             TISDBTTable::ERROR_INVALID_ITEM, ElementsAre(refused, invalidItem));
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F000  F00C  0001 0002 F006  48 00  40 02 41")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"), refused, invalidItem));
    expectNoTable<TNITTable>(rawSection(0x40, 5, hex("F000  F00C  0001 0002 F006  48 00  40")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"), refused, invalidItem));
}

TEST(TNITTable, EntryKeepsTheCountThatItsTableStates) {
    // 65524 bytes are stated behind the second length; the descriptors of the entry do fit into that.
    expectNoTable<TNITTable>(rawSection(0x40, 1, hex("F000  F006  0001 0002 FFFF  48 00")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"),
                                         lengthLine("TNITTransportStreamInfo"), invalidItem));
}

TEST(TNITTable, UnreadBodyOfTheLastDescriptorMayLieBehindTheBytes) {
    // Nothing of it is looked at, and the loops end with it.
    const auto table = expectTable<TNITTable>(rawSection(0x40, 5, hex("F000  F00A  0001 0002 F004  48 02 00")),
                                              {entryLine("Unknown descriptor: 0x48. Ignored!")});
    EXPECT_EQ(taken(table->getTransportStreamIDs()), (Ids{1}));
}

TEST(TNITTable, KeepsACopyOfTheSection) {
    const ByteVector section = nit(hex("40 03 474C42"), transportStream(7, 8, hex("41 02 20 01")));
    std::unique_ptr<TNITTable> table;
    {
        const HeapBytes bytes(section);
        table.reset(TNITTable::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
        ASSERT_NE(table, nullptr);
        EXPECT_NE(table->getData(), bytes.data());
    }
    EXPECT_EQ(elements(table->getData(), table->getDataLength()), section);
    EXPECT_EQ(table->getNetworkNameDescriptor()->getNetworkName(), "GLB");
    EXPECT_EQ(table->getTransportStreamInfo(7)->getServiceListDescriptor()->get(0x20)->getServiceType(), 1);
}

TEST(TNITTable, MakesANewListEachTime) {
    const auto table = expectTable<TNITTable>(nit(hex("40 01 41"), transportStream(1, 2)));
    const std::unique_ptr<std::list<QUOR_U8>> tags(table->getDescriptorTags());
    tags->clear();
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{0x40}));
}

TEST(TNITTable, SurvivesEveryPrefixAndEveryByteChange) {
    expectEveryPrefixSurvives<TNITTable>(rich());
    expectEveryByteChangeSurvives<TNITTable>(rich());
}
