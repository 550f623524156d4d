#include "Packets.h"

#include "traffic/TrafficCounter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace {

using inspect::Event;
using inspect::EventKind;
using inspect::Pid;

constexpr std::uint64_t SECOND = 27000000;
constexpr std::uint64_t ROUND = (std::uint64_t{1} << 33U) * 300;
constexpr Pid PCR_PID = 0x0100;
constexpr Pid OTHER_PCR_PID = 0x0200;

/// A packet with a PCR and no payload.
Packet reference(Pid pid, std::uint64_t ticks, std::uint8_t flags) {
    Packet packet = withoutPayload(0, static_cast<std::uint8_t>(WITH_PCR | flags));
    packet[1] = static_cast<std::uint8_t>(pid >> 8U);
    packet[2] = static_cast<std::uint8_t>(pid);
    const std::uint64_t coded = (ticks % ROUND / 300) << 15U | std::uint64_t{0x3F} << 9U | ticks % 300;
    for (std::size_t at = 0; at < 6; ++at) {
        packet[6 + at] = static_cast<std::uint8_t>(coded >> (40 - 8 * at));
    }
    return packet;
}

/// A multiplex of 1000 packets a second: each millisecond one of five PIDs with payload, and each 25 ms a PCR. It can
/// be disturbed.
class Multiplex {
public:
    /// Sends what it has to for a while, in milliseconds.
    Multiplex& run(unsigned milliseconds) {
        for (unsigned count = 0; count < milliseconds; ++count) {
            tick(true);
        }
        return *this;
    }

    /// The same, but nobody receives it.
    Multiplex& lose(unsigned milliseconds) {
        for (unsigned count = 0; count < milliseconds; ++count) {
            tick(false);
        }
        return *this;
    }

    /// The encoder of the PCRs is another one from now on.
    Multiplex& jump(double seconds) {
        m_ticks += static_cast<std::uint64_t>(static_cast<std::int64_t>(seconds * SECOND));
        return *this;
    }

    /// All counters are others, as in another source; or the first ones.
    Multiplex& recount(std::size_t most = 32) {
        for (auto each = m_counters.begin(); each != m_counters.end() && most != 0; ++each, --most) {
            each->second += 5;
        }
        return *this;
    }

    /// Begins again with its first packet.
    Multiplex& rewind() {
        m_counters.clear();
        m_ticks = START;
        m_sent = 0;
        return *this;
    }

    Multiplex& received(double seconds) {
        m_arrival = seconds;
        m_isLive = true;
        return *this;
    }

    double now() const { return m_clock.seconds(m_packets).value_or(-1); }
    double duration() const { return m_clock.duration(m_packets).value_or(-1); }
    inspect::StreamClock& clock() { return m_clock; }
    std::uint64_t packets() const { return m_packets; }
    const inspect::TrafficCounter& traffic() const { return m_traffic; }

    std::uint64_t discontinuities() {
        m_traffic.finish();
        std::uint64_t sum = 0;
        for (const Pid pid : m_traffic.pids()) {
            sum += m_traffic.of(pid)->discontinuities;
        }
        return sum;
    }

    /// What was told, but for what is measured all the time.
    std::vector<Event> told() {
        m_traffic.finish();
        drain();
        std::vector<Event> events;
        for (const Event& event : m_told) {
            if (event.kind != EventKind::PcrInterval && event.kind != EventKind::Discontinuity) {
                events.push_back(event);
            }
        }
        return events;
    }

    bool hasPcr = true;
    bool hasOtherPcr = false;
    bool isFrozen = false;
    bool announces = false;
    unsigned pcrInterval = 25;
    unsigned pids = 5; ///< with payload

