#include "sdtt/TDownloadContent.h"

#include "descriptors/TDownloadContentDescriptor.h"
#include "sdtt/TSDTTTable.h"
#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/ParserLines.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TDownloadContent;
using Quor::TISDBTTable;
using Quor::TSDTTTable;

namespace {

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

/// group | target_version | new_version | download_level, version_indicator | content_description_length | reserved |
/// schedule_description_length | schedule_time_shift_information
ByteVector fields(unsigned contentLength, unsigned scheduleLength) {
    return join({hex("1 200 208 1"), u16(contentLength << 4, 0x000F), u16(scheduleLength << 4, 0x0005)});
}

Parsed<TDownloadContent> parse(unsigned contentLength, unsigned scheduleLength, const ByteVector& rest) {
    return parseEntry<TDownloadContent>(join({fields(contentLength, scheduleLength), rest}));
}

void expectFailure(const Parsed<TDownloadContent>& parsed, QUOR_U16 error, const Lines& lines) {
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, error);
    EXPECT_EQ(parsed.lines, lines);
    EXPECT_EQ(parsed.length, PRESET_LENGTH);
}

/// A download content descriptor of 20 bytes.
ByteVector download(QUOR_U8 componentTag) {
    return join({hex("C9 12  00 00000000 00000000 00000000 000000"), {componentTag}, hex("00")});
}

const ByteVector FIRST_SLOT = hex("C079 123456 013000");
const ByteVector SECOND_SLOT = hex("C07A 000000 235959");

} // namespace

TEST(TDownloadContent, StartsEmpty) {
    const InDirtyMemory<TDownloadContent> content;
    EXPECT_EQ(content->getGroup(), 0);
    EXPECT_EQ(content->getTargetVersion(), 0);
    EXPECT_EQ(content->getNewVersion(), 0);
    EXPECT_EQ(content->getDownloadLevel(), 0);
    EXPECT_EQ(content->getVersionIndicator(), 0);
    EXPECT_EQ(content->getScheduleTimeShiftInfo(), 0);
    EXPECT_EQ(content->getDownloadContentDescriptor(), nullptr);
    EXPECT_EQ(content->getDescriptor(0xC9), nullptr);
    EXPECT_EQ(taken(content->getDescriptorTags()), std::vector<QUOR_U8>{});
    EXPECT_EQ(content->getScheduleInfoSize(), 0U);
    EXPECT_EQ(content->getScheduleInfo(0), nullptr);
}

