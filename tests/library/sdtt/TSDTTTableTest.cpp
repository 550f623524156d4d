#include "sdtt/TSDTTTable.h"

#include "descriptors/TDownloadContentDescriptor.h"
#include "support/DirtyMemory.h"
#include "support/ParserLines.h"
#include "support/Recordings.h"
#include "support/Sections.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TDownloadContent;
using Quor::TISDBTTable;
using Quor::TSDTTTable;

namespace {

const std::string INVALID_ITEM = "ISDBTUtils: TSDTTTable::parse: Invalid item. Aborting!";
const std::string LENGTH = "ISDBTUtils: TDownloadContent::parse: Item length not valid: ";

std::string tooShort(unsigned length) {
    return LENGTH + std::to_string(length) + ". Aborting!";
}

std::string tooLong(unsigned needed, unsigned left) {
    return LENGTH + std::to_string(needed) + " > " + std::to_string(left) + ". Aborting!";
}

std::string unknown(const std::string& tag) {
    return "ISDBTUtils: TDownloadContent::parse: Unknown descriptor: 0x" + tag + ". Ignored!";
}

/// transport_stream_id | original_network_id | service_id
const ByteVector IDS = hex("5678 9ABC DEF0");

ByteVector sdtt(unsigned contents, const ByteVector& loop, const LongHeader& header = {}) {
    return longSection(0xC3, header, join({IDS, {static_cast<QUOR_U8>(contents)}, loop}));
}

/// A section without its CRC_32, with any section_length, and bytes behind it.
ByteVector buffer(unsigned sectionLength, unsigned contents, const ByteVector& rest) {
    return withSectionLength(join({hex("C3 F000 1234 C1 00 00"), IDS, {static_cast<QUOR_U8>(contents)}, rest}),
                             sectionLength);
}

Parsed<TSDTTTable> parse(const ByteVector& wire) {
    return parseSection<TSDTTTable>(wire);
}

void expectFailure(const ByteVector& wire, QUOR_U16 error, const Lines& lines) {
    expectNoTable<TSDTTTable>(wire, error, lines);
}

/// One content; its group tells it from others.
ByteVector content(unsigned group, unsigned contentLength, unsigned scheduleLength, const ByteVector& rest) {
    return join({u16(0x200, group << 12), hex("208 1"), u16(contentLength << 4), u16(scheduleLength << 4), rest});
}

ByteVector bare(unsigned group) {
    return content(group, 0, 0, {});
}

const ByteVector SLOT = hex("C079 123456 013000");
const ByteVector DOWNLOAD = hex("C9 12  00 00000000 00000000 00000000 000000 77 00");

const ByteVector FULL = sdtt(1, content(5, 28, 8, join({SLOT, DOWNLOAD})));

void expectFull(const TSDTTTable& table) {
    ASSERT_EQ(table.getDownloadContentSize(), 1U);
    EXPECT_NE(table.getDownloadContent(0)->getDownloadContentDescriptor(), nullptr);
}

} // namespace

TEST(TSDTTTable, ChecksTheSectionHeader) {
    expectSectionChecks<TSDTTTable>(0xC3, 4, FULL, expectFull);
}

TEST(TSDTTTable, SwitchesMakeNoDifference) {
    expectSwitchesMakeNoDifference<TSDTTTable>(FULL, expectFull);
}

TEST(TSDTTTable, ChecksTheVersion) {
    const auto versions = expectVersionChecks<TSDTTTable>(
        [](const LongHeader& header) { return sdtt(1, bare(header.version & 0x0FU), header); });
    EXPECT_EQ(versions.previous->getDownloadContent(0)->getGroup(), 5);
    EXPECT_EQ(versions.next->getDownloadContent(0)->getGroup(), 6);
}

