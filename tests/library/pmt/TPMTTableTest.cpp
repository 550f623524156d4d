#include "pmt/TPMTTable.h"

#include "ProgramKinds.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Survival.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;
using Quor::TPMTTable;
using Quor::TProgramMap;
using testing::ElementsAre;

using Maps = std::vector<TProgramMap*>;
using Tags = std::vector<QUOR_U8>;

namespace {

std::string line(const std::string& rest) {
    return "ISDBTUtils: TPMTTable::parse: " + rest;
}

std::string entryLine(const std::string& rest) {
    return "ISDBTUtils: TProgramMap::parse: " + rest;
}

const std::string invalidItem = line("Invalid item. Aborting!");

class TPMTTableKind : public testing::TestWithParam<ProgramKind> {};

/// A section with every kind of descriptor wherever it can stand.
ByteVector rich() {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(programKinds(), all);
    return pmt(descriptors, join({stream(0x1B, 0x111, descriptors), stream(0x11, 0x112, hex("42 01 00"))}));
}

const ByteVector IDENTIFIED = pmt(hex("52 01 10"), stream(0x1B, 0x111, hex("52 01 11")));

void expectIdentified(const TPMTTable& table) {
    EXPECT_NE(table.getStreamIdentifierDescriptor(), nullptr);
    EXPECT_NE(table.getProgramMap(0)->getStreamIdentifierDescriptor(0, nullptr), nullptr);
}

} // namespace

TEST(TPMTTable, ChecksTheSectionHeader) {
    expectSectionChecks<TPMTTable>(0x02, 4, IDENTIFIED, expectIdentified);
}

TEST(TPMTTable, IsReadWholeWhateverTheSwitchesSay) {
    expectSwitchesMakeNoDifference<TPMTTable>(IDENTIFIED, expectIdentified);
}

TEST(TPMTTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TPMTTable>(
        [](const LongHeader& header) { return pmt({}, stream(static_cast<QUOR_U8>(header.version), 0x111), header); });
    EXPECT_EQ(versions.previous->getProgramMap(0)->getStreamType(), 5);
    EXPECT_EQ(versions.next->getProgramMap(0)->getStreamType(), 6);
}

TEST(TPMTTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TPMTTable>(pmt({}, {}));
}

TEST(TPMTTable, Getters) {
    EXPECT_GETTER(QUOR_U16, TPMTTable, getProgramNumber);
    EXPECT_GETTER(QUOR_U16, TPMTTable, getPCRPID);
    EXPECT_GETTER(QUOR_U32, TPMTTable, size);
}

TEST(TPMTTable, StartsEmpty) {
    HeapBytes bytes(pmt(hex("52 01 10"), stream(0x1B, 0x111)));
    const InDirtyMemory<TPMTTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::PMT);
    EXPECT_EQ(table->getProgramNumber(), 0);
    EXPECT_EQ(table->getPCRPID(), 0);
    EXPECT_EQ(table->size(), 0U);
    EXPECT_EQ(table->getProgramMap(0), nullptr);
    EXPECT_EQ(taken(table->getDescriptorTags()), Tags{});
    for (const ProgramKind& kind : programKinds()) {
        EXPECT_EQ(kind.ofTable(*table), nullptr) << kind.name;
        EXPECT_EQ(table->getDescriptor(kind.tag), nullptr) << kind.name;
    }
}

TEST(TPMTTable, WithoutDescriptorsAndStreams) {
    const auto table = expectTable<TPMTTable>(pmt({}, {}));
    EXPECT_EQ(table->size(), 0U);
    EXPECT_EQ(table->getPCRPID(), 0x0100);
    EXPECT_EQ(taken(table->getDescriptorTags()), Tags{});
}

