#include "Packets.h"

#include "traffic/Continuity.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using inspect::Continuity;
using Step = inspect::Continuity::Step;

/// What is said of packets that come one behind the other.
std::vector<Step> stepsOf(const std::vector<Packet>& packets) {
    Continuity continuity;
    std::vector<Step> steps;
    steps.reserve(packets.size());
    for (const Packet& packet : packets) {
        steps.push_back(continuity.take(packet.data()));
    }
    return steps;
}

/// How many are missing in front of the last one.
unsigned lostBefore(const Packet& last, const Packet& before) {
    Continuity continuity;
    continuity.take(before.data());
    EXPECT_EQ(continuity.take(last.data()), Step::Broken);
    return continuity.lost();
}

} // namespace

TEST(Continuity, CountsFromAnyPacketOnAndFromFifteenToZero) {
    EXPECT_EQ(stepsOf({packetOf(14), packetOf(15), packetOf(0), packetOf(1)}),
              (std::vector<Step>{Step::First, Step::Next, Step::Next, Step::Next}));
}

TEST(Continuity, StandsStillWithoutPayload) {
    EXPECT_EQ(stepsOf({packetOf(3), withoutPayload(3), withoutPayload(3), packetOf(4)}),
              (std::vector<Step>{Step::First, Step::Next, Step::Next, Step::Next}));
    EXPECT_EQ(stepsOf({packetOf(3), withoutPayload(4)}).back(), Step::Broken);
}

TEST(Continuity, KnowsHowManyAreMissingAtLeast) {
    EXPECT_EQ(lostBefore(packetOf(5), packetOf(3)), 1U);
    EXPECT_EQ(lostBefore(packetOf(1), packetOf(14)), 2U);
    EXPECT_EQ(lostBefore(packetOf(2), packetOf(3)), 14U);
}

TEST(Continuity, APacketMayComeTwiceButNoMore) {
    EXPECT_EQ(stepsOf({packetOf(3), packetOf(3), packetOf(4)}),
              (std::vector<Step>{Step::First, Step::Duplicate, Step::Next}));
    EXPECT_EQ(stepsOf({packetOf(3), packetOf(3), packetOf(3), packetOf(3), packetOf(4)}),
              (std::vector<Step>{Step::First, Step::Duplicate, Step::Broken, Step::Broken, Step::Next}));
    EXPECT_EQ(stepsOf({packetOf(3), packetOf(3), packetOf(4), packetOf(4)}).back(), Step::Duplicate);
}

/// Whoever sends it again may write the time of the second one.
TEST(Continuity, OnlyThePcrOfTheSecondMayDiffer) {
    const Packet packet = adapted(3, WITH_PCR, 0xAA);
    Packet otherPcr = packet;
    otherPcr[9] = 0x55;
    Packet otherPayload = packet;
    otherPayload[20] = 0x55;
    EXPECT_EQ(stepsOf({packet, otherPcr}).back(), Step::Duplicate);
    EXPECT_EQ(stepsOf({packet, otherPayload}).back(), Step::Broken);
}

TEST(Continuity, TheSameCounterWithOtherPayloadIsFifteenLost) {
    EXPECT_EQ(lostBefore(packetOf(3, 1), packetOf(3, 2)), 15U);
}

TEST(Continuity, TheFlagAllowsAJump) {
    EXPECT_EQ(stepsOf({packetOf(3), adapted(9, DISCONTINUITY), packetOf(10)}),
              (std::vector<Step>{Step::First, Step::Announced, Step::Next}));
}

/// Only where a PCR is awaited may it stand in more.
TEST(Continuity, TheFlagInThreePacketsOfAPidWithoutPcrAllowsNothing) {
    const std::vector<Packet> flagged{adapted(1, DISCONTINUITY), adapted(2, DISCONTINUITY), adapted(9, DISCONTINUITY)};
    EXPECT_EQ(stepsOf(flagged).back(), Step::Broken);
    EXPECT_EQ(stepsOf({adapted(0, WITH_PCR), flagged[0], flagged[1], flagged[2]}).back(), Step::Announced);
}

TEST(Continuity, TakesInShortWhatIsNext) {
    Continuity continuity;
    EXPECT_FALSE(continuity.takeNext(packetOf(14).data()));
    continuity.take(packetOf(14).data());
    EXPECT_FALSE(continuity.takeNext(packetOf(14).data()));
    EXPECT_FALSE(continuity.takeNext(packetOf(0).data()));
    EXPECT_TRUE(continuity.takeNext(packetOf(15).data()));
    EXPECT_TRUE(continuity.takeNext(packetOf(0, 7).data()));
    EXPECT_EQ(continuity.take(packetOf(0, 7).data()), Step::Duplicate);
    EXPECT_TRUE(continuity.takeNext(packetOf(1).data()));
    EXPECT_EQ(continuity.take(packetOf(1).data()), Step::Duplicate);
    continuity.forget();
    EXPECT_FALSE(continuity.takeNext(packetOf(2).data()));
}

TEST(Continuity, TheFlagMayStandInTwoPacketsOnceMoreBehindOneThatIsTakenInShort) {
    Continuity continuity;
    continuity.take(packetOf(3).data());
    EXPECT_EQ(continuity.take(adapted(9, DISCONTINUITY).data()), Step::Announced);
    EXPECT_EQ(continuity.take(adapted(5, DISCONTINUITY).data()), Step::Announced);
    EXPECT_TRUE(continuity.takeNext(packetOf(6).data()));
    EXPECT_EQ(continuity.take(adapted(9, DISCONTINUITY).data()), Step::Announced);
}

TEST(Continuity, HeedsNoPacketOfTheReservedKind) {
    Packet reserved = packetOf(9);
    reserved[3] &= 0xCFU;
    EXPECT_EQ(stepsOf({packetOf(3), reserved, packetOf(4)}), (std::vector<Step>{Step::First, Step::Next, Step::Next}));
}

TEST(Continuity, KnowsNothingOfWhatItForgot) {
    Continuity continuity;
    continuity.take(packetOf(3).data());
    continuity.forget();
    EXPECT_EQ(continuity.take(packetOf(3).data()), Step::First);
    EXPECT_EQ(continuity.take(packetOf(3).data()), Step::Duplicate);
}

/// An adaptation field may say that it is longer than the packet.
TEST(Continuity, ReadsNothingBehindThePacket) {
    Packet packet = adapted(3, WITH_PCR | DISCONTINUITY);
    packet[4] = 255;
    EXPECT_EQ(stepsOf({packet, packet}).back(), Step::Duplicate);
}
