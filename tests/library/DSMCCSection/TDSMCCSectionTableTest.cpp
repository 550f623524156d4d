#include "DSMCCSection/TDSMCCSectionTable.h"

#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Recordings.h"
#include "support/Sections.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TDSMCCSectionTable;
using Quor::TISDBTTable;

namespace {

ByteVector section(const ByteVector& descriptors, const LongHeader& header = {}) {
    return longSection(0x3D, header, descriptors);
}

Parsed<TDSMCCSectionTable> parse(const ByteVector& descriptors) {
    return parseSection<TDSMCCSectionTable>(section(descriptors));
}

void expectFailure(const ByteVector& wire, QUOR_U16 error, const Lines& lines) {
    expectNoTable<TDSMCCSectionTable>(wire, error, lines);
}

std::string notValid(unsigned tag, unsigned left) {
    return "ISDBTUtils: TDSMCCSectionTable::parse: Item length not valid: " + std::to_string(tag) + " > " +
           std::to_string(left) + ". Aborting!";
}

std::string unknown(const std::string& tag) {
    return "ISDBTUtils: TDSMCCSectionTable::parse: Unknown descriptor: 0x" + tag + ". Ignored!";
}

/// A header with section_length and behind it @p size bytes of unknown descriptors.
ByteVector longBuffer(unsigned sectionLength, std::size_t size) {
    return join({withSectionLength(hex("3D B000 3123 C1 00 00"), sectionLength), descriptorRun(0x17, size)});
}

const ByteVector NPT = hex("01 12  80 00 00000001 000000 00 00000002 0001 0001");
const ByteVector MODE = hex("03 02  02 FF");
const ByteVector EVENT = hex("04 0C  1234 000000 01 89ABCDEF AABB");
const ByteVector ALL = section(join({NPT, MODE, EVENT}));

void expectAll(const TDSMCCSectionTable& table) {
    EXPECT_EQ(taken(table.getDescriptorTags()), (std::vector<QUOR_U8>{1, 3, 4}));
}

} // namespace

TEST(TDSMCCSectionTable, ChecksTheSectionHeader) {
    expectSectionChecks<TDSMCCSectionTable>(0x3D, 4, ALL, expectAll);
}

TEST(TDSMCCSectionTable, SwitchesMakeNoDifference) {
    expectSwitchesMakeNoDifference<TDSMCCSectionTable>(ALL, expectAll);
}

TEST(TDSMCCSectionTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TDSMCCSectionTable>(
        [](const LongHeader& header) { return section(header.version == 5 ? MODE : EVENT, header); });
    EXPECT_EQ(taken(versions.previous->getDescriptorTags()), std::vector<QUOR_U8>{3});
    EXPECT_EQ(taken(versions.next->getDescriptorTags()), std::vector<QUOR_U8>{4});
}

TEST(TDSMCCSectionTable, DescriptorsOfTheSameVersionAreNotLookedAt) {
    const auto first = parse(MODE);
    const auto again = parseSection<TDSMCCSectionTable>(section(hex("03 09 00")), first.object.get());
    EXPECT_EQ(again.object, nullptr);
    EXPECT_EQ(again.error, TISDBTTable::ERROR_TABLE_NOT_UPDATED);
    EXPECT_EQ(again.lines, Lines{});
}

TEST(TDSMCCSectionTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TDSMCCSectionTable>(ALL);
}

TEST(TDSMCCSectionTable, StartsEmptyOverACopy) {
    const HeapBytes bytes(section(join({NPT, MODE, EVENT}), {0x3123, 12}));
    const InDirtyMemory<TDSMCCSectionTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::DSMCC_SECTION);
    EXPECT_NE(table->getData(), bytes.data());
    EXPECT_EQ(table->getDataLength(), bytes.size());
    EXPECT_EQ(table->getDataEventID(), 0);
    EXPECT_EQ(table->getEventMsgGroupID(), 0);
    EXPECT_EQ(table->getNPTReferenceDescriptor(), nullptr);
    EXPECT_EQ(table->getStreamModeDescriptor(), nullptr);
    EXPECT_EQ(table->getStreamEventDescriptor(), nullptr);
    EXPECT_EQ(taken(table->getDescriptorTags()), std::vector<QUOR_U8>{});
    EXPECT_EQ(table->getVersion(), 0);
}