TEST(TDownloadContent, ReadsItsFields) {
    const auto parsed = parseEntry<TDownloadContent>(hex("A BCD EF1 9 000 F 000 7"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 8U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getGroup(), 0xA);
    EXPECT_EQ(parsed->getTargetVersion(), 0xBCD);
    EXPECT_EQ(parsed->getNewVersion(), 0xEF1);
    EXPECT_EQ(parsed->getDownloadLevel(), 2);
    EXPECT_EQ(parsed->getVersionIndicator(), 1);
    EXPECT_EQ(parsed->getScheduleTimeShiftInfo(), 7);
    EXPECT_EQ(parsed->getScheduleInfoSize(), 0U);
    EXPECT_EQ(parsed->getDownloadContentDescriptor(), nullptr);
}

TEST(TDownloadContent, EveryBitBelongsToOneField) {
    const auto values = [](const ByteVector& wire) {
        const auto parsed = parseEntry<TDownloadContent>(wire);
        return std::vector<unsigned>{
            parsed->getGroup(),         parsed->getTargetVersion(),    parsed->getNewVersion(),
            parsed->getDownloadLevel(), parsed->getVersionIndicator(), parsed->getScheduleTimeShiftInfo()};
    };
    // The widths of the six fields in wire order; the last lies behind the two lengths.
    const std::vector<unsigned> widths = {4, 12, 12, 2, 2};
    unsigned end = 32;
    for (std::size_t field = 0; field < widths.size(); ++field) {
        end -= widths[field];
        for (unsigned bit = 0; bit < widths[field]; ++bit) {
            const QUOR_U32 word = 1U << (end + bit);
            std::vector<unsigned> expected(6, 0);
            expected[field] = 1U << bit;
            EXPECT_EQ(values(join({u16(word >> 16), u16(word & 0xFFFF), hex("00000000")})), expected);
        }
    }
    for (unsigned bit = 0; bit < 4; ++bit) {
        EXPECT_EQ(values(join({hex("00000000 0000"), u16(1U << bit)})),
                  (std::vector<unsigned>{0, 0, 0, 0, 0, 1U << bit}));
        EXPECT_EQ(values(join({hex("00000000"), u16(1U << bit), hex("0000")})),
                  std::vector<unsigned>(6, 0)); // reserved
    }
    EXPECT_EQ(values(hex("F FFF FFF F 000 F 000 F")), (std::vector<unsigned>{15, 4095, 4095, 3, 3, 15}));
}

// The schedule.

TEST(TDownloadContent, ScheduleIsInWireOrder) {
    const auto parsed = parseEntry<TDownloadContent>(join({hex("12 00 20 81  01 00 01 00"), FIRST_SLOT, SECOND_SLOT}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 24U);
    EXPECT_EQ(parsed.lines, Lines{});
    ASSERT_EQ(parsed->getScheduleInfoSize(), 2U);
    EXPECT_EQ(parsed->getScheduleInfo(0)->getStartTime(), 750515696);
    EXPECT_EQ(parsed->getScheduleInfo(0)->getDuration(), 77824U);
    EXPECT_EQ(parsed->getScheduleInfo(1)->getStartTime(), 750556800);
    EXPECT_EQ(parsed->getScheduleInfo(1)->getDuration(), 0x235959U);
    EXPECT_EQ(parsed->getScheduleInfo(2), nullptr);
    EXPECT_EQ(parsed->getDownloadContentDescriptor(), nullptr);
}

TEST(TDownloadContent, LengthsHaveTwelveBits) {
    const auto parsed = parse(0xFF8, 0xFF8, fill(0xFF8, 0));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 8U + 0xFF8U);
    EXPECT_EQ(parsed->getScheduleInfoSize(), 511U);
    const auto descriptors = parse(0xFFF, 0, descriptorRun(0x99, 0xFFF));
    ASSERT_NE(descriptors.object, nullptr);
    EXPECT_EQ(descriptors.length, 8U + 0xFFFU);
    const auto both = parse(0xFFF, 0x808, join({fill(0x808, 0), descriptorRun(0x99, 0x7F7)}));
    ASSERT_NE(both.object, nullptr);
    EXPECT_EQ(both->getScheduleInfoSize(), 257U);
}

TEST(TDownloadContent, BytesBehindTheContentAreIgnored) {
    const auto none = parse(0, 0, hex("FFFFFFFF"));
    ASSERT_NE(none.object, nullptr);
    EXPECT_EQ(none.length, 8U);
    const auto slot = parse(8, 8, join({FIRST_SLOT, hex("C9FF")}));
    ASSERT_NE(slot.object, nullptr);
    EXPECT_EQ(slot.length, 16U);
    EXPECT_EQ(slot.lines, Lines{});
    const auto described = parse(20, 0, join({download(1), hex("C9FF")}));
    ASSERT_NE(described.object, nullptr);
    EXPECT_EQ(described.length, 28U);
    EXPECT_EQ(described.lines, Lines{});
}

// The descriptors.

TEST(TDownloadContent, KeepsItsDownloadContentDescriptor) {
    const auto parsed = parse(20, 0, download(0x77));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 28U);
    EXPECT_EQ(parsed.lines, Lines{});
    const Quor::TDownloadContentDescriptor* const descriptor = parsed->getDownloadContentDescriptor();
    ASSERT_NE(descriptor, nullptr);
    EXPECT_EQ(descriptor->getComponentTag(), 0x77);
    EXPECT_EQ(descriptor->getData(), parsed.bytes.data() + 8);
    EXPECT_EQ(descriptor->getDataLength(), 20U);
    EXPECT_EQ(parsed->getDescriptor(201), descriptor);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{201});
}