TEST(TPMTTable, ReadsItsHeader) {
    const auto table = expectTable<TPMTTable>(pmt({}, {}, {0x5C20, 5, true, 1, 3}));
    EXPECT_EQ(table->getType(), TISDBTTable::PMT);
    EXPECT_EQ(table->getProgramNumber(), 0x5C20);
    EXPECT_EQ(table->getGenericDataField(), 0x5C20);
    EXPECT_EQ(table->getVersion(), 5);
    EXPECT_TRUE(table->getCurrentIndicator());
    EXPECT_EQ(table->getSectionNumber(), 1);
    EXPECT_EQ(table->getLastSectionNumber(), 3);
}

TEST(TPMTTable, PcrPidHas13Bits) {
    EXPECT_EQ(expectTable<TPMTTable>(longSection(0x02, {}, hex("1FFF F000")))->getPCRPID(), 0x1FFF);
    EXPECT_EQ(expectTable<TPMTTable>(longSection(0x02, {}, hex("E000 0000")))->getPCRPID(), 0);
}

TEST(TPMTTable, ReadsStreamsInTheirOrder) {
    const auto table = expectTable<TPMTTable>(
        pmt({}, join({stream(0x1B, 0x111, hex("52 01 00")), stream(0x11, 0x112), stream(0x1B, 0x111)})));
    ASSERT_EQ(table->size(), 3U);
    EXPECT_EQ(table->getProgramMap(0)->getStreamType(), 0x1B);
    EXPECT_EQ(table->getProgramMap(0)->getElementaryPID(), 0x111);
    EXPECT_NE(table->getProgramMap(0)->getStreamIdentifierDescriptor(0, nullptr), nullptr);
    EXPECT_EQ(table->getProgramMap(1)->getStreamType(), 0x11);
    EXPECT_EQ(table->getProgramMap(1)->getElementaryPID(), 0x112);
    EXPECT_EQ(table->getProgramMap(2)->getElementaryPID(), 0x111);
    EXPECT_EQ(table->getProgramMap(2)->getStreamIdentifierDescriptor(0, nullptr), nullptr);
    EXPECT_EQ(table->getProgramMap(3), nullptr);
    EXPECT_EQ(table->getProgramMap(255), nullptr);
    EXPECT_EQ(table->getStreamIdentifierDescriptor(), nullptr);
}

TEST(TPMTTable, HoldsMoreStreamsThanAnIndexReaches) {
    ByteVector streams;
    for (unsigned pid = 0; pid < 300; ++pid) {
        streams = join({streams, stream(0x0D, pid)});
    }
    const auto table = expectTable<TPMTTable>(pmt({}, streams));
    EXPECT_EQ(table->size(), 300U);
    EXPECT_EQ(table->getProgramMap(255)->getElementaryPID(), 255);
    EXPECT_EQ(taken(table->getProgramMapsByStreamType(0x0D)).size(), 300U);
}

TEST(TPMTTable, HoldsAllKindsAndItsStreamsAsWell) {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(programKinds(), all);
    const auto table = parseSection<TPMTTable>(pmt(descriptors, stream(0x1B, 0x111, descriptors)));
    ASSERT_NE(table.object, nullptr);
    const Tags tags = tagsOf(programKinds());
    EXPECT_EQ(taken(table->getDescriptorTags()), tags);
    ASSERT_EQ(table->size(), 1U);
    EXPECT_EQ(taken(table->getProgramMap(0)->getDescriptorTags()), tags);
    for (const ProgramKind& kind : programKinds()) {
        ASSERT_NE(kind.ofTable(*table.object), nullptr) << kind.name;
        EXPECT_EQ(kind.ofTable(*table.object), table->getDescriptor(kind.tag)) << kind.name;
        EXPECT_NE(kind.ofTable(*table.object), kind.ofEntry(*table->getProgramMap(0))) << kind.name;
    }
}

TEST(TPMTTable, AnswersThroughItsBase) {
    const auto table = expectTable<TPMTTable>(pmt(hex("FD 02 0008  52 01 10"), {}));
    const TISDBTTable& base = *table.object;
    EXPECT_EQ(base.getDescriptor(0x52), table->getStreamIdentifierDescriptor());
    EXPECT_EQ(base.getDescriptor(0x53), nullptr);
    EXPECT_EQ(taken(base.getDescriptorTags()), (Tags{0x52, 0xFD}));
}