TEST(TDSMCCSectionTable, SplitsItsExtension) {
    const auto parsed = parseSection<TDSMCCSectionTable>(section({}, {0x3123, 21, false, 3, 7}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getDataEventID(), 3);
    EXPECT_EQ(parsed->getEventMsgGroupID(), 0x123);
    EXPECT_EQ(parsed->getGenericDataField(), 0x3123);
    EXPECT_EQ(parsed->getVersion(), 21);
    EXPECT_FALSE(parsed->getCurrentIndicator());
    EXPECT_EQ(parsed->getSectionNumber(), 3);
    EXPECT_EQ(parsed->getLastSectionNumber(), 7);
    EXPECT_EQ(parsed->getType(), TISDBTTable::DSMCC_SECTION);
}

TEST(TDSMCCSectionTable, EveryBitOfTheExtensionBelongsToOneField) {
    for (unsigned bit = 0; bit < 16; ++bit) {
        const auto extension = static_cast<QUOR_U16>(1U << bit);
        const auto parsed = parseSection<TDSMCCSectionTable>(section({}, {extension}));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed->getDataEventID(), bit < 12 ? 0U : 1U << (bit - 12));
        EXPECT_EQ(parsed->getEventMsgGroupID(), bit < 12 ? 1U << bit : 0U);
    }
    const auto all = parseSection<TDSMCCSectionTable>(section({}, {0xFFFF}));
    EXPECT_EQ(all->getDataEventID(), 15);
    EXPECT_EQ(all->getEventMsgGroupID(), 0xFFF);
}

TEST(TDSMCCSectionTable, SectionWithoutDescriptorsIsEmpty) {
    const auto parsed = parse({});
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getNPTReferenceDescriptor(), nullptr);
    EXPECT_EQ(parsed->getStreamModeDescriptor(), nullptr);
    EXPECT_EQ(parsed->getStreamEventDescriptor(), nullptr);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{});
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(parsed->getDescriptor(static_cast<QUOR_U8>(tag)), nullptr);
    }
}

TEST(TDSMCCSectionTable, KeepsOneDescriptorOfEachKind) {
    const auto parsed = parse(join({EVENT, NPT, MODE}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    ASSERT_NE(parsed->getStreamEventDescriptor(), nullptr);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getEventID(), 0x1234);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getEventNPTL(), 0x89ABCDEFU);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getPrivateDataSize(), 2);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getData(), parsed.bytes.data() + 8);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getDataLength(), 14U);
    ASSERT_NE(parsed->getNPTReferenceDescriptor(), nullptr);
    EXPECT_EQ(parsed->getNPTReferenceDescriptor()->getNPTReferenceL(), 2U);
    EXPECT_EQ(parsed->getNPTReferenceDescriptor()->getData(), parsed.bytes.data() + 22);
    EXPECT_EQ(parsed->getNPTReferenceDescriptor()->getDataLength(), 20U);
    ASSERT_NE(parsed->getStreamModeDescriptor(), nullptr);
    EXPECT_EQ(parsed->getStreamModeDescriptor()->getStreamMode(), 2);
    EXPECT_EQ(parsed->getStreamModeDescriptor()->getDataLength(), 4U);
}

TEST(TDSMCCSectionTable, DescriptorsAreFoundByTheirTags) {
    const auto parsed = parse(join({EVENT, NPT, MODE}));
    const TISDBTTable& base = *parsed.object;
    EXPECT_EQ(base.getDescriptor(1), parsed->getNPTReferenceDescriptor());
    EXPECT_EQ(base.getDescriptor(3), parsed->getStreamModeDescriptor());
    EXPECT_EQ(base.getDescriptor(4), parsed->getStreamEventDescriptor());
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(base.getDescriptor(static_cast<QUOR_U8>(tag)) != nullptr, tag == 1 || tag == 3 || tag == 4) << tag;
    }
}