TEST(TDownloadContent, HasNoDescriptorForOtherTags) {
    const auto parsed = parse(20, 0, download(0x77));
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(parsed->getDescriptor(static_cast<QUOR_U8>(tag)) != nullptr, tag == 0xC9) << tag;
    }
    const auto none = parse(0, 0, {});
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        EXPECT_EQ(none->getDescriptor(static_cast<QUOR_U8>(tag)), nullptr) << tag;
    }
    EXPECT_EQ(taken(none->getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TDownloadContent, DescriptorTagsAreANewListForTheCaller) {
    const auto parsed = parse(20, 0, download(0x77));
    const std::unique_ptr<std::list<QUOR_U8>> first(parsed->getDescriptorTags());
    const std::unique_ptr<std::list<QUOR_U8>> second(parsed->getDescriptorTags());
    EXPECT_NE(first, second);
    EXPECT_EQ(*first, *second);
}

TEST(TDownloadContent, DescriptorsFollowTheSchedule) {
    const auto parsed =
        parse(16 + 4 + 20 + 2, 16, join({FIRST_SLOT, SECOND_SLOT, hex("FB 02 1000"), download(0x77), hex("42 00")}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 50U);
    EXPECT_EQ(parsed.lines, (Lines{unknown("FB"), unknown("42")}));
    EXPECT_EQ(parsed->getScheduleInfoSize(), 2U);
    ASSERT_NE(parsed->getDownloadContentDescriptor(), nullptr);
    EXPECT_EQ(parsed->getDownloadContentDescriptor()->getComponentTag(), 0x77);
    EXPECT_EQ(parsed->getDownloadContentDescriptor()->getData(), parsed.bytes.data() + 28);
}

TEST(TDownloadContent, UnknownDescriptorIsLoggedAndSkipped) {
    const auto parsed = parse(20, 8, join({FIRST_SLOT, hex("99 0A"), fill(10, 0)}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 28U);
    EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TDownloadContent::parse: Unknown descriptor: 0x99. Ignored!"});
    EXPECT_EQ(parsed->getScheduleInfoSize(), 1U);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{});
}

TEST(TDownloadContent, EveryOtherTagIsUnknown) {
    for (unsigned tag = 0; tag <= 0xFF; ++tag) {
        if (tag == 0xC9) {
            continue;
        }
        const auto parsed = parse(2, 0, {static_cast<QUOR_U8>(tag), 0});
        ASSERT_NE(parsed.object, nullptr);
        char line[80];
        std::snprintf(line, sizeof line, "ISDBTUtils: TDownloadContent::parse: Unknown descriptor: 0x%02X. Ignored!",
                      tag);
        EXPECT_EQ(parsed.lines, Lines{line});
        EXPECT_EQ(parsed.length, 10U);
    }
}

TEST(TDownloadContent, LastOfTwoDescriptorsIsKept) {
    const auto parsed = parse(60, 0, join({download(1), download(2), download(3)}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 68U);
    EXPECT_EQ(parsed->getDownloadContentDescriptor()->getComponentTag(), 3);
    EXPECT_EQ(taken(parsed->getDescriptorTags()), std::vector<QUOR_U8>{0xC9});
}

TEST(TDownloadContent, StaysReadableWhenTheCallersBytesAreGone) {
    std::unique_ptr<TDownloadContent> content;
    {
        const HeapBytes bytes(join({fields(28, 8), FIRST_SLOT, download(0x77)}));
        content.reset(TDownloadContent::parse(bytes.data(), bytes.size(), 1, nullptr, nullptr));
    }
    ASSERT_NE(content, nullptr);
    EXPECT_EQ(content->getTargetVersion(), 0x200);
    EXPECT_EQ(content->getScheduleInfo(0)->getDuration(), 77824U);
    EXPECT_EQ(content->getDownloadContentDescriptor()->getComponentTag(), 0x77);
}

TEST(TDownloadContent, SwitchMakesNoDifference) {
    const HeapBytes bytes(join({fields(20, 0), download(0x77)}));
    for (const int parseDescriptors : {0, 1, -1}) {
        QUOR_U32 length = 0;
        QUOR_U16 error = PRESET_ERROR;
        const std::unique_ptr<TDownloadContent> content(
            TDownloadContent::parse(bytes.data(), bytes.size(), parseDescriptors, &length, &error));
        ASSERT_NE(content, nullptr);
        EXPECT_EQ(length, 28U);
        EXPECT_EQ(error, TISDBTTable::ERROR_OK);
        EXPECT_NE(content->getDownloadContentDescriptor(), nullptr);
    }
}

// What fails.

TEST(TDownloadContent, FewerThanEightBytesFail) {
    const ByteVector wire = fields(0, 0);
    for (unsigned size = 0; size < 8; ++size) {
        const ByteVector prefix(wire.begin(), wire.begin() + static_cast<std::ptrdiff_t>(size));
        expectFailure(parseEntry<TDownloadContent>(prefix), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooShort(size)});
    }
}

TEST(TDownloadContent, ContentLengthBeyondTheBytesFails) {
    expectFailure(parse(1, 0, {}), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(1, 0)});
    expectFailure(parse(17, 16, join({FIRST_SLOT, SECOND_SLOT})), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {tooLong(17, 16)});
    expectFailure(parse(0xFFF, 0, fill(0xFFE, 0)), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(4095, 4094)});
}

