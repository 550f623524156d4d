#include "Packets.h"

#include "traffic/TrafficCounter.h"

#include <gtest/gtest.h>
#include <limits>

namespace {

using inspect::Event;
using inspect::EventKind;
using inspect::PidTraffic;

/// A counter, and what it told.
class Traffic {
public:
    /// @param seconds when the packet was sent
    Traffic& take(const Packet& packet, std::optional<double> seconds = std::nullopt) {
        m_counter.take(packet.data(), {++m_packets, m_packets * 188, seconds});
        told.insert(told.end(), m_events.begin(), m_events.end());
        m_events.clear();
        return *this;
    }

    bool takeNext(const Packet& packet) {
        ++m_packets;
        return m_counter.takeNext(packet.data(), {m_packets, m_packets * 188, {}});
    }

    std::vector<std::pair<inspect::Pid, std::uint64_t>> news() { return m_counter.news(); }

    /// Something that happened on the way to the next packet.
    Traffic& happen(EventKind kind, double amount = 0) {
        m_events.push_back({kind, VIDEO_PID, {}, amount});
        return *this;
    }

    const PidTraffic& video() const { return *m_counter.of(VIDEO_PID); }
    const inspect::TrafficCounter& counter() const { return m_counter; }

    std::vector<EventKind> kinds() const {
        std::vector<EventKind> kinds;
        for (const Event& event : told) {
            kinds.push_back(event.kind);
        }
        return kinds;
    }

    inspect::Events told;

private:
    inspect::Events m_events;
    inspect::StreamClock m_clock{m_events};
    inspect::TrafficCounter m_counter{m_events, m_clock};
    std::uint64_t m_packets = 0;
};

/// The begin of a PES packet.
Packet pes(unsigned counter, unsigned streamId, std::uint8_t flags) {
    Packet packet = packetOf(counter);
    packet[1] |= 0x40U;
    packet[4] = 0;
    packet[5] = 0;
    packet[6] = 1;
    packet[7] = static_cast<std::uint8_t>(streamId);
    packet[10] = 0x84;
    packet[11] = flags;
    return packet;
}

Packet scrambled(unsigned counter) {
    Packet packet = packetOf(counter);
    packet[3] |= 0x80U;
    return packet;
}

Packet damaged(unsigned counter) {
    Packet packet = packetOf(counter);
    packet[1] |= 0x80U;
    return packet;
}

constexpr unsigned VIDEO_STREAM = 0xE0;
constexpr std::uint8_t PTS = 0x80;

} // namespace

TEST(TrafficCounter, KnowsThePidsThatCame) {
    Traffic traffic;
    traffic.take(packetOf(0)).take(packetOf(0, 0, 0x1FFF)).take(packetOf(0, 0, 0)).take(packetOf(1));
    EXPECT_EQ(traffic.counter().pids(), (std::vector<inspect::Pid>{0, VIDEO_PID, 0x1FFF}));
    EXPECT_EQ(traffic.video().packets, 2U);
    EXPECT_EQ(traffic.video().first.packet, 1U);
    EXPECT_EQ(traffic.video().last.packet, 4U);
    EXPECT_EQ(traffic.counter().of(5), nullptr);
}

TEST(TrafficCounter, TakesInShortWhatGoesOnWithItsPid) {
    Traffic traffic;
    EXPECT_FALSE(traffic.takeNext(packetOf(3)));
    traffic.take(packetOf(3));
    EXPECT_TRUE(traffic.takeNext(packetOf(4)));
    EXPECT_EQ(traffic.video().packets, 2U);
    EXPECT_EQ(traffic.video().last.packet, 3U);
    EXPECT_FALSE(traffic.takeNext(packetOf(6)));
    EXPECT_FALSE(traffic.takeNext(scrambled(5)));
    EXPECT_EQ(traffic.video().packets, 2U);
    traffic.take(scrambled(5));
    EXPECT_TRUE(traffic.takeNext(scrambled(6)));
    EXPECT_FALSE(traffic.takeNext(packetOf(7)));
    EXPECT_EQ(traffic.video().scrambled, 2U);
    EXPECT_EQ(traffic.kinds(), std::vector{EventKind::Scrambled});
}