TEST(TDSMCCSectionTable, TagsAreInAscendingOrderEachOnlyIfPresent) {
    const auto tags = [](std::initializer_list<ByteVector> descriptors) {
        const auto parsed = parse(join(descriptors));
        const TISDBTTable& base = *parsed.object;
        return taken(base.getDescriptorTags());
    };
    EXPECT_EQ(tags({EVENT, MODE, NPT}), (std::vector<QUOR_U8>{1, 3, 4}));
    EXPECT_EQ(tags({NPT}), std::vector<QUOR_U8>{1});
    EXPECT_EQ(tags({MODE}), std::vector<QUOR_U8>{3});
    EXPECT_EQ(tags({EVENT}), std::vector<QUOR_U8>{4});
    EXPECT_EQ(tags({EVENT, NPT}), (std::vector<QUOR_U8>{1, 4}));
    EXPECT_EQ(tags({EVENT, MODE}), (std::vector<QUOR_U8>{3, 4}));
}

TEST(TDSMCCSectionTable, TagsAreANewListForTheCaller) {
    const auto parsed = parse(MODE);
    const std::unique_ptr<std::list<QUOR_U8>> first(parsed->getDescriptorTags());
    const std::unique_ptr<std::list<QUOR_U8>> second(parsed->getDescriptorTags());
    EXPECT_NE(first, second);
    EXPECT_EQ(*first, *second);
}

TEST(TDSMCCSectionTable, UnknownDescriptorIsLoggedAndSkipped) {
    const auto parsed = parse(join({EVENT, hex("17 03 AABBCC")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TDSMCCSectionTable::parse: Unknown descriptor: 0x17. Ignored!"});
    EXPECT_EQ(parsed->getDescriptor(4), parsed->getStreamEventDescriptor());
    EXPECT_NE(parsed->getDescriptor(4), nullptr);
    EXPECT_EQ(parsed->getDescriptor(2), nullptr);
}

TEST(TDSMCCSectionTable, EveryOtherTagIsUnknown) {
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        if (tag == 1 || tag == 3 || tag == 4) {
            continue;
        }
        const auto parsed = parse({static_cast<QUOR_U8>(tag), 0});
        ASSERT_NE(parsed.object, nullptr);
        char line[80];
        std::snprintf(line, sizeof line, "ISDBTUtils: TDSMCCSectionTable::parse: Unknown descriptor: 0x%02X. Ignored!",
                      tag);
        EXPECT_EQ(parsed.lines, Lines{line});
        EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{});
    }
}

TEST(TDSMCCSectionTable, TagFourIsAlwaysAStreamEvent) {
    // Long enough for a general event, which has the same tag.
    const auto parsed = parse(hex("04 10  ABCD 020000 00 00000007 112233445566"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getEventID(), 0xABCD);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getPrivateDataSize(), 6);
}

TEST(TDSMCCSectionTable, LastOfSeveralDescriptorsOfAKindIsKept) {
    const auto parsed = parse(join({MODE, EVENT, NPT, hex("03 02 05 00"), hex("04 0A 0007 000000 00 00000000"),
                                    hex("01 12  00 00 00000001 000000 00 00000009 0001 0001")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getStreamModeDescriptor()->getStreamMode(), 5);
    EXPECT_EQ(parsed->getStreamEventDescriptor()->getEventID(), 7);
    EXPECT_EQ(parsed->getNPTReferenceDescriptor()->getNPTReferenceL(), 9U);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), (std::vector<QUOR_U8>{1, 3, 4}));
}

TEST(TDSMCCSectionTable, StaysReadableWhenTheCallersBytesAreGone) {
    std::unique_ptr<TDSMCCSectionTable> table;
    const ByteVector wire = section(join({NPT, MODE, EVENT}), {0x3123, 12});
    {
        const HeapBytes bytes(wire);
        table.reset(TDSMCCSectionTable::parse(bytes.data(), bytes.size(), 0, 0, nullptr, nullptr));
    }
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->getDataEventID(), 3);
    EXPECT_EQ(table->getEventMsgGroupID(), 0x123);
    EXPECT_EQ(table->getVersion(), 12);
    EXPECT_EQ(table->getStreamEventDescriptor()->getEventID(), 0x1234);
    EXPECT_EQ(table->getStreamEventDescriptor()->getPrivateData()[0], 0xAA);
    EXPECT_EQ(ByteVector(table->getData(), table->getData() + table->getDataLength()), wire);
}