TEST(TDownloadContent, ContentLengthSpeaksBeforeTheSchedule) {
    expectFailure(parse(9, 12, hex("00000000 00000000")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(9, 8)});
}

TEST(TDownloadContent, ContentLengthSpeaksBeforeTheDescriptors) {
    expectFailure(parse(20, 0, hex("99 00  C9 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(20, 4)});
}

TEST(TDownloadContent, ScheduleThatIsNoMultipleOfEightFails) {
    expectFailure(parse(12, 12, fill(12, 0)), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooShort(12)});
    expectFailure(parse(1, 1, fill(1, 0)), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooShort(1)});
    expectFailure(parse(15, 15, fill(15, 0)), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooShort(15)});
}

TEST(TDownloadContent, ScheduleThatIsNoMultipleOfEightFailsInAnyBuffer) {
    // Its count never comes to 0, however often it passes through its 16 bits.
    for (unsigned scheduleLength : {1U, 2U, 4U, 7U, 12U, 4095U}) {
        const auto parsed = parse(16, scheduleLength, fill(200000, 0));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{tooShort(scheduleLength)});
    }
}

TEST(TDownloadContent, ScheduleBeyondTheBytesFails) {
    expectFailure(parse(0, 8, {}), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(8, 0)});
    expectFailure(parse(0, 8, fill(7, 0)), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(8, 7)});
    expectFailure(parse(8, 16, FIRST_SLOT), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(16, 8)});
    expectFailure(parse(8, 0xFF8, FIRST_SLOT), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(4088, 8)});
}

TEST(TDownloadContent, DescriptorBeyondTheBytesFails) {
    expectFailure(parse(6, 0, hex("99 05 AABBCCDD")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(5, 4)});
    expectFailure(parse(2, 0, hex("99 01")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(1, 0)});
    expectFailure(parse(2, 0, hex("C9 12")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(18, 0)});
    expectFailure(parse(12, 8, join({FIRST_SLOT, hex("99 FF AABB")})), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {tooLong(255, 2)});
    expectFailure(parse(8, 0, hex("98 02 AABB  99 03 AABB")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("98"), tooLong(3, 2)});
    EXPECT_NE(parse(6, 0, hex("99 04 AABBCCDD")).object, nullptr);
}

TEST(TDownloadContent, DescriptorHeaderBeyondTheBytesFails) {
    expectFailure(parse(1, 0, hex("99")), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(2, 1)});
    expectFailure(parse(5, 0, hex("99 02 AABB  99")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("99"), tooLong(2, 1)});
    expectFailure(parse(9, 8, join({FIRST_SLOT, hex("99")})), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(2, 1)});
}

TEST(TDownloadContent, DescriptorBeyondTheContentLengthMustBeFollowedUpToTheWrap) {
    expectFailure(parse(4, 0, hex("99 04 AABBCCDD")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("99"), tooLong(2, 0)});
    expectFailure(parse(4, 0, hex("99 04 AABBCCDD  98 00  97 01")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("99"), unknown("98"), tooLong(1, 0)});
    expectFailure(parse(1, 0, hex("99 00  98 00")), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {unknown("99"), unknown("98"), tooLong(2, 0)});
}