    static constexpr std::uint64_t START = 1000 * SECOND;

private:
    void tick(bool isReceived) {
        m_arrival += 0.001;
        m_ticks += isFrozen ? 0 : SECOND / 1000;
        ++m_sent;
        if (hasPcr && m_sent % pcrInterval == 1) {
            send(reference(PCR_PID, m_ticks, announces ? DISCONTINUITY : 0), isReceived);
        } else if (hasOtherPcr && m_sent % 25 == 2) {
            send(reference(OTHER_PCR_PID, m_ticks + 500 * SECOND, 0), isReceived);
        } else {
            const Pid pid = static_cast<Pid>(0x300 + m_sent % pids);
            send(packetOf(m_counters[pid]++, static_cast<std::uint8_t>(m_sent), pid), isReceived);
        }
    }

    void send(const Packet& packet, bool isReceived) {
        if (!isReceived) {
            return;
        }
        inspect::Position position{++m_packets, m_packets * 188, {}, {}};
        if (m_isLive) {
            m_clock.takeArrival(position.packet, m_arrival);
        }
        m_clock.take(packet.data(), position);
        m_traffic.take(packet.data(), position);
        drain();
    }

    void drain() {
        m_told.insert(m_told.end(), m_events.begin(), m_events.end());
        m_events.clear();
    }

    inspect::Events m_events;
    inspect::StreamClock m_clock{m_events};
    inspect::TrafficCounter m_traffic{m_events, m_clock};
    std::map<Pid, unsigned> m_counters;
    std::uint64_t m_ticks = START;
    std::uint64_t m_sent = 0;
    std::uint64_t m_packets = 0;
    double m_arrival = 0;
    bool m_isLive = false;
    std::vector<Event> m_told;
};

std::vector<EventKind> kindsOf(const std::vector<Event>& events) {
    std::vector<EventKind> kinds;
    kinds.reserve(events.size());
    for (const Event& event : events) {
        kinds.push_back(event.kind);
    }
    return kinds;
}

using Kinds = std::vector<EventKind>;

constexpr double MILLISECOND = 0.0011;

void expectLossFrom(unsigned begin) {
    Multiplex multiplex;
    multiplex.hasOtherPcr = begin % 2 != 0;
    multiplex.run(begin).lose(3001).run(36000 - 3001 - begin);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::Loss});
    EXPECT_NEAR(told[0].amount, 3, 0.002);
    EXPECT_NEAR(*told[0].at.seconds, 13, 0.2);
    EXPECT_NEAR(multiplex.duration(), 36, 0.005);
    EXPECT_GE(multiplex.discontinuities(), 3U); // of some, a multiple of sixteen is lost
    EXPECT_NEAR(*multiplex.traffic().of(PCR_PID)->pcrIntervals.maximum(), 3.025, 0.026);
}

void expectJumpOf(double seconds) {
    Multiplex multiplex;
    multiplex.run(5000).jump(seconds).run(5000);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::PcrJump}) << seconds;
    EXPECT_EQ(told[0].pid, PCR_PID);
    EXPECT_EQ(told[0].at.packet, 5001U);
    EXPECT_NEAR(told[0].to - told[0].from, seconds + 0.025, 1e-6);
    EXPECT_NEAR(multiplex.now(), 10, 0.005);
    EXPECT_EQ(multiplex.traffic().of(PCR_PID)->pcrJumps, 1U);
}

} // namespace

TEST(TrueTime, AStreamThatIsWellTellsNothing) {
    Multiplex multiplex;
    multiplex.hasOtherPcr = true;
    multiplex.run(10000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{});
    EXPECT_NEAR(multiplex.duration(), 10, MILLISECOND);
    EXPECT_EQ(multiplex.traffic().of(PCR_PID)->pcrIntervals.count(), 399U);
    EXPECT_NEAR(*multiplex.traffic().of(OTHER_PCR_PID)->pcrIntervals.maximum(), 0.025, 1e-9);
}

/// Three seconds of 36 are missing. Wherever that begins, the first PCR comes behind counters, or before them.
TEST(TrueTime, PassesWhilePacketsAreLost) {
    expectLossFrom(10000);
    expectLossFrom(10003);
    expectLossFrom(10024);
}