TEST(TPMTTable, ListsSubsetsOfTagsInTheSameOrder) {
    const std::vector<ProgramKind> kinds = programKinds();
    for (std::size_t first = 0; first < kinds.size(); ++first) {
        for (std::size_t step = 1; step < 5; ++step) {
            const auto wanted = [&](std::size_t i) { return i >= first && (i - first) % step == 0; };
            const auto table = parseSection<TPMTTable>(pmt(descriptorsOf(kinds, wanted), {}));
            ASSERT_NE(table.object, nullptr);
            ASSERT_EQ(taken(table->getDescriptorTags()), tagsOf(kinds, wanted));
        }
    }
}

TEST(TPMTTable, HoldsNothingUnderOtherTags) {
    const auto table = expectTable<TPMTTable>(pmt(hex("52 01 10"), {}));
    EXPECT_EQ(table->getDescriptor(0x42), nullptr);
    EXPECT_EQ(table->getDescriptor(0x48), nullptr);
    EXPECT_EQ(table->getDescriptor(0x00), nullptr);
    EXPECT_EQ(table->getDescriptor(0xFF), nullptr);
}

TEST(TPMTTable, UnknownTagsAreLoggedStuffingToo) {
    const auto table =
        expectTable<TPMTTable>(pmt(hex("42 00  09 04 0005E123  52 01 10"), stream(0x1B, 0x111, hex("42 01 00"))),
                               {line("Unknown descriptor: 0x42. Ignored!"), line("Unknown descriptor: 0x09. Ignored!"),
                                entryLine("Unknown descriptor: 0x42. Ignored!")});
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{0x52}));
    EXPECT_EQ(table->size(), 1U);
}

TEST_P(TPMTTableKind, IsHeld) {
    const ProgramKind& kind = GetParam();
    const auto table = expectTable<TPMTTable>(pmt(kind.good, stream(0x1B, 0x111)), kind.lines);
    TISDBTDescriptor* const held = kind.ofTable(*table.object);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getDescriptorTag(), kind.tag);
    EXPECT_EQ(held->getData(), table.bytes.data() + 12) << "it points into the caller's bytes";
    EXPECT_EQ(held->getDataLength(), kind.good.size());
    EXPECT_EQ(table->getDescriptor(kind.tag), held);
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{kind.tag}));
    EXPECT_EQ(table->size(), 1U);
    for (const ProgramKind& other : programKinds()) {
        if (other.tag != kind.tag) {
            EXPECT_EQ(other.ofTable(*table.object), nullptr) << other.name;
        }
    }
}

TEST_P(TPMTTableKind, LastOneWins) {
    const ProgramKind& kind = GetParam();
    const auto table = parseSection<TPMTTable>(pmt(join({kind.good, kind.good}), {}));
    ASSERT_NE(table.object, nullptr);
    ASSERT_NE(kind.ofTable(*table.object), nullptr);
    EXPECT_EQ(kind.ofTable(*table.object)->getData(), table.bytes.data() + 12 + kind.good.size());
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{kind.tag}));
}

TEST_P(TPMTTableKind, FailureOfItsParseFailsTheTable) {
    const ProgramKind& kind = GetParam();
    Lines logged = kind.lines;
    logged.insert(logged.end(), kind.badLines.begin(), kind.badLines.end());
    expectNoTable<TPMTTable>(pmt(join({kind.good, kind.bad, hex("48 00")}), stream(0x1B, 0x111)), kind.badCode, logged);
}

TEST_P(TPMTTableKind, FailureInAStreamIsAnInvalidItem) {
    const ProgramKind& kind = GetParam();
    Lines lines = kind.badLines;
    lines.push_back(invalidItem);
    expectNoTable<TPMTTable>(
        pmt(hex("52 01 10"), join({stream(0x1B, 0x111, hex("52 01 10")), stream(0x1B, 0x112, kind.bad)})),
        TISDBTTable::ERROR_INVALID_ITEM, lines);
}