// What fails in the loop.

TEST(TDSMCCSectionTable, DescriptorBeyondThePayloadFailsAndItsTagIsLogged) {
    expectFailure(section(hex("17 03 AABB")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(0x17, 2)});
    expectFailure(section(hex("17 01")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(0x17, 0)});
    expectFailure(section(hex("04 0A 0001 000000 00 000000")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {notValid(4, 9)});
    expectFailure(section(hex("FF FF AABBCC")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(0xFF, 3)});
    EXPECT_NE(parse(hex("17 02 AABB")).object, nullptr);
}

TEST(TDSMCCSectionTable, LastDescriptorBeyondThePayloadFailsTheWholeTable) {
    expectFailure(section(join({EVENT, MODE, hex("17 00"), hex("03 03 0100")})), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("17"), notValid(3, 2)});
}

TEST(TDSMCCSectionTable, OneByteLeftOverFails) {
    // The comparison is signed: with one byte left no length is small enough.
    expectFailure(section(join({MODE, hex("1A")})), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {notValid(0x1A, 4294967295)});
    expectFailure(section(hex("03")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(3, 4294967295)});
    ByteVector wire = section(hex("17")); // the CRC_32 that follows looks like a length of 0
    wire[9] = 0;
    expectFailure(wire, TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(0x17, 4294967295)});
}

TEST(TDSMCCSectionTable, CodeOfAFailingDescriptorStands) {
    expectFailure(section(hex("03 01 00")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 3 < 4. "
                   "Aborting!"});
    expectFailure(section(hex("04 09 0001 000000 00 000000")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 11 < 12. "
                   "Aborting!"});
    expectFailure(section(join({MODE, EVENT, hex("01 00")})), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 20. "
                   "Aborting!"});
}

TEST(TDSMCCSectionTable, FailingRepetitionFailsTheWholeTable) {
    expectFailure(section(join({MODE, hex("03 00")})), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 4. "
                   "Aborting!"});
}

TEST(TDSMCCSectionTable, WrappedCountFailsWhereTheDataEnd) {
    // section_length below 9 leaves 65536 + section_length - 9 bytes, of which the data hold none, one or three.
    for (unsigned sectionLength = 0; sectionLength < 6; ++sectionLength) {
        SCOPED_TRACE(sectionLength);
        const unsigned left = 65536 + sectionLength - 9;
        const ByteVector header = withSectionLength(hex("3D B000 3123 C1 00 00"), sectionLength);
        expectFailure(header, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                      {notValid(0, left - 2)}); // there is no tag to log
        expectFailure(join({header, hex("17")}), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(0x17, left - 2)});
        expectFailure(join({header, hex("17 01 AA")}), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                      {unknown("17"), notValid(0, left - 3 - 2)});
    }
    for (unsigned sectionLength = 6; sectionLength < 9; ++sectionLength) {
        SCOPED_TRACE(sectionLength);
        const unsigned left = 65536 + sectionLength - 9;
        expectFailure(withSectionLength(hex("3D B000 3123 C1 00 00  17 02 AABB"), sectionLength),
                      TISDBTTable::ERROR_INVALID_DATA_LENGTH, {unknown("17"), notValid(0, left - 4 - 2)});
    }
}