TEST(TrueTime, PassesWhileFewPacketsAreLost) {
    Multiplex multiplex;
    multiplex.run(10003).lose(107).run(1000);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::Loss});
    EXPECT_NEAR(told[0].amount, 0.107, 0.002);
    EXPECT_NEAR(multiplex.now(), 11.11, 0.005);
}

/// What comes in step with the counters' round has the same ones again.
TEST(TrueTime, PassesWhileMostCountersGoRound) {
    for (const bool hasOtherPcr : {false, true}) {
        Multiplex multiplex;
        multiplex.pids = 20;
        multiplex.hasOtherPcr = hasOtherPcr;
        multiplex.run(5003).jump(6.4).recount(hasOtherPcr ? 2 : 3).run(5000);
        const std::vector<Event> told = multiplex.told();
        ASSERT_EQ(kindsOf(told), Kinds{EventKind::Loss});
        EXPECT_NEAR(told[0].amount, 6.4, 0.002);
    }
}

TEST(TrueTime, DoesNotPassWhereOneCounterBreaksAsPcrsJump) {
    Multiplex multiplex;
    multiplex.pids = 20;
    multiplex.hasOtherPcr = true;
    multiplex.run(5003).jump(6.4).recount(1).run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), (Kinds{EventKind::PcrJump, EventKind::PcrJump}));
    EXPECT_NEAR(multiplex.now(), 10, 0.005);
}

/// With or without others that come rarely.
TEST(TrueTime, PassesWhereThePcrsComeRarely) {
    Multiplex multiplex;
    multiplex.pcrInterval = 230;
    multiplex.run(10003).lose(3001).run(2000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::Loss});
    EXPECT_NEAR(multiplex.now(), 15, 0.01);
}

TEST(TrueTime, GoesOnEvenlyAcrossAJumpAndTellsOfIt) {
    expectJumpOf(100);
    expectJumpOf(-100);
    expectJumpOf(5);
    expectJumpOf(-0.5);
}

/// The PIDs that come when it is told of are no second one.
TEST(TrueTime, OneLossIsToldOnce) {
    Multiplex multiplex;
    multiplex.pids = 20;
    multiplex.run(5000).lose(3010).run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::Loss});
    multiplex.lose(3010).run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), (Kinds{EventKind::Loss, EventKind::Loss}));
}

/// Whichever packet comes first behind it.
TEST(TrueTime, AShortLossIsOneToo) {
    for (const unsigned before : {5000U, 5003U}) {
        for (const bool isLive : {false, true}) {
            Multiplex multiplex;
            multiplex.pids = 20;
            if (isLive) {
                multiplex.received(50);
            }
            multiplex.run(before).lose(501).run(4999);
            const std::vector<Event> told = multiplex.told();
            ASSERT_EQ(kindsOf(told), Kinds{EventKind::Loss});
            EXPECT_NEAR(told[0].amount, 0.5, 0.01);
            EXPECT_NEAR(told[0].at.seconds.value_or(0), before / 1000.0 + 0.5, 0.01);
            EXPECT_NEAR(multiplex.now(), (before + 5500) / 1000.0, 0.01);
        }
    }
}

/// The PCR of another PID may tell of it before that of its own comes.
TEST(TrueTime, ALossIsNoOtherPacketRate) {
    for (const unsigned lost : {500U, 3000U}) {
        Multiplex multiplex;
        multiplex.hasOtherPcr = true;
        multiplex.run(5001).lose(lost).run(46);
        EXPECT_NEAR(multiplex.now(), (5046 + lost) / 1000.0, 0.01);
    }
}

/// Where the counters go on, packets come at another rate.
TEST(TrueTime, FewerPacketsAreNoLoss) {
    Multiplex multiplex;
    multiplex.pcrInterval = 200;
    multiplex.run(5000);
    for (unsigned count = 0; count < 5000; ++count) {
        multiplex.jump(0.001).run(1);
    }
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{});
    EXPECT_NEAR(multiplex.now(), 15, 0.4);
}