TEST(TrafficCounter, TakesNullPacketsInShortWhateverTheirOrder) {
    Traffic traffic;
    traffic.take(packetOf(3, 0, inspect::NULL_PID));
    EXPECT_TRUE(traffic.takeNext(packetOf(9, 0, inspect::NULL_PID)));
    EXPECT_TRUE(traffic.takeNext(packetOf(9, 1, inspect::NULL_PID)));
    EXPECT_EQ(traffic.counter().of(inspect::NULL_PID)->packets, 3U);
}

TEST(TrafficCounter, TellsOnceHowManyPacketsCame) {
    using News = std::vector<std::pair<inspect::Pid, std::uint64_t>>;
    Traffic traffic;
    EXPECT_EQ(traffic.news(), News());
    traffic.take(packetOf(3)).take(packetOf(4)).take(packetOf(0, 0, 0x0100));
    EXPECT_EQ(traffic.news(), (News{{0x0100, 1}, {VIDEO_PID, 2}}));
    EXPECT_TRUE(traffic.takeNext(packetOf(5)));
    EXPECT_EQ(traffic.news(), (News{{VIDEO_PID, 1}}));
    EXPECT_EQ(traffic.news(), News());
}

TEST(TrafficCounter, TellsOfPacketsThatAreMissing) {
    Traffic traffic;
    traffic.take(packetOf(0)).take(packetOf(3), 7.5).take(packetOf(3)).take(adapted(9, DISCONTINUITY));
    EXPECT_EQ(traffic.video().discontinuities, 1U);
    EXPECT_EQ(traffic.video().lost, 2U);
    EXPECT_EQ(traffic.video().duplicates, 1U);
    EXPECT_EQ(traffic.video().announcedJumps, 1U);
    ASSERT_EQ(traffic.kinds(), (std::vector<EventKind>{EventKind::Discontinuity, EventKind::DiscontinuityKnown}));
    EXPECT_EQ(traffic.told[0].pid, VIDEO_PID);
    EXPECT_EQ(traffic.told[0].amount, 2);
    EXPECT_EQ(traffic.told[0].at.packet, 2U);
    EXPECT_EQ(traffic.told[0].at.seconds, 7.5);
}

/// Their counters mean nothing.
TEST(TrafficCounter, CountsNoOrderOfNullPackets) {
    Traffic traffic;
    traffic.take(packetOf(0, 0, 0x1FFF)).take(packetOf(7, 0, 0x1FFF)).take(packetOf(7, 0, 0x1FFF));
    EXPECT_TRUE(traffic.told.empty());
}

/// Its PID may be wrong, and its counter.
TEST(TrafficCounter, JudgesNothingBehindADamagedPacket) {
    Traffic traffic;
    traffic.take(packetOf(0)).take(damaged(9)).take(packetOf(5));
    EXPECT_EQ(traffic.video().packets, 3U);
    EXPECT_EQ(traffic.video().transportErrors, 1U);
    EXPECT_EQ(traffic.video().discontinuities, 0U);
    EXPECT_EQ(traffic.kinds(), (std::vector<EventKind>{EventKind::TransportError}));
}

TEST(TrafficCounter, JudgesNothingBehindALossOfSync) {
    Traffic traffic;
    traffic.take(packetOf(0)).happen(EventKind::SyncLost).take(packetOf(5));
    EXPECT_EQ(traffic.video().discontinuities, 0U);
}

TEST(TrafficCounter, TellsWhenAPidIsScrambledAndAgainWhenItWasClear) {
    Traffic traffic;
    traffic.take(packetOf(0)).take(scrambled(1)).take(scrambled(2)).take(packetOf(3)).take(scrambled(4));
    EXPECT_EQ(traffic.video().scrambled, 3U);
    EXPECT_EQ(traffic.kinds(), std::vector<EventKind>(2, EventKind::Scrambled));
    EXPECT_EQ(traffic.told[1].at.packet, 5U);
}