TEST(TSDTTTable, ContentsOfTheSameVersionAreNotLookedAt) {
    const auto first = parse(sdtt(1, bare(1)));
    const auto again = parseSection<TSDTTTable>(sdtt(1, hex("00")), first.object.get());
    EXPECT_EQ(again.object, nullptr);
    EXPECT_EQ(again.error, TISDBTTable::ERROR_TABLE_NOT_UPDATED);
    EXPECT_EQ(again.lines, Lines{});
}

TEST(TSDTTTable, ChecksTheTypeOfThePreviousTable) {
    expectTypeCheck<TSDTTTable>(FULL);
}

TEST(TSDTTTable, StartsEmptyOverACopy) {
    const HeapBytes bytes(sdtt(1, bare(1), {0x1234, 12}));
    const InDirtyMemory<TSDTTTable> table(bytes.data(), bytes.size());
    EXPECT_EQ(table->getType(), TISDBTTable::SDTT);
    EXPECT_NE(table->getData(), bytes.data());
    EXPECT_EQ(table->getDataLength(), bytes.size());
    EXPECT_EQ(table->getTableIDExtension(), 0);
    EXPECT_EQ(table->getMakerID(), 0);
    EXPECT_EQ(table->getModelID(), 0);
    EXPECT_EQ(table->getTransportStreamID(), 0);
    EXPECT_EQ(table->getOriginalNetworkID(), 0);
    EXPECT_EQ(table->getServiceID(), 0);
    EXPECT_EQ(table->getVersion(), 0);
    EXPECT_EQ(table->getDownloadContentSize(), 0U);
    EXPECT_EQ(table->getDownloadContent(0), nullptr);
}

TEST(TSDTTTable, SplitsItsExtensionIntoMakerAndModel) {
    const auto parsed = parse(sdtt(0, {}, {0x1234, 21, false, 3, 7}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getTableIDExtension(), 0x1234);
    EXPECT_EQ(parsed->getMakerID(), 0x12);
    EXPECT_EQ(parsed->getModelID(), 0x34);
    EXPECT_EQ(parsed->getGenericDataField(), 0x1234);
    EXPECT_EQ(parsed->getVersion(), 21);
    EXPECT_FALSE(parsed->getCurrentIndicator());
    EXPECT_EQ(parsed->getSectionNumber(), 3);
    EXPECT_EQ(parsed->getLastSectionNumber(), 7);
    EXPECT_EQ(parsed->getType(), TISDBTTable::SDTT);
    const auto all = parse(sdtt(0, {}, {0xFFFF}));
    EXPECT_EQ(all->getTableIDExtension(), 0xFFFF);
    EXPECT_EQ(all->getMakerID(), 0xFF);
    EXPECT_EQ(all->getModelID(), 0xFF);
    const auto model = parse(sdtt(0, {}, {0x0080}));
    EXPECT_EQ(model->getMakerID(), 0);
    EXPECT_EQ(model->getModelID(), 0x80);
}

TEST(TSDTTTable, ReadsItsIdentifiers) {
    const auto parsed = parse(longSection(0xC3, {}, hex("1234 5678 9ABC 00")));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->getTransportStreamID(), 0x1234);
    EXPECT_EQ(parsed->getOriginalNetworkID(), 0x5678);
    EXPECT_EQ(parsed->getServiceID(), 0x9ABC);
}

TEST(TSDTTTable, EveryBitOfTheIdentifiersCounts) {
    for (unsigned bit = 0; bit < 16; ++bit) {
        const ByteVector id = u16(1U << bit);
        const auto stream = parse(longSection(0xC3, {}, join({id, hex("0000 0000 00")})));
        EXPECT_EQ(stream->getTransportStreamID(), 1U << bit);
        EXPECT_EQ(stream->getOriginalNetworkID(), 0);
        const auto network = parse(longSection(0xC3, {}, join({hex("0000"), id, hex("0000 00")})));
        EXPECT_EQ(network->getOriginalNetworkID(), 1U << bit);
        EXPECT_EQ(network->getServiceID(), 0);
        const auto service = parse(longSection(0xC3, {}, join({hex("0000 0000"), id, hex("00")})));
        EXPECT_EQ(service->getServiceID(), 1U << bit);
        EXPECT_EQ(service->getTransportStreamID(), 0);
    }
}