TEST(TDownloadContent, WrappedContentLengthIsFollowedInsideALongerBuffer) {
    // The first descriptor passes the content's end; 64 KiB later the count of 16 bits comes to 0.
    const auto parsed = parse(4, 0, descriptorRun(0x99, 65536 + 4));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 8U + 65536U + 4U);
    EXPECT_EQ(parsed.lines, Lines(256, unknown("99")));
    const auto described = parse(4, 0, join({descriptorRun(0x99, 65536 + 4 - 20), download(0x77), hex("FFFF")}));
    ASSERT_NE(described.object, nullptr);
    EXPECT_EQ(described.length, 8U + 65536U + 4U);
    EXPECT_EQ(described->getDownloadContentDescriptor()->getComponentTag(), 0x77);
    ByteVector cut = descriptorRun(0x99, 65536 + 4);
    cut.pop_back();
    EXPECT_EQ(parse(4, 0, cut).error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
}

TEST(TDownloadContent, ScheduleLongerThanTheContentIsReadAndTheCountWraps) {
    // 8 bytes of content with 16 of schedule leave 8 - 16 = 65528 bytes of descriptors.
    const auto parsed = parse(8, 16, join({FIRST_SLOT, SECOND_SLOT, descriptorRun(0x99, 65528)}));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 24U + 65528U);
    EXPECT_EQ(parsed->getScheduleInfoSize(), 2U);
    expectFailure(parse(8, 16, join({FIRST_SLOT, SECOND_SLOT})), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {tooLong(2, 0)});
    expectFailure(parse(8, 16, join({FIRST_SLOT, SECOND_SLOT, hex("99 01")})), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {tooLong(1, 0)});
    expectFailure(parse(0, 8, FIRST_SLOT), TISDBTTable::ERROR_INVALID_DATA_LENGTH, {tooLong(2, 0)});
}