/// However often the rate seems to change before it is clear that nothing is lost: the last references tell it.
TEST(TrueTime, DoesNotRunAwayWithManyRates) {
    Multiplex multiplex;
    multiplex.pcrInterval = 2;
    multiplex.run(1000);
    for (unsigned count = 0; count < 90; ++count) {
        multiplex.jump(0.9).run(2);
    }
    multiplex.run(1000);
    EXPECT_NEAR(multiplex.now(), 1 + 90 * 0.902 + 1, 1);
}

TEST(TrueTime, KnowsAnAnnouncedSplice) {
    Multiplex multiplex;
    multiplex.run(5000).jump(100);
    multiplex.announces = true;
    multiplex.run(1);
    multiplex.announces = false;
    multiplex.run(4999);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::PcrSplice});
    EXPECT_NEAR(told[0].to - told[0].from, 100.025, 1e-6);
    EXPECT_NEAR(multiplex.now(), 10, 0.005);
}

/// The flag may stand in packets before the one where the clock changes.
TEST(TrueTime, TheFlagAloneIsNoSplice) {
    Multiplex multiplex;
    multiplex.run(1000);
    multiplex.announces = true;
    multiplex.run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{});
}

TEST(TrueTime, APcrThatStandsStillDoesNotStopIt) {
    Multiplex multiplex;
    multiplex.run(5000);
    multiplex.isFrozen = true;
    multiplex.run(3000);
    multiplex.isFrozen = false;
    multiplex.run(2000);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::PcrFrozen});
    EXPECT_EQ(told[0].pid, PCR_PID);
    EXPECT_NEAR(told[0].from, 1005, 0.03);
    EXPECT_NEAR(multiplex.now(), 10, 0.2); // as the last interval says
}

TEST(TrueTime, APcrThatCatchesUpHasNotJumped) {
    Multiplex multiplex;
    multiplex.run(5000);
    multiplex.isFrozen = true;
    multiplex.run(3000);
    multiplex.isFrozen = false;
    multiplex.jump(3).run(2000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::PcrFrozen});
    EXPECT_NEAR(multiplex.now(), 10, 0.005);
}

TEST(TrueTime, APidWhosePcrCeasesDoesNotStopIt) {
    Multiplex multiplex;
    multiplex.run(5000);
    multiplex.hasPcr = false;
    multiplex.run(5000);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::PcrCeased});
    EXPECT_EQ(told[0].pid, PCR_PID);
    EXPECT_NEAR(told[0].amount, 1, 0.03);
    EXPECT_NEAR(multiplex.now(), 10, 0.01);
    multiplex.hasPcr = true;
    multiplex.run(1000);
    EXPECT_NEAR(multiplex.now(), 11, 0.01);
    EXPECT_EQ(multiplex.told().size(), 1U);
}

TEST(TrueTime, FollowsAnotherPidWhenItsOwnCeases) {
    Multiplex multiplex;
    multiplex.hasOtherPcr = true;
    multiplex.run(5000);
    multiplex.hasPcr = false;
    multiplex.run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::PcrCeased});
    multiplex.lose(3001).run(1000); // only the other one tells
    EXPECT_EQ(kindsOf(multiplex.told()), (Kinds{EventKind::PcrCeased, EventKind::Loss}));
    EXPECT_NEAR(multiplex.now(), 14, 0.01);
}

TEST(TrueTime, FollowsThePidWithTheMostPcrs) {
    Multiplex multiplex;
    multiplex.pcrInterval = 200;
    multiplex.hasOtherPcr = true;
    multiplex.run(5000);
    multiplex.hasPcr = false; // nobody misses it
    multiplex.run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{});
    EXPECT_NEAR(multiplex.now(), 10, 0.01);
}

