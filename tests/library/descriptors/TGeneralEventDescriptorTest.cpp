#include "descriptors/TGeneralEventDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TGeneralEventDescriptor;

namespace {

/// A descriptor of event group 0xAF0 with these bytes from the time mode on.
ByteVector event(const std::string& digits) {
    return descriptor(0x04, join({hex("AB CD"), hex(digits)}));
}

template <class Pointer> void expectNoTime(const Pointer& event) {
    EXPECT_EQ(event->getEventMsgJSTTime(), 0U);
    EXPECT_EQ(event->getEventMsgNPTH(), 0);
    EXPECT_EQ(event->getEventMsgNPTL(), 0U);
    EXPECT_EQ(event->getEventMsgRelativeTimeH(), 0);
    EXPECT_EQ(event->getEventMsgRelativeTimeL(), 0U);
}

} // namespace

TEST(TGeneralEventDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TGeneralEventDescriptor::TIME_MODE_NONE, 0);
    EXPECT_CONSTANT(QUOR_U8, TGeneralEventDescriptor::TIME_MODE_MJD_UTC, 1);
    EXPECT_CONSTANT(QUOR_U8, TGeneralEventDescriptor::TIME_MODE_NPT, 2);
    EXPECT_CONSTANT(QUOR_U8, TGeneralEventDescriptor::TIME_MODE_EVENT_RELATIVE, 3);
    EXPECT_CONSTANT(QUOR_U8, TGeneralEventDescriptor::TIME_MODE_MJD_UTC_2, 5);
}

TEST(TGeneralEventDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U16, TGeneralEventDescriptor, getEventMsgGroupID);
    EXPECT_GETTER(QUOR_U8, TGeneralEventDescriptor, getTimeMode);
    EXPECT_GETTER(QUOR_U32, TGeneralEventDescriptor, getEventMsgJSTTime);
    EXPECT_GETTER(QUOR_U8, TGeneralEventDescriptor, getEventMsgNPTH);
    EXPECT_GETTER(QUOR_U32, TGeneralEventDescriptor, getEventMsgNPTL);
    EXPECT_GETTER(QUOR_U8, TGeneralEventDescriptor, getEventMsgRelativeTimeH);
    EXPECT_GETTER(QUOR_U32, TGeneralEventDescriptor, getEventMsgRelativeTimeL);
    EXPECT_GETTER(QUOR_U8, TGeneralEventDescriptor, getEventMsgType);
    EXPECT_GETTER(QUOR_U16, TGeneralEventDescriptor, getEventMsgID);
    EXPECT_GETTER(QUOR_U8, TGeneralEventDescriptor, getPrivateDataSize);
    EXPECT_GETTER(QUOR_U8*, TGeneralEventDescriptor, getPrivateData);
    EXPECT_NE(expectDescriptor<TGeneralEventDescriptor>(join({hex("04 10"), fill(16, 0)}), 16).object, nullptr);
}

TEST(TGeneralEventDescriptor, StartsEmpty) {
    ByteVector bytes = event("02  FF 11223344  05 0607  0102030405");
    const InDirtyMemory<TGeneralEventDescriptor> descriptor(bytes.data(), static_cast<QUOR_U32>(bytes.size()));
    EXPECT_EQ(descriptor->getDescriptorTag(), 4);
    EXPECT_EQ(descriptor->getEventMsgGroupID(), 0);
    EXPECT_EQ(descriptor->getTimeMode(), 0);
    expectNoTime(descriptor);
    EXPECT_EQ(descriptor->getEventMsgType(), 0);
    EXPECT_EQ(descriptor->getEventMsgID(), 0);
    EXPECT_EQ(descriptor->getPrivateDataSize(), 0);
    EXPECT_EQ(descriptor->getPrivateData(), nullptr);
}