TEST(TSDTTTable, WithoutContentsItIsEmpty) {
    const auto parsed = parse(sdtt(0, {}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getDownloadContentSize(), 0U);
    EXPECT_EQ(parsed->getDownloadContent(0), nullptr);
    EXPECT_EQ(parsed->getDownloadContent(255), nullptr);
}

TEST(TSDTTTable, WithoutContentsTheLoopIsNotLookedAt) {
    const auto parsed = parse(sdtt(0, hex("FFFF FF")));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getDownloadContentSize(), 0U);
}

TEST(TSDTTTable, ContentsAreInWireOrder) {
    const auto parsed =
        parse(sdtt(4, join({content(3, 28, 8, join({SLOT, DOWNLOAD})), bare(1), content(2, 16, 16, join({SLOT, SLOT})),
                            content(1, 3, 0, hex("99 01 AA"))})));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{unknown("99")});
    ASSERT_EQ(parsed->getDownloadContentSize(), 4U);
    const TDownloadContent* const first = parsed->getDownloadContent(0);
    EXPECT_EQ(first->getGroup(), 3);
    EXPECT_EQ(first->getTargetVersion(), 0x200);
    EXPECT_EQ(first->getNewVersion(), 0x208);
    EXPECT_EQ(first->getDownloadLevel(), 0);
    EXPECT_EQ(first->getVersionIndicator(), 1);
    EXPECT_EQ(first->getScheduleInfoSize(), 1U);
    EXPECT_EQ(first->getScheduleInfo(0)->getStartTime(), 750515696);
    ASSERT_NE(first->getDownloadContentDescriptor(), nullptr);
    EXPECT_EQ(first->getDownloadContentDescriptor()->getComponentTag(), 0x77);
    EXPECT_EQ(first->getDownloadContentDescriptor()->getData(), parsed.bytes.data() + 15 + 16);
    EXPECT_EQ(parsed->getDownloadContent(1)->getGroup(), 1);
    EXPECT_EQ(parsed->getDownloadContent(1)->getScheduleInfoSize(), 0U);
    EXPECT_EQ(parsed->getDownloadContent(2)->getGroup(), 2);
    EXPECT_EQ(parsed->getDownloadContent(2)->getScheduleInfoSize(), 2U);
    EXPECT_EQ(parsed->getDownloadContent(3)->getGroup(), 1);
    EXPECT_EQ(parsed->getDownloadContent(4), nullptr);
}

TEST(TSDTTTable, ContentsAreAsManyAsTheirCountSays) {
    const auto parsed = parse(sdtt(1, join({bare(1), bare(2)})));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    ASSERT_EQ(parsed->getDownloadContentSize(), 1U);
    EXPECT_EQ(parsed->getDownloadContent(0)->getGroup(), 1);
    const auto garbage = parse(sdtt(1, join({bare(1), hex("FFFFFF")})));
    ASSERT_NE(garbage.object, nullptr);
    EXPECT_EQ(garbage.lines, Lines{});
    const auto most = parse(sdtt(255, fill(std::size_t{255} * 8, 0)));
    ASSERT_NE(most.object, nullptr);
    EXPECT_EQ(most->getDownloadContentSize(), 255U);
    EXPECT_NE(most->getDownloadContent(254), nullptr);
    EXPECT_EQ(most->getDownloadContent(255), nullptr);
}

TEST(TSDTTTable, HasNoDescriptorsOfItsOwn) {
    const auto parsed = parse(sdtt(1, content(1, 20, 0, DOWNLOAD)));
    const TISDBTTable& base = *parsed.object;
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(base.getDescriptor(static_cast<QUOR_U8>(tag)), nullptr);
    }
    EXPECT_EQ(taken(base.getDescriptorTags()), std::vector<QUOR_U8>{});
    EXPECT_EQ(taken(parsed->getDownloadContent(0)->getDescriptorTags()), std::vector<QUOR_U8>{0xC9});
}