TEST(TDSMCCSectionTable, KnownDescriptorBeyondTheDataFailsAfterAWrappedCount) {
    const ByteVector header = hex("3D B000 3123 C1 00 00"); // 65527 bytes
    expectFailure(join({header, hex("03 02 00")}), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(3, 65525)});
    expectFailure(join({header, hex("17 00  04 0A 0001 000000 00 000000")}), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("17"), notValid(4, 65523)});
    expectFailure(join({header, hex("01 FF")}), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {notValid(1, 65525)});
}

TEST(TDSMCCSectionTable, WrappedCountIsWalkedInsideALongerBuffer) {
    for (unsigned sectionLength = 0; sectionLength < 9; ++sectionLength) {
        const std::size_t left = 65536 + sectionLength - 9;
        const auto parsed = parseSection<TDSMCCSectionTable>(longBuffer(sectionLength, left));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed.lines, Lines(255, unknown("17")));
        EXPECT_EQ(parsed->getEventMsgGroupID(), 0x123);
    }
}

TEST(TDSMCCSectionTable, WrappedCountOneByteBeyondTheDataFails) {
    ByteVector wire = join({longBuffer(5, 65532 - MODE.size()), MODE});
    EXPECT_NE(parseSection<TDSMCCSectionTable>(wire).object, nullptr);
    wire.pop_back();
    const auto parsed = parseSection<TDSMCCSectionTable>(wire);
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
    ASSERT_EQ(parsed.lines.size(), 256U);
    EXPECT_EQ(parsed.lines.back(), notValid(3, 2));
}

TEST(TDSMCCSectionTable, WrappedCountReadsKnownDescriptorsBehindTheSection) {
    const ByteVector wire = join({longBuffer(5, 65532 - MODE.size()), MODE, EVENT});
    const auto parsed = parseSection<TDSMCCSectionTable>(wire);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{3}); // the event lies behind the wrapped count
}

TEST(TDSMCCSectionTable, EveryPrefixSurvives) {
    expectEveryPrefixSurvives<TDSMCCSectionTable>(section(join({NPT, MODE, hex("17 00"), EVENT})));
}

TEST(TDSMCCSectionTable, EveryByteChangeSurvives) {
    expectEveryByteChangeSurvives<TDSMCCSectionTable>(section(join({NPT, MODE, hex("17 00"), EVENT})));
}

TEST(TDSMCCSectionTable, IsDestroyedThroughItsBase) {
    int deleted = 0;
    QUOR_U8 nothing = 0;
    std::unique_ptr<TISDBTTable> table(new Counted<TDSMCCSectionTable>(deleted, &nothing, QUOR_U32{0}));
    table.reset();
    EXPECT_EQ(deleted, 1);
    auto parsed = parse(join({NPT, MODE, EVENT}));
    table = std::move(parsed.object); // deletes its descriptors, as the leak check sees
    table.reset();
}

// Recorded sections carry their stream events under tag 0x1A, which this table does not know.
TEST(TDSMCCSectionTable, RecordedSectionsKeepNoDescriptor) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> recorded = recordedSections(QUOR_U8{0x3D});
    ASSERT_EQ(recorded.size(), 4U);
    const std::vector<unsigned> versions = {0, 0, 1, 2};
    for (std::size_t i = 0; i < recorded.size(); ++i) {
        SCOPED_TRACE(recorded[i].place);
        const auto parsed = parseSection<TDSMCCSectionTable>(recorded[i].bytes);
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed.lines, Lines{unknown("1A")});
        EXPECT_EQ(parsed->getGenericDataField(), 0x0001);
        EXPECT_EQ(parsed->getDataEventID(), 0);
        EXPECT_EQ(parsed->getEventMsgGroupID(), 1);
        EXPECT_EQ(parsed->getVersion(), versions[i]);
        EXPECT_TRUE(parsed->getCurrentIndicator());
        EXPECT_EQ(parsed->getSectionNumber(), 0);
        EXPECT_EQ(parsed->getLastSectionNumber(), 0);
        EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{});
    }
}