TEST(TGeneralEventDescriptor, FiresAtANormalPlayTime) {
    const auto parsed = expectDescriptor<TGeneralEventDescriptor>(event("02  FF 11223344  05 0607  0102030405"), 16);
    EXPECT_EQ(parsed->getEventMsgGroupID(), 0xAF0);
    EXPECT_EQ(parsed->getTimeMode(), TGeneralEventDescriptor::TIME_MODE_NPT);
    EXPECT_EQ(parsed->getEventMsgNPTH(), 1);
    EXPECT_EQ(parsed->getEventMsgNPTL(), 0x11223344U);
    EXPECT_EQ(parsed->getEventMsgJSTTime(), 0U);
    EXPECT_EQ(parsed->getEventMsgRelativeTimeH(), 0);
    EXPECT_EQ(parsed->getEventMsgRelativeTimeL(), 0U);
    EXPECT_EQ(parsed->getEventMsgType(), 5);
    EXPECT_EQ(parsed->getEventMsgID(), 0x0607);
    ASSERT_EQ(parsed->getPrivateDataSize(), 5);
    EXPECT_EQ(elements(parsed->getPrivateData(), 5), hex("0102030405"));
}

TEST(TGeneralEventDescriptor, FiresAfterARelativeTime) {
    const auto parsed = expectDescriptor<TGeneralEventDescriptor>(event("03  FA 11223344  05 0607  0102030405"), 16);
    EXPECT_EQ(parsed->getTimeMode(), TGeneralEventDescriptor::TIME_MODE_EVENT_RELATIVE);
    EXPECT_EQ(parsed->getEventMsgRelativeTimeH(), 0x0A);
    EXPECT_EQ(parsed->getEventMsgRelativeTimeL(), 0x11223344U);
    EXPECT_EQ(parsed->getEventMsgJSTTime(), 0U);
    EXPECT_EQ(parsed->getEventMsgNPTH(), 0);
    EXPECT_EQ(parsed->getEventMsgNPTL(), 0U);
    EXPECT_EQ(parsed->getEventMsgType(), 5);
    EXPECT_EQ(parsed->getEventMsgID(), 0x0607);
    ASSERT_EQ(parsed->getPrivateDataSize(), 5);
    EXPECT_EQ(elements(parsed->getPrivateData(), 5), hex("0102030405"));
}

TEST(TGeneralEventDescriptor, FiresAtOnce) {
    const auto parsed = expectDescriptor<TGeneralEventDescriptor>(event("00  FF 11223344  05 0607  0102030405"), 16);
    EXPECT_EQ(parsed->getTimeMode(), TGeneralEventDescriptor::TIME_MODE_NONE);
    expectNoTime(parsed.object);
    EXPECT_EQ(parsed->getEventMsgType(), 5);
    EXPECT_EQ(parsed->getEventMsgID(), 0x0607);
    ASSERT_EQ(parsed->getPrivateDataSize(), 5);
    EXPECT_EQ(elements(parsed->getPrivateData(), 5), hex("0102030405"));
}

TEST(TGeneralEventDescriptor, FiresAtATimeOfDay) {
    // 1993-10-13 12:34:56; type and id lie five bytes behind where the other modes have them.
    for (const char* const mode : {"01", "05"}) {
        const auto parsed = expectDescriptor<TGeneralEventDescriptor>(
            event(mode + std::string("  C079 12 34 56  0102030405  66 7788")), 16);
        EXPECT_EQ(parsed->getEventMsgJSTTime(), 750515696U);
        EXPECT_EQ(parsed->getEventMsgNPTH(), 0);
        EXPECT_EQ(parsed->getEventMsgNPTL(), 0U);
        EXPECT_EQ(parsed->getEventMsgRelativeTimeH(), 0);
        EXPECT_EQ(parsed->getEventMsgRelativeTimeL(), 0U);
        EXPECT_EQ(parsed->getEventMsgType(), 0x66);
        EXPECT_EQ(parsed->getEventMsgID(), 0x7788);
        EXPECT_EQ(parsed->getPrivateDataSize(), 0);
        EXPECT_EQ(parsed->getPrivateData(), nullptr);
    }
    EXPECT_EQ(
        expectDescriptor<TGeneralEventDescriptor>(event("01  C079 12 34 56  0102030405  66 7788"), 16)->getTimeMode(),
        1);
    EXPECT_EQ(
        expectDescriptor<TGeneralEventDescriptor>(event("05  C079 12 34 56  0102030405  66 7788"), 16)->getTimeMode(),
        5);
}

TEST(TGeneralEventDescriptor, PrivateDataOfATimeOfDayLiesBehindTheId) {
    const auto parsed =
        expectDescriptor<TGeneralEventDescriptor>(event("01  C079 12 34 56  0102030405  66 7788  99 AA"), 18);
    EXPECT_EQ(parsed->getEventMsgID(), 0x7788);
    ASSERT_EQ(parsed->getPrivateDataSize(), 2);
    EXPECT_EQ(elements(parsed->getPrivateData(), 2), hex("99 AA"));
}

