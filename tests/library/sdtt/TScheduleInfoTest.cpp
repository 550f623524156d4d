#include "sdtt/TScheduleInfo.h"

#include "TISDBTDataHolder.h"
#include "support/DirtyMemory.h"
#include "support/Lifetime.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTTable;
using Quor::TScheduleInfo;

namespace {

constexpr QUOR_S32 OCTOBER_13_1993 = 750470400; // MJD 0xC079

QUOR_S32 startTime(const std::string& dateAndTime) {
    return parseBytes<TScheduleInfo>(hex(dateAndTime + "000000"))->getStartTime();
}

QUOR_U32 duration(const std::string& digits) {
    return parseBytes<TScheduleInfo>(hex("C079 000000" + digits))->getDuration();
}

} // namespace

TEST(TScheduleInfo, StartsAtZero) {
    const InDirtyMemory<TScheduleInfo> slot;
    EXPECT_EQ(slot->getStartTime(), 0);
    EXPECT_EQ(slot->getDuration(), 0U);
}

TEST(TScheduleInfo, ReadsStartTimeAndDuration) {
    const auto parsed = parseBytes<TScheduleInfo>(hex("C079 123456 013000"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 8U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getStartTime(), 750515696); // 45296 seconds into the day
    EXPECT_EQ(parsed->getDuration(), 77824U);
}

TEST(TScheduleInfo, StartTimeAddsHoursMinutesAndSecondsToTheDate) {
    EXPECT_EQ(startTime("C079 000000"), OCTOBER_13_1993);
    EXPECT_EQ(startTime("C079 010000"), OCTOBER_13_1993 + 3600);
    EXPECT_EQ(startTime("C079 100000"), OCTOBER_13_1993 + 36000);
    EXPECT_EQ(startTime("C079 000100"), OCTOBER_13_1993 + 60);
    EXPECT_EQ(startTime("C079 001000"), OCTOBER_13_1993 + 600);
    EXPECT_EQ(startTime("C079 000001"), OCTOBER_13_1993 + 1);
    EXPECT_EQ(startTime("C079 000010"), OCTOBER_13_1993 + 10);
    EXPECT_EQ(startTime("C079 235959"), OCTOBER_13_1993 + 86399);
    EXPECT_EQ(startTime("C07A 000000"), OCTOBER_13_1993 + 86400);
    EXPECT_EQ(startTime("C179 000000"), OCTOBER_13_1993 + 256 * 86400);
}

TEST(TScheduleInfo, DigitsAboveNineCountOn) {
    EXPECT_EQ(startTime("C079 AB0000"), OCTOBER_13_1993 + 111 * 3600);
    EXPECT_EQ(startTime("C079 00FF00"), OCTOBER_13_1993 + 165 * 60);
    EXPECT_EQ(startTime("C079 0000FF"), OCTOBER_13_1993 + 165);
}

TEST(TScheduleInfo, DatesBefore1970LeaveTheTimeOfDay) {
    EXPECT_EQ(startTime("0000 123456"), 45296);
    EXPECT_EQ(startTime("9E8A 123456"), 45296);
    EXPECT_EQ(startTime("9E8B 123456"), 45296); // MJD 40587, 1970-01-01
    EXPECT_EQ(startTime("9E8C 123456"), 86400 + 45296);
}

TEST(TScheduleInfo, StartTimeWrapsIn2038) {
    EXPECT_EQ(startTime("FFA2 031407"), 2147483647);
    EXPECT_EQ(startTime("FFA2 031408"), -2147483647 - 1);
    EXPECT_EQ(startTime("FFA2 235959"), -2147408897);
    EXPECT_EQ(startTime("FFFF 000000"), -2139460096);
    EXPECT_EQ(startTime("FFFF 123456"), -2139460096 + 45296);
}

TEST(TScheduleInfo, DurationIsTheRawNumberOf24Bits) {
    EXPECT_EQ(duration("000000"), 0U);
    EXPECT_EQ(duration("000001"), 1U);
    EXPECT_EQ(duration("000100"), 256U);
    EXPECT_EQ(duration("010000"), 65536U);
    EXPECT_EQ(duration("235959"), 0x235959U);
    EXPECT_EQ(duration("FFFFFF"), 16777215U);
}

TEST(TScheduleInfo, FewerThanEightBytesFail) {
    const ByteVector slot = hex("C079 123456 013000");
    for (std::ptrdiff_t size = 0; size < 8; ++size) {
        const auto parsed = parseBytes<TScheduleInfo>(ByteVector(slot.begin(), slot.begin() + size));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TScheduleInfo::parse: Item length not valid: " +
                                      std::to_string(size) + ". Aborting!"});
    }
}

TEST(TScheduleInfo, BytesBehindTheSlotAreIgnored) {
    const auto parsed = parseBytes<TScheduleInfo>(hex("C079 123456 013000  FFFFFF"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.length, 8U);
    EXPECT_EQ(parsed->getDuration(), 77824U);
}

TEST(TScheduleInfo, OutParametersMayBeNull) {
    const HeapBytes bytes(hex("C079 123456 013000"));
    const std::unique_ptr<TScheduleInfo> slot(TScheduleInfo::parse(bytes.data(), 8, nullptr, nullptr));
    ASSERT_NE(slot, nullptr);
    EXPECT_EQ(slot->getStartTime(), 750515696);
    EXPECT_EQ(TScheduleInfo::parse(bytes.data(), 7, nullptr, nullptr), nullptr);
}

TEST(TScheduleInfo, LogsAtLevelFourUnderTheTagOfTheParsers) {
    const LogCapture log;
    EXPECT_EQ(TScheduleInfo::parse(nullptr, 0, nullptr, nullptr), nullptr);
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUtils");
    EXPECT_EQ(log.records()[0].text, "ISDBTUtils: TScheduleInfo::parse: Item length not valid: 0. Aborting!");
}

TEST(TScheduleInfo, HasNoBaseButAVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TScheduleInfo> slot(new Counted<TScheduleInfo>(deleted));
    slot.reset();
    EXPECT_EQ(deleted, 1);
    const bool holdsData = std::is_base_of<Quor::TISDBTDataHolder, TScheduleInfo>::value;
    EXPECT_FALSE(holdsData);
}

TEST(TScheduleInfo, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TScheduleInfo::parse),
                                TScheduleInfo* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&TScheduleInfo::getStartTime), QUOR_S32 (TScheduleInfo::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TScheduleInfo::getDuration), QUOR_U32 (TScheduleInfo::*)() const>();
}