TEST(TrueTime, KnowsAFileThatBeginsAgain) {
    Multiplex multiplex;
    multiplex.run(5000).rewind().run(5000).rewind().run(5000);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), (Kinds{EventKind::Looped, EventKind::Looped}));
    EXPECT_NEAR(told[0].amount, 5, 0.001);
    EXPECT_NEAR(told[1].amount, 5, 0.001);
    EXPECT_NEAR(multiplex.now(), 15, 0.01);
    EXPECT_EQ(multiplex.discontinuities(), 0U); // no fault of each PID
}

TEST(TrueTime, KnowsAnotherSource) {
    for (const double seconds : {40000.0, -300.0}) {
        Multiplex multiplex;
        multiplex.run(5010).recount().jump(seconds).run(4990);
        ASSERT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::NewStream});
        EXPECT_NEAR(multiplex.now(), 10, 0.005);
        EXPECT_EQ(multiplex.discontinuities(), 0U);
    }
}

TEST(TrueTime, TakesNoNoteOfANewRound) {
    Multiplex multiplex;
    multiplex.jump(static_cast<double>(ROUND) / SECOND - 1005).run(10000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{});
    EXPECT_NEAR(multiplex.now(), 10, 0.005);
}

TEST(TrueTime, CountersOfOnePidAreNoLossOfAll) {
    Multiplex multiplex;
    multiplex.run(5003).lose(1).run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{});
    EXPECT_EQ(multiplex.discontinuities(), 1U);
}

/// Where errors never cease, they are counted as they come.
TEST(TrueTime, DoesNotWaitForTheEndOfErrors) {
    Multiplex multiplex;
    multiplex.run(1000);
    for (unsigned count = 0; count < 1000; ++count) {
        multiplex.lose(1).run(6);
    }
    std::uint64_t counted = 0;
    for (const Pid pid : multiplex.traffic().pids()) {
        counted += multiplex.traffic().of(pid)->discontinuities;
    }
    EXPECT_GT(counted, 850U);
    EXPECT_GT(multiplex.discontinuities(), counted);
}

TEST(TrueTime, ComesFromTheBitRateWhereThereIsNoPcr) {
    Multiplex multiplex;
    multiplex.clock().setBitRate(1504 * 1000);
    multiplex.hasPcr = false;
    multiplex.run(10001);
    EXPECT_NEAR(multiplex.now(), 10, 1e-9);
    EXPECT_NEAR(multiplex.duration(), 10.001, 1e-9);
}

TEST(TrueTime, APcrIsBetterThanTheBitRate) {
    Multiplex multiplex;
    multiplex.clock().setBitRate(1504 * 500);
    multiplex.run(10000);
    EXPECT_NEAR(multiplex.now(), 10, 0.03);
}

TEST(TrueTime, OfABroadcastStreamIsThePosition) {
    inspect::Events events;
    inspect::StreamClock clock(events);
    clock.takeBroadcast(0);
    EXPECT_DOUBLE_EQ(*clock.seconds(64001), 3.213);
    clock.takeBroadcast(64000);
    EXPECT_DOUBLE_EQ(*clock.seconds(64001), 6.426);
}

TEST(TrueTime, OfABroadcastStreamIsNotThatOfItsPcrs) {
    Multiplex multiplex; // ten times slower than its packets
    multiplex.clock().takeBroadcast(0);
    multiplex.run(100);
    EXPECT_NEAR(multiplex.now(), 99 * 3213.0 / 64e6, 1e-9);
}

TEST(TrueTime, IsThatOfArrivalWhereThereIsNoPcr) {
    Multiplex multiplex;
    multiplex.hasPcr = false;
    multiplex.received(50).run(5000);
    EXPECT_NEAR(multiplex.now(), 5, 0.002);
    multiplex.received(60).run(1000);
    EXPECT_NEAR(multiplex.now(), 11, 0.002);
}