INSTANTIATE_TEST_SUITE_P(, TPMTTableKind, testing::ValuesIn(programKinds()), kindName<ProgramKind>);

TEST(TPMTTable, ProgramDescriptorsPastTheSectionFail) {
    expectNoTable<TPMTTable>(longSection(0x02, {}, hex("E100 F004  52 01 10")),
                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{line("Longer data length is required: 3 < 4. Aborting!")});
    expectNoTable<TPMTTable>(longSection(0x02, {}, hex("E100 FFFF")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{line("Longer data length is required: 0 < 4095. Aborting!")});
    // Bytes behind the section do not count.
    expectNoTable<TPMTTable>(join({longSection(0x02, {}, hex("E100 F004  52 01 10")), fill(100, 0x00)}),
                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{line("Longer data length is required: 3 < 4. Aborting!")});
}

TEST(TPMTTable, ProgramDescriptorsPastTheDataFail) {
    // With a section_length of 12 the count of what is left wraps to 65535.
    expectNoTable<TPMTTable>(rawSection(0x02, 12, hex("E100 F011  52 01 10 00")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 17 > 16. Aborting!")});
    expectNoTable<TPMTTable>(rawSection(0x02, 12, hex("E100 F010  52 01 10 00")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 2 > 1. Aborting!")});
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 FFFF")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             Lines{line("Item length not valid: 4095 > 12. Aborting!")});
}

TEST(TPMTTable, DescriptorLongerThanTheDataFails) {
    // The bound is all that was given but two bytes, wherever the descriptor stands.
    const ByteVector section = longSection(0x02, {}, hex("E100 F005  42 01 00  52 13"));
    ASSERT_EQ(section.size(), 21U);
    expectNoTable<TPMTTable>(
        longSection(0x02, {}, hex("E100 F005  42 01 00  52 14")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x42. Ignored!"), line("Item length not valid: 20 > 19. Aborting!")});
    // Shorter than that, it is refused for the bytes that are not there.
    expectNoTable<TPMTTable>(
        section, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x42. Ignored!"), line("Item length not valid: 21 > 6. Aborting!")});
}

TEST(TPMTTable, DescriptorThatOverrunsItsLoopIsReadAndTheWalkGoesOn) {
    // Three bytes of descriptors are stated; the streams behind are read as descriptors as well.
    const ByteVector section = longSection(0x02, {}, hex("E100 F003  48 02 0000  43 00  52 01 10  44 C8"));
    expectNoTable<TPMTTable>(
        section, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x48. Ignored!"), line("Unknown descriptor: 0x43. Ignored!"),
              line("Item length not valid: 200 > " + std::to_string(section.size() - 2) + ". Aborting!")});
    // A descriptor there that fails has the last word.
    expectNoTable<TPMTTable>(longSection(0x02, {}, hex("E100 F003  48 02 0000  52 00")),
                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{line("Unknown descriptor: 0x48. Ignored!"),
                                   "ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 2 < 3. Aborting!"});
}

TEST(TPMTTable, OverrunLoopGoesOnThroughTheCrcToTheEndOfTheData) {
    const Lines logged{line("Unknown descriptor: 0x48. Ignored!"), line("Unknown descriptor: 0x43. Ignored!"),
                       line("Unknown descriptor: 0x44. Ignored!")};
    // The CRC_32 holds two descriptors without a body, and there the data end ...
    expectNoTable<TPMTTable>(rawSection(0x02, 17, hex("E100 F003  48 02 0000  4300 4400")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(logged[0], logged[1], logged[2], lengthLine("TPMTTable")));
    // ... or go on with half a header ...
    expectNoTable<TPMTTable>(rawSection(0x02, 17, hex("E100 F003  48 02 0000  4300 4400  45")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(logged[0], logged[1], logged[2], lengthLine("TPMTTable")));
    // ... or with half a descriptor ...
    expectNoTable<TPMTTable>(rawSection(0x02, 17, hex("E100 F003  48 02 0000  4300 4400  52 02 10")),
                             TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(logged[0], logged[1], logged[2], lengthLine("TPMTTable")));
    // ... or with a whole one, which is read.
    expectNoTable<TPMTTable>(
        rawSection(0x02, 17, hex("E100 F003  48 02 0000  4300 4400  7C 02 28 80")),
        TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        ElementsAre(logged[0], logged[1], logged[2],
                    "ISDBTUtils: TAACDescriptor::parse: Longer data length is required: 0 < 1. Aborting!"));
}

TEST(TPMTTable, OverrunLoopEndsWhenItsSixteenBitsComeToZero) {
    // 3 - 4 leaves 65535, which 255 descriptors of 257 bytes use up, far behind the section. The count of what is left
    // of the section wraps as well, and comes to 0 with it.
    ByteVector section = rawSection(0x02, 16, hex("E100 F003  FD 02 00  08"));
    const ByteVector longest = descriptor(0xFD, join({hex("00A0"), fill(253, 0x00)}));
    for (int i = 0; i < 255; ++i) {
        section.insert(section.end(), longest.begin(), longest.end());
    }
    const auto table = expectTable<TPMTTable>(join({section, hex("FF FF")}));
    EXPECT_EQ(table->size(), 0U);
    EXPECT_EQ(table->getDataComponentDescriptor()->getDataComponentID(), 0x00A0);

    // With one byte more in the section that one is left for streams.
    section[2] = 17;
    expectNoTable<TPMTTable>(join({section, hex("FF FF")}), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 1. Aborting!"), invalidItem});
}

TEST(TPMTTable, StreamPastTheSectionIsAnInvalidItem) {
    expectNoTable<TPMTTable>(pmt({}, hex("1B E111 F001")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 1 > 0. Aborting!"), invalidItem});
    expectNoTable<TPMTTable>(pmt({}, hex("1B E111 F0")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 4. Aborting!"), invalidItem});
    expectNoTable<TPMTTable>(pmt({}, join({stream(0x1B, 0x111), hex("11")})), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 1. Aborting!"), invalidItem});
    expectNoTable<TPMTTable>(pmt({}, hex("1B E111 F003  52 02 10")), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 2 > 1. Aborting!"), invalidItem});
    // Bytes behind the section do not count.
    expectNoTable<TPMTTable>(join({pmt({}, hex("1B E111 F001")), fill(100, 0x00)}), TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{entryLine("Item length not valid: 1 > 0. Aborting!"), invalidItem});
}

TEST(TPMTTable, StreamMayUseAllThatIsLeftOfTheSection) {
    expectNoTable<TPMTTable>(
        pmt({}, hex("1B E111 F002  48 01 00  42 00  52 01 10  11 E112 F000")), TISDBTTable::ERROR_INVALID_ITEM,
        Lines{entryLine("Unknown descriptor: 0x48. Ignored!"), entryLine("Unknown descriptor: 0x42. Ignored!"),
              entryLine("Item length not valid: 225 > 3. Aborting!"), invalidItem});
}

TEST(TPMTTable, TooSmallASectionLengthIsWalkedBeyondUntilItsSixteenBitsComeToZero) {
    // 12 - 13 leaves 65535 bytes: one program descriptor of 5 and 13106 streams.
    ByteVector section = rawSection(0x02, 12, hex("E100 F005  FD 03 0008 3D"));
    const ByteVector video = stream(0x1B, 0x111);
    for (int i = 0; i < 13106; ++i) {
        section.insert(section.end(), video.begin(), video.end());
    }
    ASSERT_EQ(section.size(), 12U + 65535U);
    const auto table = expectTable<TPMTTable>(join({section, hex("FF FF")}));
    EXPECT_EQ(table->size(), 13106U);
    EXPECT_EQ(table->getDataComponentDescriptor()->getDataComponentID(), 8);

    expectNoTable<TPMTTable>(withoutLast(section, 1), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(lengthLine("TProgramMap"), invalidItem));
}

TEST(TPMTTable, SectionThatEndsInItsHeadersIsRefused) {
    expectNoTableWithin<TPMTTable>(0x02, 4, 12);
}

TEST(TPMTTable, ProgramDescriptorsAreRefusedWhereTheBytesEnd) {
    const auto refused = lengthLine("TPMTTable");
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F004  52 02 10")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(refused));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F004  48 00  52")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), refused));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F004  48 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), refused));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F009  48 03 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                             ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), refused));
    // A descriptor that ends with the bytes is read.
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F004  52 00")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                             Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 2 < 3. Aborting!"});
}

TEST(TPMTTable, DescriptorBelowItsMinimumFailsThoughItsBodyIsNotThere) {
    // Its class looks at its header alone.
    const std::string tooShort = "ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: "
                                 "8 < 9. Aborting!";
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F008  4A 06 0001")),
                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, Lines{tooShort});
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 F008  4A 06 0001")),
                             TISDBTTable::ERROR_INVALID_ITEM, Lines{tooShort, invalidItem});
}

TEST(TPMTTable, StreamsAreRefusedWhereTheBytesEnd) {
    const auto refused = lengthLine("TProgramMap");
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(refused, invalidItem));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 F0")), TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(refused, invalidItem));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 F002 48 00  11 E112 F0")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"), refused, invalidItem));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 F006  48 00  52 02 10")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"), refused, invalidItem));
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 F006  48 00  52")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"), refused, invalidItem));
    // It keeps the count that its table states: 65532 - 4 - 5 bytes, into which 4095 do fit.
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 FFFF  48 00")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             ElementsAre(entryLine("Unknown descriptor: 0x48. Ignored!"), refused, invalidItem));
    // A descriptor that ends with the bytes is read.
    expectNoTable<TPMTTable>(rawSection(0x02, 9, hex("E100 F000  1B E111 F006  52 00")),
                             TISDBTTable::ERROR_INVALID_ITEM,
                             Lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is "
                                   "required: 2 < 3. Aborting!",
                                   invalidItem});
}