TEST(TGeneralEventDescriptor, TimesOfDayAreSecondsOfTheUnixEpoch) {
    struct Expected {
        const char* time;
        QUOR_U32 seconds;
    };
    for (const Expected& expected : std::vector<Expected>{
             {"9E8B 01 02 03", 3723},        // 1970-01-01: only the time of day
             {"0000 01 00 00", 3600},        // before the epoch: likewise
             {"9E8C 00 00 00", 86400},       // 1970-01-02
             {"9E8C 00 00 59", 86459},       // seconds
             {"9E8C 00 59 00", 89940},       // minutes
             {"9E8C 23 00 00", 169200},      // hours
             {"9E8C FF FF FF", 690465},      // 165 hours, 165 minutes, 165 seconds
             {"FFFF 23 59 59", 2155593599U}, // 2038-04-22, beyond 31 bits
         }) {
        SCOPED_TRACE(expected.time);
        const auto parsed = expectDescriptor<TGeneralEventDescriptor>(
            event("01" + std::string(expected.time) + "0000000000 00 0000"), 16);
        EXPECT_EQ(parsed->getEventMsgJSTTime(), expected.seconds);
    }
}

TEST(TGeneralEventDescriptor, TheGroupMixesTwoNibbles) {
    struct Expected {
        QUOR_U8 high;
        QUOR_U8 low;
        QUOR_U16 group;
    };
    for (const Expected& expected : std::vector<Expected>{
             {0xAB, 0xCD, 0xAF0}, // (0xAB << 4) | 0xC0
             {0x00, 0x00, 0x000},
             {0xFF, 0xFF, 0xFF0},
             {0x01, 0x00, 0x010},
             {0x02, 0x00, 0x020},
             {0x04, 0x00, 0x040},
             {0x08, 0x00, 0x080},
             {0x10, 0x00, 0x100},
             {0x20, 0x00, 0x200},
             {0x40, 0x00, 0x400},
             {0x80, 0x00, 0x800},
             {0x00, 0x0F, 0x000}, // the low nibble is reserved
             {0x00, 0x10, 0x010},
             {0x00, 0x20, 0x020},
             {0x00, 0x40, 0x040},
             {0x00, 0x80, 0x080},
             {0x12, 0x34, 0x130},
             {0xF0, 0x0F, 0xF00},
         }) {
        SCOPED_TRACE(expected.group);
        const auto parsed = expectDescriptor<TGeneralEventDescriptor>(
            join({{0x04, 0x10, expected.high, expected.low}, fill(14, 0)}), 16);
        EXPECT_EQ(parsed->getEventMsgGroupID(), expected.group);
    }
}

TEST(TGeneralEventDescriptor, OtherTimeModesHaveNoTime) {
    for (unsigned mode = 0; mode < 0x100; ++mode) {
        if (mode == 1 || mode == 2 || mode == 3 || mode == 5) {
            continue;
        }
        SCOPED_TRACE(mode);
        const auto parsed = expectDescriptor<TGeneralEventDescriptor>(
            join({hex("04 10  0000"), {static_cast<QUOR_U8>(mode)}, hex("FF FFFFFFFF  05 0607  0102030405")}), 16);
        EXPECT_EQ(parsed->getTimeMode(), mode);
        expectNoTime(parsed.object);
        EXPECT_EQ(parsed->getEventMsgType(), 5);
        EXPECT_EQ(parsed->getEventMsgID(), 0x0607);
        EXPECT_EQ(parsed->getPrivateDataSize(), 5);
    }
}

