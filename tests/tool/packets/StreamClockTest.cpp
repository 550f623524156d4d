#include "packets/StreamClock.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using Packet = std::array<std::uint8_t, 188>;

constexpr std::uint16_t VIDEO_PID = 0x0111;
constexpr std::uint16_t OTHER_PID = 0x0211;

/// A packet with a PCR: a base of 90 kHz and an extension of 27 MHz.
Packet withPcr(std::uint16_t pid, std::uint64_t base, unsigned extension = 0, std::uint8_t flags = 0x10) {
    Packet packet{};
    packet[0] = 0x47;
    packet[1] = static_cast<std::uint8_t>(pid >> 8U);
    packet[2] = static_cast<std::uint8_t>(pid);
    packet[3] = 0x20;
    packet[4] = 183;
    packet[5] = flags;
    packet[6] = static_cast<std::uint8_t>(base >> 25U);
    packet[7] = static_cast<std::uint8_t>(base >> 17U);
    packet[8] = static_cast<std::uint8_t>(base >> 9U);
    packet[9] = static_cast<std::uint8_t>(base >> 1U);
    packet[10] = static_cast<std::uint8_t>((base & 1U) << 7U | 0x7EU | extension >> 8U);
    packet[11] = static_cast<std::uint8_t>(extension);
    return packet;
}

/// A clock that was fed with references of one PID.
class Clock {
public:
    Clock& take(const Packet& packet, std::uint64_t number) {
        inspect::Position position{number, number * 188, {}, {}};
        m_clock.take(packet.data(), position);
        return *this;
    }
    Clock& take(std::uint64_t base, std::uint64_t number) { return take(withPcr(VIDEO_PID, base), number); }

    /// -1 when it does not tell.
    double at(std::uint64_t number) const { return m_clock.seconds(number).value_or(-1); }

private:
    inspect::Events m_events;
    inspect::StreamClock m_clock{m_events};
};

TEST(StreamClock, TellsNothingBeforeTwoReferences) {
    Clock clock;
    EXPECT_EQ(clock.at(1), -1);
    clock.take(900000, 1);
    EXPECT_EQ(clock.at(5), -1);
}

TEST(StreamClock, BeginsWithItsFirstReferenceAndGoesOnBetweenThem) {
    Clock clock;
    clock.take(900000, 11).take(900000 + 9000, 111);
    EXPECT_DOUBLE_EQ(clock.at(111), 0.1);
    EXPECT_DOUBLE_EQ(clock.at(161), 0.15);
    clock.take(900000 + 13500, 211); // half the interval: twice the rate
    EXPECT_DOUBLE_EQ(clock.at(211), 0.15);
    EXPECT_DOUBLE_EQ(clock.at(311), 0.2);
}

TEST(StreamClock, CountsTheExtensionOf27Megahertz) {
    Clock clock;
    clock.take(withPcr(VIDEO_PID, 0, 0), 1).take(withPcr(VIDEO_PID, 0, 270), 2);
    EXPECT_DOUBLE_EQ(clock.at(2), 0.00001);
    clock.take(withPcr(VIDEO_PID, 1, 270), 3);
    EXPECT_DOUBLE_EQ(clock.at(3), 0.00001 + 300 / 27e6);
}

TEST(StreamClock, GoesOnWhereTheReferencesBeginANewRound) {
    Clock clock;
    clock.take((std::uint64_t{1} << 33U) - 4500, 1).take(4500, 101);
    EXPECT_DOUBLE_EQ(clock.at(101), 0.1);
}

/// A recording that was cut, or one that begins again.
TEST(StreamClock, GoesOnEvenlyAcrossAJump) {
    for (const std::uint64_t after : {std::uint64_t{900000000}, std::uint64_t{4500}}) {
        Clock clock;
        clock.take(900000, 1).take(909000, 101).take(after, 201);
        EXPECT_DOUBLE_EQ(clock.at(201), 0.2);
        clock.take(after + 18000, 301);
        EXPECT_DOUBLE_EQ(clock.at(301), 0.4);
    }
}

/// An announced discontinuity is one even if the new time happens to lie close by.
TEST(StreamClock, HeedsTheDiscontinuityIndicator) {
    Clock clock;
    clock.take(900000, 1).take(909000, 101);
    clock.take(withPcr(VIDEO_PID, 945000, 0, 0x90), 201);
    EXPECT_DOUBLE_EQ(clock.at(201), 0.2);
}

TEST(StreamClock, HearsOneProgramOnly) {
    Clock clock;
    clock.take(900000, 1).take(withPcr(OTHER_PID, 5, 0), 2).take(909000, 101).take(withPcr(OTHER_PID, 7000, 0), 102);
    EXPECT_DOUBLE_EQ(clock.at(101), 0.1);
    EXPECT_DOUBLE_EQ(clock.at(201), 0.2);
}

TEST(StreamClock, ChangesToAnotherPidWhenItsOwnHasEnded) {
    Clock clock;
    clock.take(900000, 1).take(909000, 101);
    clock.take(withPcr(OTHER_PID, 5000), 1001); // 0.9 s later: not yet
    clock.take(withPcr(OTHER_PID, 95000), 1201);
    EXPECT_DOUBLE_EQ(clock.at(1201), 1.2);
    clock.take(withPcr(OTHER_PID, 95000 + 18000), 1301);
    EXPECT_DOUBLE_EQ(clock.at(1301), 1.4);
}

/// Its rate is not known, but so many packets take a second at any rate.
TEST(StreamClock, ChangesFromAPidThatHadASingleReference) {
    Clock clock;
    clock.take(900000, 1);
    clock.take(withPcr(OTHER_PID, 5000), 100).take(withPcr(OTHER_PID, 14000), 200);
    EXPECT_EQ(clock.at(200), -1);
    clock.take(withPcr(OTHER_PID, 5000000), 50001).take(withPcr(OTHER_PID, 5009000), 50101);
    EXPECT_DOUBLE_EQ(clock.at(50101), 0.1);
}

TEST(StreamClock, HeedsNoPacketThatIsSentTwice) {
    Clock clock;
    clock.take(900000, 1).take(909000, 101).take(909000, 102);
    EXPECT_DOUBLE_EQ(clock.at(102), 0.101);
    clock.take(918000, 201);
    EXPECT_DOUBLE_EQ(clock.at(201), 0.2);
}

TEST(StreamClock, HeedsNoPacketThatIsDamaged) {
    Packet damaged = withPcr(VIDEO_PID, 905000);
    damaged[1] |= 0x80U;
    Packet withoutPcr = withPcr(VIDEO_PID, 905000);
    withoutPcr[5] = 0x00;
    Packet tooShort = withPcr(VIDEO_PID, 905000);
    tooShort[4] = 6;
    Packet stuffing{};
    stuffing[3] = 0x20;
    Clock clock;
    clock.take(900000, 1).take(damaged, 2).take(withoutPcr, 3).take(tooShort, 4).take(stuffing, 5).take(909000, 101);
    EXPECT_DOUBLE_EQ(clock.at(201), 0.2);
}

} // namespace