TEST(TPMTTable, KeepsACopyOfTheSection) {
    const ByteVector section = pmt(hex("FD 03 0008 3D"), stream(0x1B, 0x111, hex("55 04 425241 05")));
    std::unique_ptr<TPMTTable> table;
    {
        const HeapBytes bytes(section);
        table.reset(TPMTTable::parse(bytes.data(), bytes.size(), 1, 1, nullptr, nullptr));
        ASSERT_NE(table, nullptr);
        EXPECT_NE(table->getData(), bytes.data());
    }
    EXPECT_EQ(elements(table->getData(), table->getDataLength()), section);
    EXPECT_EQ(table->getDataComponentDescriptor()->getAdditionalData()[0], 0x3D);
    EXPECT_EQ(table->getProgramMap(0)->getParentalRatingDescriptor(0, nullptr)->get(0)->getCountryCode(), "BRA");
}

TEST(TPMTTable, FindsStreamsByStreamType) {
    const auto table =
        expectTable<TPMTTable>(pmt({}, join({stream(0x1B, 0x111), stream(0x11, 0x112), stream(0x1B, 0x113)})));
    const Maps videos{table->getProgramMap(0), table->getProgramMap(2)};
    EXPECT_EQ(taken(table->getProgramMapsByStreamType(0x1B)), videos);
    EXPECT_EQ(taken(table->getProgramMapByStreamType(0x1B)), videos);
    EXPECT_EQ(taken(table->getProgramMapsByStreamType(0x11)), (Maps{table->getProgramMap(1)}));
    EXPECT_EQ(taken(table->getProgramMapByStreamType(0x11)), (Maps{table->getProgramMap(1)}));
    EXPECT_EQ(taken(table->getProgramMapsByStreamType(0x02)), Maps{});
    EXPECT_EQ(taken(table->getProgramMapByStreamType(0x02)), Maps{});
}