TEST(TSDTTTable, StaysReadableWhenTheCallersBytesAreGone) {
    std::unique_ptr<TSDTTTable> table;
    const ByteVector wire = sdtt(1, content(5, 28, 8, join({SLOT, DOWNLOAD})), {0x1234, 12});
    {
        const HeapBytes bytes(wire);
        table.reset(TSDTTTable::parse(bytes.data(), bytes.size(), 0, 0, nullptr, nullptr));
    }
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->getMakerID(), 0x12);
    EXPECT_EQ(table->getVersion(), 12);
    EXPECT_EQ(table->getServiceID(), 0xDEF0);
    EXPECT_EQ(table->getDownloadContent(0)->getGroup(), 5);
    EXPECT_EQ(table->getDownloadContent(0)->getScheduleInfo(0)->getDuration(), 77824U);
    EXPECT_EQ(table->getDownloadContent(0)->getDownloadContentDescriptor()->getComponentTag(), 0x77);
    EXPECT_EQ(ByteVector(table->getData(), table->getData() + table->getDataLength()), wire);
}

// Contents that fail the table.

TEST(TSDTTTable, MoreContentsThanThereAreFail) {
    expectFailure(sdtt(1, {}), TISDBTTable::ERROR_INVALID_ITEM, {tooShort(0), INVALID_ITEM});
    expectFailure(sdtt(3, join({bare(1), bare(2)})), TISDBTTable::ERROR_INVALID_ITEM, {tooShort(0), INVALID_ITEM});
    expectFailure(sdtt(2, join({bare(1), hex("FF FF FF FF 00")})), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooShort(5), INVALID_ITEM});
}

TEST(TSDTTTable, ContentsEndBeforeTheCrc) {
    // The four bytes that the content lacks are there: the CRC_32.
    expectFailure(sdtt(1, hex("12 00 20 81")), TISDBTTable::ERROR_INVALID_ITEM, {tooShort(4), INVALID_ITEM});
    expectFailure(sdtt(1, content(1, 4, 0, {})), TISDBTTable::ERROR_INVALID_ITEM, {tooLong(4, 0), INVALID_ITEM});
}

TEST(TSDTTTable, ContentLengthBeyondThePayloadFails) {
    expectFailure(sdtt(1, content(1, 9, 8, SLOT)), TISDBTTable::ERROR_INVALID_ITEM, {tooLong(9, 8), INVALID_ITEM});
    expectFailure(sdtt(2, join({bare(1), content(1, 0xFFF, 0, {})})), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(4095, 0), INVALID_ITEM});
}

TEST(TSDTTTable, DescriptorBeyondThePayloadFails) {
    expectFailure(sdtt(1, content(1, 4, 0, hex("99 03 AABB"))), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(3, 2), INVALID_ITEM});
}

TEST(TSDTTTable, DescriptorHeaderBeyondThePayloadFails) {
    // What the header lacks is there, too, but belongs to the CRC_32.
    expectFailure(sdtt(1, content(1, 1, 0, hex("99"))), TISDBTTable::ERROR_INVALID_ITEM, {tooLong(2, 1), INVALID_ITEM});
    expectFailure(sdtt(1, content(1, 9, 8, join({SLOT, hex("C9")}))), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(2, 1), INVALID_ITEM});
    // The first descriptor ends with the payload, but not with its content.
    expectFailure(sdtt(1, content(1, 4, 0, hex("99 03 AABBCC"))), TISDBTTable::ERROR_INVALID_ITEM,
                  {unknown("99"), tooLong(2, 0), INVALID_ITEM});
}

TEST(TSDTTTable, ScheduleThatIsNoMultipleOfEightFails) {
    expectFailure(sdtt(1, content(1, 4, 4, fill(4, 0))), TISDBTTable::ERROR_INVALID_ITEM, {tooShort(4), INVALID_ITEM});
    expectFailure(sdtt(1, content(1, 12, 12, fill(12, 0))), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooShort(12), INVALID_ITEM});
}