TEST(TrafficCounter, MeasuresWhatTheClockSaysOfPcrs) {
    Traffic traffic;
    traffic.take(adapted(0, WITH_PCR)).happen(EventKind::PcrInterval, 0.04).take(adapted(1, WITH_PCR));
    traffic.happen(EventKind::PcrJump).take(adapted(2, WITH_PCR));
    EXPECT_EQ(traffic.video().pcrs, 3U);
    EXPECT_EQ(traffic.video().pcrIntervals.count(), 1U);
    EXPECT_EQ(traffic.video().pcrIntervals.maximum(), 0.04);
    EXPECT_EQ(traffic.video().pcrJumps, 1U);
    EXPECT_EQ(traffic.video().lastPcr->packet, 3U);
}

TEST(TrafficCounter, MeasuresFromPtsToPts) {
    Traffic traffic;
    traffic.take(pes(0, VIDEO_STREAM, PTS), 1).take(pes(1, VIDEO_STREAM, 0), 1.25).take(packetOf(2), 1.5);
    traffic.take(pes(3, VIDEO_STREAM, PTS), 2.75);
    EXPECT_EQ(traffic.video().ptsIntervals.count(), 1U);
    EXPECT_EQ(traffic.video().ptsIntervals.maximum(), 1.75);
    EXPECT_EQ(traffic.video().lastPts->packet, 4U);
    ASSERT_EQ(traffic.kinds(), (std::vector<EventKind>{EventKind::PtsInterval}));
    EXPECT_EQ(traffic.told[0].amount, 1.75);
}

/// Captions, sections and what a key is needed for.
TEST(TrafficCounter, LooksForPtsInVideoAndAudioOnly) {
    for (const unsigned streamId : {0xBDU, 0xBFU, 0xF0U}) {
        EXPECT_FALSE(Traffic().take(pes(0, streamId, PTS), 1).video().lastPts);
    }
    for (const unsigned streamId : {0xC0U, 0xDFU, 0xEFU}) {
        EXPECT_TRUE(Traffic().take(pes(0, streamId, PTS), 1).video().lastPts);
    }
    Packet secret = pes(0, VIDEO_STREAM, PTS);
    secret[3] |= 0xC0U;
    EXPECT_FALSE(Traffic().take(secret, 1).video().lastPts);
    Packet late = pes(0, VIDEO_STREAM, PTS);
    late[3] |= 0x20U;
    late[4] = 180; // nothing of it fits
    EXPECT_FALSE(Traffic().take(late, 1).video().lastPts);
}

/// From 0.5 s on; 1, 3 and 0 packets in the seconds behind the first, which is not whole.
TEST(TrafficCounter, CountsBitsOfWholeSeconds) {
    Traffic traffic;
    traffic.take(packetOf(0), 0.5).take(packetOf(1), 0.75).take(packetOf(2), 1);
    EXPECT_EQ(traffic.video().lowestBitRate, std::nullopt);
    traffic.take(packetOf(3), 2).take(packetOf(4), 2.5).take(packetOf(5), 2.75);
    EXPECT_EQ(traffic.video().lowestBitRate, 1504);
    traffic.take(packetOf(0, 0, 0), 3);
    EXPECT_EQ(traffic.video().lowestBitRate, 1504);
    EXPECT_EQ(traffic.video().highestBitRate, 4512);
    traffic.take(packetOf(0, 0, 0), 4);
    EXPECT_EQ(traffic.video().lowestBitRate, 0);
}

/// Where two seconds are the same number.
TEST(TrafficCounter, ComesToAnEndWithAnyTime) {
    Traffic traffic;
    for (const double seconds : {0.0, 1.0, 4.1e16, 1e300, std::numeric_limits<double>::infinity()}) {
        traffic.take(packetOf(0), seconds);
    }
    EXPECT_EQ(traffic.video().packets, 5U);
    EXPECT_EQ(traffic.video().lowestBitRate, 0);
}

TEST(TrafficCounter, CountsSecondsWithoutAPacketOfAnyPid) {
    Traffic traffic;
    traffic.take(packetOf(0), 0).take(packetOf(1), 1).take(packetOf(2), 1.5).take(packetOf(3), 1000000);
    EXPECT_EQ(traffic.video().lowestBitRate, 0);
    EXPECT_EQ(traffic.video().highestBitRate, 3008);
}