TEST(TrueTime, PassesInAPauseOfTheSender) {
    Multiplex multiplex;
    multiplex.received(50).run(5000).received(60).run(5000);
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(kindsOf(told), Kinds{EventKind::Pause});
    EXPECT_NEAR(told[0].amount, 5, 0.01);
    EXPECT_NEAR(multiplex.now(), 15, 0.03);
}

/// Where packets come all the time, the sender makes no pause.
TEST(TrueTime, OfASlowSenderIsThatOfItsPcrs) {
    Multiplex multiplex;
    for (unsigned count = 0; count < 10000; ++count) {
        multiplex.received(50 + count * 0.002).run(1);
    }
    const std::vector<Event> told = multiplex.told();
    ASSERT_EQ(told.size(), 9U);
    EXPECT_THAT(kindsOf(told), testing::Each(EventKind::SlowClock));
    EXPECT_NEAR(told[1].amount, 0.5, 0.01);
    EXPECT_NEAR(told[1].from, 2, 0.05);
    EXPECT_NEAR(multiplex.now(), 10, 0.03);
}

/// Packets may come faster than before: how fast is known when the next PCR comes.
TEST(TrueTime, IsCertainUpToTheLastPcr) {
    Multiplex multiplex;
    multiplex.run(5001);
    const double last = multiplex.clock().certainSeconds(multiplex.packets()).value_or(-1);
    EXPECT_NEAR(last, 5, MILLISECOND);
    multiplex.run(20);
    EXPECT_DOUBLE_EQ(multiplex.clock().certainSeconds(multiplex.packets()).value_or(-1), last);
    multiplex.hasPcr = false;
    multiplex.run(3000); // nobody waits for PCRs for ever
    EXPECT_NEAR(multiplex.clock().certainSeconds(multiplex.packets()).value_or(-1), 8.02, 0.01);
}

TEST(TrueTime, PassesInALossAsItArrives) {
    for (const unsigned before : {5000U, 5003U}) { // a PCR comes first behind it, or other packets do
        Multiplex multiplex;
        multiplex.received(50).run(before).lose(3001).run(5000);
        const std::vector<Event> told = multiplex.told();
        ASSERT_EQ(kindsOf(told), Kinds{EventKind::Loss});
        EXPECT_NEAR(told[0].amount, 3, 0.01);
        EXPECT_NEAR(multiplex.now(), 13, 0.03);
    }
}

/// Here a file is cut, and played as fast as it goes.
TEST(TrueTime, OfAFilePlayedFastIsThatOfItsPcrs) {
    Multiplex multiplex;
    for (unsigned count = 0; count < 10000; ++count) {
        multiplex.received(50 + count * 1e-5).run(1);
    }
    multiplex.lose(3001);
    for (unsigned count = 0; count < 5000; ++count) {
        multiplex.received(51 + count * 1e-5).run(1);
    }
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::Loss});
    EXPECT_NEAR(multiplex.now(), 18, 0.03);
}

/// As far as this machine knows, no time was lost.
TEST(TrueTime, TellsAnotherSourceFromALossByItsArrival) {
    Multiplex multiplex;
    multiplex.received(50).run(5010).recount().jump(30).run(5000);
    EXPECT_EQ(kindsOf(multiplex.told()), Kinds{EventKind::NewStream});
    EXPECT_NEAR(multiplex.now(), 10, 0.03);
}

/// References that mean nothing must neither fill the memory nor stop it.
TEST(TrueTime, EndsNoWaitingNever) {
    Multiplex multiplex;
    multiplex.run(100);
    multiplex.pcrInterval = 2;
    for (unsigned count = 0; count < 1000; ++count) {
        multiplex.jump(count % 3 * 7000.0 + 3).run(2);
    }
    EXPECT_FALSE(multiplex.told().empty());
    multiplex.run(1000);
    EXPECT_FALSE(multiplex.clock().isJudging());
}