TEST(TSDTTTable, ScheduleBeyondTheDataFails) {
    expectFailure(sdtt(1, content(1, 8, 16, SLOT)), TISDBTTable::ERROR_INVALID_ITEM, {tooLong(16, 12), INVALID_ITEM});
    expectFailure(sdtt(1, content(1, 0, 0xFF8, {})), TISDBTTable::ERROR_INVALID_ITEM, {tooLong(4088, 4), INVALID_ITEM});
}

TEST(TSDTTTable, CodeOfAFailingDescriptorIsReplaced) {
    expectFailure(sdtt(1, content(1, 2, 0, hex("C9 00"))), TISDBTTable::ERROR_INVALID_ITEM,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 2 < 20. "
                   "Aborting!",
                   INVALID_ITEM});
    expectFailure(
        sdtt(1, content(1, 24, 0, hex("C9 16  08 00000000 00000000 00000000 000000 00  01 AA 706F72"))),
        TISDBTTable::ERROR_INVALID_ITEM,
        {INVALID_TARGET, "ISDBTUtils: TComponentDescriptor:: parse: ERROR: parsing Text. Aborting!", INVALID_ITEM});
    expectFailure(
        sdtt(1, content(1, 36, 0,
                        hex("C9 22  20 00000000 00000000 00000000 000000 00"
                            "000F 0001  01 0C 01 000000 0000 0000 01  04 03 AABB"))),
        TISDBTTable::ERROR_INVALID_ITEM,
        {"ISDBTUtils: TCompatibilityDescriptorSubItem:: parse: ERROR: parsing Additional Information. Aborting!",
         "ISDBTUtils: TCompatibilityDescriptorItem::parse: Invalid sub item. Aborting!",
         "ISDBTUtils: TCompatibilityDescriptor::parse: Invalid item. Aborting!", INVALID_ITEM});
}

TEST(TSDTTTable, OneBadContentFailsTheWholeTable) {
    expectFailure(sdtt(3, join({content(1, 28, 8, join({SLOT, DOWNLOAD})), content(2, 2, 0, hex("C9 01"))})),
                  TISDBTTable::ERROR_INVALID_ITEM, {tooLong(1, 0), INVALID_ITEM});
}

// Counts and lengths that leave the section.

TEST(TSDTTTable, IdentifiersBeyondTheDataFail) {
    // Every check of the header passes, and bytes 8 to 14 are not all there.
    const ByteVector wire = hex("C3 F000 1234 C1 00 00  5678 9ABC DEF0");
    for (unsigned size = 8; size < 15; ++size) {
        SCOPED_TRACE(size);
        const ByteVector prefix(wire.begin(), wire.begin() + static_cast<std::ptrdiff_t>(size));
        for (const unsigned sectionLength : {0U, 5U, size - 3}) {
            expectFailure(withSectionLength(prefix, sectionLength), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                          {"ISDBTUtils: TSDTTTable::parse: Item length not valid: 7 > " + std::to_string(size - 8) +
                           ". Aborting!"});
        }
    }
}

