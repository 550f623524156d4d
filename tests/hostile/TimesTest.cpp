// Dates out of any range and BCD digits above 9 make a wrong time, never a fault.

#include "descriptors/TGeneralEventDescriptor.h"
#include "descriptors/TLocalTimeOffsetDescriptorItem.h"
#include "sdtt/TScheduleInfo.h"
#include "support/Parse.h"
#include "tot/TTOTTable.h"

#include <gtest/gtest.h>

namespace {

struct Time {
    std::string wire; ///< MJD and six BCD digits
    QUOR_S32 seconds; ///< since 1970
};

// A digit above 9 counts with its value; the seconds wrap in 32 bits.
const std::vector<Time> TIMES{
    {"0000 000000", 0},           {"0000 235959", 86399},       {"0000 FFFFFF", 604065},
    {"0000 AAAAAA", 402710},      {"9E8B 000000", 0},           {"9E8C 000000", 86400},
    {"9E8B 9A0F01", 360901},      {"FFFF 000000", -2139460096}, {"FFFF FFFFFF", -2138856031},
    {"FFFF 235959", -2139373697}, {"FFFF 240000", -2139373696},
};

} // namespace

TEST(Times, OfATot) {
    for (const Time& time : TIMES) {
        SCOPED_TRACE(time.wire);
        const auto tot = parseSection<Quor::TTOTTable>(shortSection(0x73, join({hex(time.wire), hex("F000")})));
        ASSERT_NE(tot.object, nullptr);
        EXPECT_EQ(tot.error, Quor::TISDBTTable::ERROR_OK);
        EXPECT_EQ(tot->getUnixTime(), time.seconds);
    }
}

TEST(Times, OfADownloadSchedule) {
    for (const Time& time : TIMES) {
        SCOPED_TRACE(time.wire);
        const auto slot = parseBytes<Quor::TScheduleInfo>(join({hex(time.wire), hex("FA9F9A")}));
        ASSERT_NE(slot.object, nullptr);
        EXPECT_EQ(slot->getStartTime(), time.seconds);
        EXPECT_EQ(slot->getDuration(), 0xFA9F9AU);
    }
}

TEST(Times, OfAGeneralEvent) {
    for (const Time& time : TIMES) {
        SCOPED_TRACE(time.wire);
        const auto event = parseBytes<Quor::TGeneralEventDescriptor>(
            descriptor(0x04, join({hex("ABCD 01"), hex(time.wire), fill(8, 0x00)})));
        ASSERT_NE(event.object, nullptr);
        EXPECT_EQ(event->getEventMsgJSTTime(), static_cast<QUOR_U32>(time.seconds));
    }
}

TEST(Times, OfALocalTimeOffset) {
    const auto offset = [](const std::string& digits) {
        const auto item = parseBytes<Quor::TLocalTimeOffsetDescriptorItem>(
            hex("425241 0C" + digits + "FFFF FFFFFF FFFF")); // the change lies at a time that is none
        return item.object == nullptr ? -1 : int{item->getLocalTimeOffset()};
    };
    EXPECT_EQ(offset("0000"), 0);
    EXPECT_EQ(offset("0300"), 10800);
    EXPECT_EQ(offset("0F0F"), 54900);
    // Hours and minutes of (0xF0 * 10 + 15), in the 16 bits of the offset.
    EXPECT_EQ(offset("FFFF"), 2415 * 3660 % 65536);
    EXPECT_EQ(offset("9A9A"), 1450 * 3660 % 65536);
}