TEST(TGeneralEventDescriptor, FieldsTakeOnlyTheirBits) {
    const Field<TGeneralEventDescriptor> type{"event_msg_type", 10, 7, 8, &TGeneralEventDescriptor::getEventMsgType};
    const Field<TGeneralEventDescriptor> id{"event_msg_id", 11, 7, 16, &TGeneralEventDescriptor::getEventMsgID};
    expectFields<TGeneralEventDescriptor>(hex("04 10  1234 00"), 13, {type, id});
    expectFields<TGeneralEventDescriptor>(
        hex("04 10  1234 02"), 13,
        {{"event_msg_NPT, bit 32", 5, 0, 1, &TGeneralEventDescriptor::getEventMsgNPTH},
         {"event_msg_NPT", 6, 7, 32, &TGeneralEventDescriptor::getEventMsgNPTL},
         type,
         id});
    expectFields<TGeneralEventDescriptor>(
        hex("04 10  1234 03"), 13,
        {{"event_msg_relative_time, high", 5, 3, 4, &TGeneralEventDescriptor::getEventMsgRelativeTimeH},
         {"event_msg_relative_time", 6, 7, 32, &TGeneralEventDescriptor::getEventMsgRelativeTimeL},
         type,
         id});
    expectFields<TGeneralEventDescriptor>(hex("04 10  1234 01"), 13,
                                          {{"event_msg_type", 15, 7, 8, &TGeneralEventDescriptor::getEventMsgType},
                                           {"event_msg_id", 16, 7, 16, &TGeneralEventDescriptor::getEventMsgID}});
}

TEST(TGeneralEventDescriptor, PrivateDataIsACopy) {
    const auto parsed = expectDescriptor<TGeneralEventDescriptor>(event("00  FF 11223344  05 0607  0102030405"), 16);
    parsed.bytes.data()[13] = 0x99;
    EXPECT_EQ(parsed->getPrivateData()[0], 0x01);
    EXPECT_EQ(parsed->getPrivateData(), parsed->getPrivateData());
}

TEST(TGeneralEventDescriptor, TheLongestPrivateDataOfADescriptor) {
    const auto plain = expectDescriptor<TGeneralEventDescriptor>(join({hex("04 FF  0000 00"), fill(252, 0x5A)}), 255);
    ASSERT_EQ(plain->getPrivateDataSize(), 244);
    EXPECT_EQ(elements(plain->getPrivateData(), 244), fill(244, 0x5A));

    const auto timed = expectDescriptor<TGeneralEventDescriptor>(join({hex("04 FF  0000 01"), fill(252, 0x5A)}), 255);
    ASSERT_EQ(timed->getPrivateDataSize(), 239);
    EXPECT_EQ(elements(timed->getPrivateData(), 239), fill(239, 0x5A));
}

TEST(TGeneralEventDescriptor, PrivateDataRunsToTheEndOfTheBytesGiven) {
    const auto plain =
        expectDescriptor<TGeneralEventDescriptor>(hex("04 10  0000 00  FF FFFFFFFF  05 0607  0102030405 06"), 17);
    ASSERT_EQ(plain->getPrivateDataSize(), 6);
    EXPECT_EQ(elements(plain->getPrivateData(), 6), hex("0102030405 06"));

    const auto timed =
        expectDescriptor<TGeneralEventDescriptor>(hex("04 10  0000 05  C079 123456  0000000000  66 7788  99"), 17);
    ASSERT_EQ(timed->getPrivateDataSize(), 1);
    EXPECT_EQ(timed->getPrivateData()[0], 0x99);
}

TEST(TGeneralEventDescriptor, TheSizeIsCountedInEightBits) {
    // 13 bytes before the private data, 18 with a time of day.
    const ByteVector plain = join({hex("04 10  0000 00"), fill(8, 0x00)});
    const ByteVector timed = join({hex("04 10  0000 01"), fill(13, 0x00)});

    const auto most = expectDescriptor<TGeneralEventDescriptor>(join({plain, fill(255, 0x5A)}), 266);
    ASSERT_EQ(most->getPrivateDataSize(), 255);
    EXPECT_EQ(elements(most->getPrivateData(), 255), fill(255, 0x5A));

    const auto none = expectDescriptor<TGeneralEventDescriptor>(join({plain, fill(256, 0x5A)}), 267);
    EXPECT_EQ(none->getPrivateDataSize(), 0);
    EXPECT_NE(none->getPrivateData(), nullptr);

    const auto some = expectDescriptor<TGeneralEventDescriptor>(join({plain, fill(287, 0x5A)}), 298);
    ASSERT_EQ(some->getPrivateDataSize(), 31);
    EXPECT_EQ(elements(some->getPrivateData(), 31), fill(31, 0x5A));

    const auto someTimed = expectDescriptor<TGeneralEventDescriptor>(join({timed, fill(282, 0x5A)}), 298);
    ASSERT_EQ(someTimed->getPrivateDataSize(), 26);
    EXPECT_EQ(elements(someTimed->getPrivateData(), 26), fill(26, 0x5A));
}