TEST(TSDTTTable, IdentifiersMayReachBeyondTheSectionInsideTheData) {
    for (unsigned sectionLength = 0; sectionLength < 13; ++sectionLength) {
        const auto parsed = parse(buffer(sectionLength, 0, {}));
        ASSERT_NE(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
        EXPECT_EQ(parsed.lines, Lines{});
        EXPECT_EQ(parsed->getTableIDExtension(), 0x1234);
        EXPECT_EQ(parsed->getTransportStreamID(), 0x5678);
        EXPECT_EQ(parsed->getOriginalNetworkID(), 0x9ABC);
        EXPECT_EQ(parsed->getServiceID(), 0xDEF0);
        EXPECT_EQ(parsed->getDownloadContentSize(), 0U);
    }
}

TEST(TSDTTTable, WrappedCountIsWalkedInsideTheData) {
    // section_length below 16 leaves 65536 + section_length - 16 bytes for the contents.
    for (unsigned sectionLength = 0; sectionLength < 16; ++sectionLength) {
        SCOPED_TRACE(sectionLength);
        const auto one = parse(buffer(sectionLength, 1, bare(5)));
        ASSERT_NE(one.object, nullptr);
        EXPECT_EQ(one.error, TISDBTTable::ERROR_OK);
        ASSERT_EQ(one->getDownloadContentSize(), 1U);
        EXPECT_EQ(one->getDownloadContent(0)->getGroup(), 5);
        const auto two =
            parse(buffer(sectionLength, 2, join({content(1, 28, 8, join({SLOT, DOWNLOAD})), bare(2), hex("FF")})));
        ASSERT_NE(two.object, nullptr);
        EXPECT_EQ(two.lines, Lines{});
        EXPECT_EQ(two->getDownloadContent(0)->getDownloadContentDescriptor()->getComponentTag(), 0x77);
        EXPECT_EQ(two->getDownloadContent(1)->getGroup(), 2);
    }
}

TEST(TSDTTTable, WrappedCountFailsWhereTheDataEnd) {
    for (unsigned sectionLength = 0; sectionLength < 16; ++sectionLength) {
        SCOPED_TRACE(sectionLength);
        const ByteVector cut = hex("12 00 20 81 00 00 00");
        const ByteVector seven = buffer(sectionLength, 1, cut);
        expectFailure(seven, TISDBTTable::ERROR_INVALID_ITEM, {tooLong(8, 7), INVALID_ITEM});
        expectFailure(buffer(sectionLength, 2, join({bare(1), cut})), TISDBTTable::ERROR_INVALID_ITEM,
                      {tooLong(8, 7), INVALID_ITEM});
    }
}

TEST(TSDTTTable, ContentAfterAWrappedCountFailsWhereTheDataEnd) {
    // 65520 bytes are left for the content, which the content length does not exceed; the data hold fewer.
    expectFailure(buffer(0, 1, content(1, 100, 0, hex("99 01 AA"))), TISDBTTable::ERROR_INVALID_ITEM,
                  {unknown("99"), tooLong(2, 0), INVALID_ITEM});
    expectFailure(buffer(0, 1, content(1, 100, 0, hex("C9 12 00"))), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(20, 3), INVALID_ITEM});
    expectFailure(buffer(0, 1, content(1, 100, 0, hex("C9"))), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(2, 1), INVALID_ITEM});
    expectFailure(buffer(0, 1, content(1, 100, 16, join({SLOT, hex("C079 00")}))), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(16, 11), INVALID_ITEM});
}

TEST(TSDTTTable, ScheduleLongerThanTheContentIsReadAndTheCountsWrap) {
    // The slot lies behind the payload; 0 - 8 leave 65528 bytes of descriptors.
    const ByteVector one = buffer(24, 1, content(1, 0, 8, join({SLOT, descriptorRun(0x99, 65528)})));
    const auto parsed = parse(one);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    ASSERT_EQ(parsed->getDownloadContentSize(), 1U);
    EXPECT_EQ(parsed->getDownloadContent(0)->getScheduleInfoSize(), 1U);
    EXPECT_EQ(parsed->getDownloadContent(0)->getScheduleInfo(0)->getDuration(), 77824U);
}