TEST(TDownloadContent, CodeOfAFailingDescriptorStands) {
    expectFailure(parse(19, 0, join({hex("C9 11"), fill(17, 0)})), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                  {"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: (2) Longer data length is required: 19 < 20. "
                   "Aborting!"});
    expectFailure(parse(20, 0, hex("C9 12  00 00000000 00000000 00000000 000000 00 01")),
                  TISDBTTable::ERROR_INVALID_STRING,
                  {"ISDBTUtils: TDownloadContentDescriptor:: parse: ERROR: parsing Private Data. Aborting!"});
    expectFailure(parse(23, 0, hex("C9 15  20 00000000 00000000 00000000 000000 00  0000 0000")),
                  TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                  {"ISDBTUtils: TCompatibilityDescriptor::parse: Item length not valid: 2. Aborting!"});
    expectFailure(parse(22, 0, hex("C9 14  10 00000000 00000000 00000000 000000 00  0001 00")),
                  TISDBTTable::ERROR_INVALID_ITEM,
                  {"ISDBTUtils: TDownloadContentDescriptorItem::parse: Item length not valid: 1. Aborting!",
                   "ISDBTUtils: TDownloadContentDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TDownloadContent, FailingDescriptorBehindAGoodOneFailsTheContent) {
    const auto parsed = parse(8 + 20 + 2, 8, join({FIRST_SLOT, download(1), hex("C9 00")}));
    EXPECT_EQ(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
}

TEST(TDownloadContent, DescriptorDoesNotReadWhatLiesBehindIt) {
    // The private data would lie behind the descriptor, inside the content.
    expectFailure(parse(22, 0, hex("C9 12  00 00000000 00000000 00000000 000000 00 02  99 00")),
                  TISDBTTable::ERROR_INVALID_STRING,
                  {"ISDBTUtils: TDownloadContentDescriptor:: parse: ERROR: parsing Private Data. Aborting!"});
}

TEST(TDownloadContent, OutParametersMayBeNull) {
    const HeapBytes good(join({fields(28, 8), FIRST_SLOT, download(0x77)}));
    const std::unique_ptr<TDownloadContent> content(
        TDownloadContent::parse(good.data(), good.size(), 1, nullptr, nullptr));
    EXPECT_NE(content, nullptr);
    EXPECT_EQ(TDownloadContent::parse(good.data(), good.size() - 1, 1, nullptr, nullptr), nullptr);
    EXPECT_EQ(TDownloadContent::parse(good.data(), 7, 1, nullptr, nullptr), nullptr);
    EXPECT_EQ(TDownloadContent::parse(nullptr, 0, 1, nullptr, nullptr), nullptr);
    const HeapBytes empty(fields(0, 0));
    const std::unique_ptr<TDownloadContent> bare(TDownloadContent::parse(empty.data(), 8, 1, nullptr, nullptr));
    EXPECT_NE(bare, nullptr);
    for (const ByteVector& rest : {hex("99 01"), hex("C9 00"), fill(1, 0)}) {
        const HeapBytes bad(join({fields(static_cast<unsigned>(rest.size()), 0), rest}));
        EXPECT_EQ(TDownloadContent::parse(bad.data(), bad.size(), 1, nullptr, nullptr), nullptr);
    }
    const HeapBytes badSchedule(join({fields(4, 4), fill(4, 0)}));
    EXPECT_EQ(TDownloadContent::parse(badSchedule.data(), badSchedule.size(), 1, nullptr, nullptr), nullptr);
}

TEST(TDownloadContent, LogsAtLevelFourUnderTheTagOfTheParsers) {
    const HeapBytes bytes(join({fields(4, 0), hex("99 00  98 01")}));
    const LogCapture log;
    TDownloadContent::parse(bytes.data(), bytes.size(), 1, nullptr, nullptr);
    TDownloadContent::parse(bytes.data(), 7, 1, nullptr, nullptr);
    ASSERT_EQ(log.records().size(), 3U);
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4);
        EXPECT_EQ(line.tag, "ISDBTUtils");
    }
}

TEST(TDownloadContent, EveryPrefixAndEveryByteChangeSurvives) {
    const ByteVector good =
        join({fields(8 + 20 + 4, 8), FIRST_SLOT, hex("99 02 AABB"), download(0x77), FIRST_SLOT, SECOND_SLOT});
    ASSERT_NE(parseEntry<TDownloadContent>(good).object, nullptr);
    for (const auto& damages : {everyPrefix(good), everyByteChange(good)}) {
        for (const Damaged& damaged : damages) {
            SCOPED_TRACE(damaged.how);
            const auto parsed = parseEntry<TDownloadContent>(damaged.wire);
            if (parsed.object != nullptr) {
                EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
                EXPECT_GE(parsed.length, 8U);
                EXPECT_LE(parsed.length, damaged.wire.size());
            } else {
                EXPECT_NE(parsed.error, PRESET_ERROR);
                EXPECT_FALSE(parsed.lines.empty());
            }
        }
    }
}

TEST(TDownloadContent, DoesNotOwnItsParent) {
    int deleted = 0;
    QUOR_U8 nothing = 0;
    const auto table = std::make_unique<Counted<TSDTTTable>>(deleted, &nothing, QUOR_U32{0});
    {
        TDownloadContent content;
        content.setParentSDTTTable(table.get());
        content.setParentSDTTTable(nullptr);
        content.setParentSDTTTable(table.get());
    }
    EXPECT_EQ(deleted, 0);
}

TEST(TDownloadContent, HasNoBaseButAVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TDownloadContent> content(new Counted<TDownloadContent>(deleted));
    content.reset();
    EXPECT_EQ(deleted, 1);
    const bool holdsData = std::is_base_of<Quor::TISDBTDataHolder, TDownloadContent>::value;
    EXPECT_FALSE(holdsData);
    EXPECT_FALSE(std::is_copy_constructible<TDownloadContent>::value);
}

TEST(TDownloadContent, HasTheSignaturesThatReceiversCall) {
    using Content = TDownloadContent;
    TDownloadContent* (*const parse)(QUOR_U8*, QUOR_U32, int, QUOR_U32*, QUOR_U16*) = &Content::parse;
    EXPECT_NE(parse, nullptr);
    testing::StaticAssertTypeEq<decltype(&Content::setParentSDTTTable), void (Content::*)(TSDTTTable*)>();
    testing::StaticAssertTypeEq<decltype(&Content::getGroup), QUOR_U8 (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getTargetVersion), QUOR_U16 (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getNewVersion), QUOR_U16 (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getDownloadLevel), QUOR_U8 (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getVersionIndicator), QUOR_U8 (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getScheduleTimeShiftInfo), QUOR_U16 (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getDownloadContentDescriptor),
                                Quor::TDownloadContentDescriptor* (Content::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Content::getDescriptorTags), std::list<QUOR_U8>* (Content::*)() const>();
}