TEST(TDSMCCSectionTable, RecordedSectionsReplaceEachOtherByVersion) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> recorded = recordedSections(QUOR_U8{0x3D});
    ASSERT_EQ(recorded.size(), 4U);
    const auto first = parseSection<TDSMCCSectionTable>(recorded[0].bytes);
    const auto again = parseSection<TDSMCCSectionTable>(recorded[1].bytes, first.object.get());
    EXPECT_EQ(again.object, nullptr);
    EXPECT_EQ(again.error, TISDBTTable::ERROR_TABLE_NOT_UPDATED);
    EXPECT_EQ(again.lines, Lines{});
    const auto next = parseSection<TDSMCCSectionTable>(recorded[2].bytes, first.object.get());
    ASSERT_NE(next.object, nullptr);
    const auto last = parseSection<TDSMCCSectionTable>(recorded[3].bytes, next.object.get());
    ASSERT_NE(last.object, nullptr);
    EXPECT_EQ(last->getVersion(), 2);
}

// Under tag 4 the very same bytes are a stream event, with the values of an independent reading.
TEST(TDSMCCSectionTable, RecordedEventsAreReadUnderTagFour) {
    SKIP_WITHOUT_RECORDINGS();
    const Lines texts = {"Test Message 1", "Test Message 1a", "Test Message 2", "Test Message 3"};
    const std::vector<RecordedSection> recorded = recordedSections(QUOR_U8{0x3D});
    ASSERT_EQ(recorded.size(), texts.size());
    for (std::size_t i = 0; i < recorded.size(); ++i) {
        SCOPED_TRACE(recorded[i].place);
        ByteVector wire = recorded[i].bytes;
        ASSERT_EQ(wire.at(8), 0x1A);
        wire[8] = 0x04;
        const auto parsed = parseSection<TDSMCCSectionTable>(wire);
        ASSERT_NE(parsed.object, nullptr);
        const Quor::TStreamEventDescriptor* const event = parsed->getStreamEventDescriptor();
        ASSERT_NE(event, nullptr);
        EXPECT_EQ(event->getEventID(), 1);
        EXPECT_EQ(event->getEventNPTH(), 0);
        EXPECT_EQ(event->getEventNPTL(), 0U);
        EXPECT_EQ(std::string(event->getPrivateData(), event->getPrivateData() + event->getPrivateDataSize()),
                  texts[i]);
    }
}

TEST(TDSMCCSectionTable, HasTheSignaturesThatReceiversCall) {
    using Table = TDSMCCSectionTable;
    testing::StaticAssertTypeEq<decltype(&Table::parse), Table* (*)(QUOR_U8*, QUOR_U32, int, int, QUOR_U16*, Table*)>();
    testing::StaticAssertTypeEq<decltype(&Table::getDataEventID), QUOR_U8 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getEventMsgGroupID), QUOR_U16 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getNPTReferenceDescriptor),
                                Quor::TNPTReferenceDescriptor* (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getStreamModeDescriptor),
                                Quor::TStreamModeDescriptor* (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getStreamEventDescriptor),
                                Quor::TStreamEventDescriptor* (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getDescriptor), Quor::TISDBTDescriptor* (Table::*)(QUOR_U8) const>();
    testing::StaticAssertTypeEq<decltype(&Table::getDescriptorTags), std::list<QUOR_U8>* (Table::*)() const>();
    const bool isVersioned = std::is_base_of<Quor::TISDBTVersionedTable, Table>::value;
    EXPECT_TRUE(isVersioned);
    EXPECT_FALSE(std::is_copy_constructible<Table>::value);
    EXPECT_EQ(slotOf(&Table::getDescriptor), slotOf(&TISDBTTable::getDescriptor));
    EXPECT_EQ(slotOf(&Table::getDescriptorTags), slotOf(&TISDBTTable::getDescriptorTags));
    EXPECT_EQ(slotOf(&Table::parseCommonHeader), slotOf(&TISDBTTable::parseCommonHeader));
}