TEST(TSDTTTable, RemainingCountHasSixteenBits) {
    // The first content takes 65536 bytes and 8 more, which leaves 16 - 65544 = 8 for the second.
    const ByteVector loop = join({content(1, 0, 16, join({SLOT, SLOT, descriptorRun(0x99, 65520)})), bare(2)});
    const auto parsed = parse(buffer(32, 2, loop));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    ASSERT_EQ(parsed->getDownloadContentSize(), 2U);
    EXPECT_EQ(parsed->getDownloadContent(0)->getScheduleInfoSize(), 2U);
    EXPECT_EQ(parsed->getDownloadContent(1)->getGroup(), 2);
    const auto third = parse(buffer(32, 3, join({loop, bare(3)})));
    EXPECT_EQ(third.object, nullptr);
    EXPECT_EQ(third.error, TISDBTTable::ERROR_INVALID_ITEM);
    ASSERT_GE(third.lines.size(), 2U);
    EXPECT_EQ(third.lines[third.lines.size() - 2], tooShort(0));
    EXPECT_EQ(third.lines.back(), INVALID_ITEM);
}

TEST(TSDTTTable, WrappedCountsFailWhereTheDataEnd) {
    const ByteVector head = content(1, 0, 8, SLOT);
    expectFailure(buffer(24, 1, head), TISDBTTable::ERROR_INVALID_ITEM, {tooLong(2, 0), INVALID_ITEM});
    expectFailure(buffer(24, 1, join({head, hex("99")})), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(2, 1), INVALID_ITEM});
    expectFailure(buffer(24, 1, join({head, hex("99 00")})), TISDBTTable::ERROR_INVALID_ITEM,
                  {unknown("99"), tooLong(2, 0), INVALID_ITEM});
    expectFailure(buffer(24, 1, join({head, hex("C9 12"), fill(17, 0)})), TISDBTTable::ERROR_INVALID_ITEM,
                  {tooLong(20, 19), INVALID_ITEM});
}

TEST(TSDTTTable, EveryPrefixSurvives) {
    expectEveryPrefixSurvives<TSDTTTable>(
        sdtt(3, join({content(1, 32, 8, join({SLOT, hex("99 02 AABB"), DOWNLOAD})), bare(2), content(3, 8, 8, SLOT)})));
}

TEST(TSDTTTable, EveryByteChangeSurvives) {
    expectEveryByteChangeSurvives<TSDTTTable>(
        sdtt(3, join({content(1, 32, 8, join({SLOT, hex("99 02 AABB"), DOWNLOAD})), bare(2), content(3, 8, 8, SLOT)})));
}

// Sections of another system's making, with the values of its own reading.

TEST(TSDTTTable, RecordedSectionWithoutContents) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> recorded = recordedSections(QUOR_U8{0xC3});
    ASSERT_EQ(recorded.size(), 2U);
    const auto parsed = parse(recorded[0].bytes);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getVersion(), 0);
    EXPECT_TRUE(parsed->getCurrentIndicator());
    EXPECT_EQ(parsed->getTableIDExtension(), 0x1234);
    EXPECT_EQ(parsed->getMakerID(), 0x12);
    EXPECT_EQ(parsed->getModelID(), 0x34);
    EXPECT_EQ(parsed->getTransportStreamID(), 0x5678);
    EXPECT_EQ(parsed->getOriginalNetworkID(), 0x9ABC);
    EXPECT_EQ(parsed->getServiceID(), 0xDEF0);
    EXPECT_EQ(parsed->getDownloadContentSize(), 0U);
}