TEST(TPMTTable, FindsStreamsByComponentTag) {
    const auto table = expectTable<TPMTTable>(
        pmt(hex("52 01 10"), join({stream(0x1B, 0x111, hex("52 01 10")), stream(0x11, 0x112),
                                   stream(0x11, 0x113, hex("52 01 11")), stream(0x06, 0x114, hex("52 01 10"))})));
    for (QUOR_U8 i = 0; i < 4; ++i) {
        table->getProgramMap(i)->setParentPMTTable(table.object.get());
    }
    // The stream without a tag of its own does not count, though it inherits one.
    EXPECT_EQ(taken(table->getProgramMapByComponentTag(0x10)),
              (Maps{table->getProgramMap(0), table->getProgramMap(3)}));
    EXPECT_EQ(taken(table->getProgramMapByComponentTag(0x11)), (Maps{table->getProgramMap(2)}));
    EXPECT_EQ(taken(table->getProgramMapByComponentTag(0x12)), Maps{});
}

TEST(TPMTTable, FindsStreamsByStreamTypeAndDataComponent) {
    const auto table = expectTable<TPMTTable>(pmt(
        hex("FD 02 0008"), join({stream(0x06, 0x111, hex("FD 02 0008")), stream(0x06, 0x112, hex("FD 02 0012")),
                                 stream(0x0D, 0x113, hex("FD 02 0008")), stream(0x06, 0x114),
                                 stream(0x06, 0x115, hex("FD 02 0108")), stream(0x06, 0x116, hex("FD 03 0008 3D"))})));
    for (QUOR_U8 i = 0; i < 6; ++i) {
        table->getProgramMap(i)->setParentPMTTable(table.object.get());
    }
    // Neither the stream that inherits the identifier nor the one of identifier 0x0108.
    EXPECT_EQ(taken(table->getProgramMap(0x06, 0x08)), (Maps{table->getProgramMap(0), table->getProgramMap(5)}));
    EXPECT_EQ(taken(table->getProgramMap(0x06, 0x12)), (Maps{table->getProgramMap(1)}));
    EXPECT_EQ(taken(table->getProgramMap(0x0D, 0x08)), (Maps{table->getProgramMap(2)}));
    EXPECT_EQ(taken(table->getProgramMap(0x0D, 0x12)), Maps{});
}

