#include "Broadcast.h"
#include "Reading.h"
#include "Tables.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>

using reading::Packet;
using reading::Section;
using testing::Each;

namespace {

const ByteVector& tenSeconds() {
    static const ByteVector stream = sample::broadcast(10 * sample::SECOND);
    return stream;
}

/// When the PCRs of a PID come, in microseconds, one after the other.
std::vector<std::size_t> clockSteps(unsigned pid) {
    std::vector<std::size_t> steps;
    std::optional<std::size_t> former;
    for (const Packet& each : reading::packets(tenSeconds(), pid)) {
        EXPECT_TRUE(each.pcr().has_value());
        if (former) {
            steps.push_back(each.time() - *former);
        }
        former = each.time();
    }
    return steps;
}

} // namespace

/// A packet takes 1504 microseconds at 1 Mbit/s: 40608 ticks of 27 MHz.
TEST(Broadcast, ClocksAgreeWithTheRate) {
    EXPECT_EQ(tenSeconds().size(), 6649U * 188U);
    std::size_t clocks = 0;
    for (const Packet& each : reading::packets(tenSeconds())) {
        EXPECT_EQ(each.bytes[0], 0x47);
        if (each.pcr()) {
            ++clocks;
            EXPECT_EQ(*each.pcr(), 270000000 + each.place * 40608) << "packet " << each.place;
        }
    }
    EXPECT_EQ(clocks, 300U);
}

TEST(Broadcast, ClocksComeEach40MillisecondsAndForThePhoneEach200) {
    EXPECT_THAT(clockSteps(0x0100), Each(testing::AllOf(testing::Ge(33000U), testing::Le(47000U))));
    EXPECT_THAT(clockSteps(0x0200), Each(testing::AllOf(testing::Ge(193000U), testing::Le(207000U))));
}

TEST(Broadcast, CountsAllItsPackets) {
    std::set<unsigned> pids;
    for (const Packet& each : reading::packets(tenSeconds())) {
        pids.insert(each.pid());
        EXPECT_EQ(each.bytes[1] & 0x80U, 0U);
        EXPECT_FALSE(each.isScrambled());
    }
    EXPECT_THAT(pids, testing::ElementsAre(0x0000, 0x0010, 0x0011, 0x0012, 0x0014, 0x0023, 0x0024, 0x0027, 0x0100,
                                           0x0101, 0x0111, 0x0112, 0x0116, 0x0130, 0x0140, 0x0150, 0x0200, 0x0211,
                                           0x0212, 0x0216, 0x1FC8, 0x1FFF));
    for (const unsigned pid : pids) {
        if (pid != 0x1FFF) {
            EXPECT_EQ(reading::continuityErrors(tenSeconds(), pid), 0U) << pid;
        }
    }
}

TEST(Broadcast, TablesComeAsOftenAsOnAir) {
    const std::map<unsigned, std::size_t> expected{
        {0x0000, 100}, // PAT
        {0x0101, 100}, // PMT
        {0x1FC8, 20},  // PMT of the service for the phone
        {0x0010, 10},  // NIT
        {0x0011, 5},   // SDT
        {0x0012, 20},  // EIT, two sections
        {0x0027, 20},  // EIT of the service for the phone
        {0x0014, 2},   // TOT
        {0x0024, 10},  // BIT
        {0x0130, 40},  // two AITs
        {0x0150, 40},  // DSM-CC stream descriptors
        {0x0023, 1},   // SDTT
    };
    for (const auto& [pid, count] : expected) {
        const std::vector<Section> sections = reading::sections(tenSeconds(), pid);
        EXPECT_EQ(sections.size(), count) << pid;
        for (const Section& each : sections) {
            EXPECT_TRUE(each.isWhole()) << pid;
        }
    }
}

/// What is seen and heard has the time of its decoder, half a second later.
TEST(Broadcast, StreamsAreTimed) {
    const std::map<unsigned, std::size_t> expected{{0x0111, 300}, {0x0112, 157}, {0x0116, 10},
                                                   {0x0211, 150}, {0x0212, 79},  {0x0216, 10}};
    for (const auto& [pid, count] : expected) {
        std::size_t found = 0;
        for (const Packet& each : reading::packets(tenSeconds(), pid)) {
            if (each.pts()) {
                ++found;
                const std::uint64_t sent = 90000 * 10 + each.time() * 9 / 100;
                EXPECT_GE(*each.pts(), sent + 44000) << pid;
                EXPECT_LE(*each.pts(), sent + 45000) << pid;
            }
        }
        EXPECT_EQ(found, count) << pid;
    }
}

/// SI_parameter_descriptor: NIT and BIT each second, SDT each two, H-EIT and L-EIT each second.
TEST(Broadcast, DeclaresItsCycles) {
    EXPECT_EQ(reading::sections(tenSeconds(), 0x0024).front().bytes,
              hex("C4 F01F 0735 C1 00 00 F014 D7 12 01 EDA9 40 01 01 C4 01 01 42 01 02 4E 04 01FF0102 8CBDFA8D"));
}

/// At seven in the evening, half an hour after the beginning, what followed is present.
TEST(Broadcast, EventsChangeAtTheFullHour) {
    sample::Broadcast broadcast(600000);
    std::map<std::uint64_t, ByteVector> presentEvents;
    while (broadcast.now() < 1801 * sample::SECOND) {
        const std::uint64_t second = broadcast.now() / sample::SECOND;
        const ByteVector packet = broadcast.next();
        if (packet[1] == 0x40 && packet[2] == 0x12 && packet[11] == 0) {
            presentEvents[second] = ByteVector(packet.begin() + 5, packet.begin() + 5 + 25);
        }
    }
    EXPECT_EQ(presentEvents.at(1799), hex("4E F030 E6A0 E5 00 01 0735 0735 01 4E 0012 EDA9 180000 010000 80"));
    EXPECT_EQ(presentEvents.at(1800), hex("4E F033 E6A0 E7 00 01 0735 0735 01 4E 0013 EDA9 190000 010000 80"));
}

TEST(Broadcast, MidnightIsADayLater) {
    const ByteVector before = sample::tot(24 * 3600 - 1);
    const ByteVector after = sample::tot(24 * 3600);
    EXPECT_EQ(ByteVector(before.begin() + 3, before.begin() + 8), hex("EDA9 235959"));
    EXPECT_EQ(ByteVector(after.begin() + 3, after.begin() + 8), hex("EDAA 000000"));
}

TEST(Broadcast, IsTheSameEachTime) {
    EXPECT_TRUE(sample::broadcast(10 * sample::SECOND) == tenSeconds());
}

/// The clock is the rate's, whatever it is; the video alone grows with it.
TEST(Broadcast, OfAnotherRate) {
    sample::Broadcast broadcast(20000000);
    std::map<unsigned, std::size_t> packets;
    std::size_t place = 0;
    for (; broadcast.now() < sample::SECOND; ++place) {
        const ByteVector bytes = broadcast.next();
        const Packet packet{place, bytes.data()};
        ++packets[packet.pid()];
        if (packet.pcr()) {
            EXPECT_EQ(*packet.pcr(), 270000000 + place * 20304 / 10);
        }
    }
    EXPECT_EQ(place, 13298U);
    EXPECT_EQ(packets[0x0111], 6624U);
    EXPECT_EQ(packets[0x0112], 32U);
    EXPECT_EQ(packets[0x0000], 10U);
}