TEST(TSDTTTable, RecordedSectionWithContents) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> recorded = recordedSections(QUOR_U8{0xC3});
    ASSERT_EQ(recorded.size(), 2U);
    const auto parsed = parse(recorded[1].bytes);
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.lines, Lines(5, unknown("FB"))); // partial reception, which this table does not carry
    EXPECT_EQ(parsed->getVersion(), 10);
    EXPECT_EQ(parsed->getMakerID(), 0x43);
    EXPECT_EQ(parsed->getModelID(), 0x21);
    EXPECT_EQ(parsed->getTransportStreamID(), 0x8765);
    EXPECT_EQ(parsed->getOriginalNetworkID(), 0xCBA9);
    EXPECT_EQ(parsed->getServiceID(), 0x0FED);
    ASSERT_EQ(parsed->getDownloadContentSize(), 5U);
    struct Expected {
        int targetVersion, newVersion, level, indicator, timeShift;
        std::vector<QUOR_S32> starts;
    };
    // 2024-05-08 12:34:21 and 13:40:00, and the same on the two days after.
    const std::vector<Expected> contents = {{512, 520, 0, 1, 5, {1715171661, 1715175600}},
                                            {513, 521, 1, 2, 15, {1715258061, 1715262000}},
                                            {514, 522, 1, 0, 7, {1715344461, 1715348400}},
                                            {515, 523, 0, 0, 0, {}},
                                            {516, 524, 1, 1, 8, {}}};
    for (QUOR_U8 i = 0; i < 5; ++i) {
        SCOPED_TRACE(static_cast<int>(i));
        const TDownloadContent* const content = parsed->getDownloadContent(i);
        EXPECT_EQ(content->getGroup(), i + 1);
        EXPECT_EQ(content->getTargetVersion(), contents[i].targetVersion);
        EXPECT_EQ(content->getNewVersion(), contents[i].newVersion);
        EXPECT_EQ(content->getDownloadLevel(), contents[i].level);
        EXPECT_EQ(content->getVersionIndicator(), contents[i].indicator);
        EXPECT_EQ(content->getScheduleTimeShiftInfo(), contents[i].timeShift);
        EXPECT_EQ(content->getDownloadContentDescriptor(), nullptr);
        EXPECT_EQ(taken(content->getDescriptorTags()), std::vector<QUOR_U8>{});
        ASSERT_EQ(content->getScheduleInfoSize(), contents[i].starts.size());
        for (QUOR_U8 slot = 0; slot < contents[i].starts.size(); ++slot) {
            EXPECT_EQ(content->getScheduleInfo(slot)->getStartTime(), contents[i].starts[slot]);
            EXPECT_EQ(content->getScheduleInfo(slot)->getDuration(), slot == 0 ? 0x040506U : 0x121314U);
        }
    }
}

TEST(TSDTTTable, RecordedSectionsReplaceEachOtherByVersion) {
    SKIP_WITHOUT_RECORDINGS();
    const std::vector<RecordedSection> recorded = recordedSections(QUOR_U8{0xC3});
    ASSERT_EQ(recorded.size(), 2U);
    const auto first = parse(recorded[0].bytes);
    const auto next = parseSection<TSDTTTable>(recorded[1].bytes, first.object.get());
    ASSERT_NE(next.object, nullptr);
    const auto again = parseSection<TSDTTTable>(recorded[1].bytes, next.object.get());
    EXPECT_EQ(again.object, nullptr);
    EXPECT_EQ(again.error, TISDBTTable::ERROR_TABLE_NOT_UPDATED);
    EXPECT_EQ(again.lines, Lines{});
}

TEST(TSDTTTable, RecordedSectionsSurviveDamage) {
    SKIP_WITHOUT_RECORDINGS();
    for (const RecordedSection& recorded : recordedSections(QUOR_U8{0xC3})) {
        expectEveryPrefixSurvives<TSDTTTable>(recorded.bytes);
        expectEveryByteChangeSurvives<TSDTTTable>(recorded.bytes);
    }
}

TEST(TSDTTTable, HasTheSignaturesThatReceiversCall) {
    using Table = TSDTTTable;
    testing::StaticAssertTypeEq<decltype(&Table::parse), Table* (*)(QUOR_U8*, QUOR_U32, int, int, QUOR_U16*, Table*)>();
    testing::StaticAssertTypeEq<decltype(&Table::getTableIDExtension), QUOR_U16 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getMakerID), QUOR_U8 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getModelID), QUOR_U8 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getTransportStreamID), QUOR_U16 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getOriginalNetworkID), QUOR_U16 (Table::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Table::getServiceID), QUOR_U16 (Table::*)() const>();
    const bool isVersioned = std::is_base_of<Quor::TISDBTVersionedTable, Table>::value;
    EXPECT_TRUE(isVersioned);
    EXPECT_FALSE(std::is_copy_constructible<Table>::value);
}