TEST(TPMTTable, MakesANewListEachTime) {
    const auto table = expectTable<TPMTTable>(pmt(hex("52 01 10"), stream(0x1B, 0x111)));
    const std::unique_ptr<std::list<TProgramMap*>> maps(table->getProgramMapsByStreamType(0x1B));
    maps->clear();
    EXPECT_EQ(taken(table->getProgramMapsByStreamType(0x1B)).size(), 1U);
    const std::unique_ptr<std::list<QUOR_U8>> tags(table->getDescriptorTags());
    tags->clear();
    EXPECT_EQ(taken(table->getDescriptorTags()), (Tags{0x52}));
}

TEST(TPMTTable, PassesOverNullInItsSearches) {
    QUOR_U8 nothing = 0;
    TPMTTable table(&nothing, 1);
    table.addProgramMap(nullptr);
    auto* const second = new TProgramMap;
    table.addProgramMap(second);
    EXPECT_EQ(taken(table.getProgramMapsByStreamType(0)), (Maps{second}));
    EXPECT_EQ(taken(table.getProgramMapByStreamType(0)), (Maps{second}));
    EXPECT_EQ(taken(table.getProgramMapByComponentTag(0)), Maps{});
    EXPECT_EQ(taken(table.getProgramMap(0, 0)), Maps{});
}

TEST(TPMTTable, SurvivesEveryPrefixAndEveryByteChange) {
    expectEveryPrefixSurvives<TPMTTable>(rich());
    expectEveryByteChangeSurvives<TPMTTable>(rich());
}
