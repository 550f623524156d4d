#include "Broadcast.h"
#include "Reading.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using reading::Packet;
using reading::Section;

namespace {

// 24 seconds, in which the faults last from second 4 to second 16.
constexpr sample::Ticks LENGTH = 24 * sample::SECOND;
constexpr sample::Ticks BEGIN = 4 * sample::SECOND;
constexpr sample::Ticks END = 16 * sample::SECOND;

constexpr unsigned PAT = 0x0000;
constexpr unsigned NIT = 0x0010;
constexpr unsigned SDT = 0x0011;
constexpr unsigned EIT = 0x0012;
constexpr unsigned TOT = 0x0014;
constexpr unsigned BIT = 0x0024;
constexpr unsigned CLOCK = 0x0100;
constexpr unsigned PMT = 0x0101;
constexpr unsigned VIDEO = 0x0111;
constexpr unsigned AUDIO = 0x0112;
constexpr unsigned AIT = 0x0130;
constexpr unsigned UNANNOUNCED = 0x0300;
constexpr unsigned ONE_SEG_PMT = 0x1FC8;

bool isMeanwhile(std::size_t microseconds) {
    return microseconds >= 4000000 && microseconds < 16000000;
}

using Measure = long (*)(const ByteVector& stream);

template <class Items, class Predicate> long count(const Items& items, Predicate predicate) {
    return std::count_if(items.begin(), items.end(), predicate);
}

/// Steps from each to the next.
std::vector<long> steps(const std::vector<long>& values) {
    std::vector<long> result;
    for (std::size_t at = 1; at < values.size(); ++at) {
        result.push_back(values[at] - values[at - 1]);
    }
    return result;
}

long largest(const std::vector<long>& values) {
    return *std::max_element(values.begin(), values.end());
}

long smallest(const std::vector<long>& values) {
    return *std::min_element(values.begin(), values.end());
}

/// Milliseconds without a section on a PID.
template <unsigned PID> long silence(const ByteVector& stream) {
    std::vector<long> times;
    for (const Section& each : reading::sections(stream, PID)) {
        times.push_back(static_cast<long>(each.time / 1000));
    }
    return largest(steps(times));
}

template <unsigned PID> long damaged(const ByteVector& stream) {
    return count(reading::sections(stream, PID), [](const Section& each) { return !each.isWhole(); });
}

template <unsigned PID> long continuityErrors(const ByteVector& stream) {
    return static_cast<long>(reading::continuityErrors(stream, PID));
}

template <unsigned PID> long scrambled(const ByteVector& stream) {
    return count(reading::packets(stream, PID), [](const Packet& each) { return each.isScrambled(); });
}

template <unsigned PID> long packetsMeanwhile(const ByteVector& stream) {
    return count(reading::packets(stream, PID), [](const Packet& each) { return isMeanwhile(each.time()); });
}

template <unsigned PID> long versionChanges(const ByteVector& stream) {
    std::vector<long> versions;
    for (const Section& each : reading::sections(stream, PID)) {
        versions.push_back(each.version());
    }
    return count(steps(versions), [](long step) { return step != 0; });
}

std::vector<Packet> clocks(const ByteVector& stream) {
    std::vector<Packet> all = reading::packets(stream, CLOCK);
    all.erase(std::remove_if(all.begin(), all.end(), [](const Packet& each) { return !each.pcr(); }), all.end());
    return all;
}

/// From one PCR to the next, in milliseconds.
std::vector<long> clockSteps(const ByteVector& stream) {
    std::vector<long> times;
    for (const Packet& each : clocks(stream)) {
        times.push_back(static_cast<long>(*each.pcr() / 27000));
    }
    return steps(times);
}

long largestClockStep(const ByteVector& stream) {
    return largest(clockSteps(stream));
}

long smallestClockStep(const ByteVector& stream) {
    return smallest(clockSteps(stream));
}

long announcedClockSteps(const ByteVector& stream) {
    return count(clocks(stream), [](const Packet& each) { return (each.bytes[5] & 0x80U) != 0; });
}

long standingClocks(const ByteVector& stream) {
    return count(clockSteps(stream), [](long step) { return step == 0; });
}

unsigned fromBcd(unsigned byte) {
    return byte / 16 * 10 + byte % 16;
}

/// From one TOT to the next, in seconds.
std::vector<long> timeSteps(const ByteVector& stream) {
    std::vector<long> times;
    for (const Section& each : reading::sections(stream, TOT)) {
        times.push_back((fromBcd(each.bytes[5]) * 60 + fromBcd(each.bytes[6])) * 60 + fromBcd(each.bytes[7]));
    }
    return steps(times);
}

long largestTimeStep(const ByteVector& stream) {
    return largest(timeSteps(stream));
}

long smallestTimeStep(const ByteVector& stream) {
    return smallest(timeSteps(stream));
}

/// Where second 4 begins: behind 2660 packets.
long foreignBytes(const ByteVector& stream) {
    long bytes = 0;
    for (std::size_t at = 2660 * reading::PACKET_SIZE; stream[at] == 0x00; ++at) {
        ++bytes;
    }
    return bytes;
}

long wrongSyncBytes(const ByteVector& stream) {
    return count(reading::packets(stream), [](const Packet& each) { return each.bytes[0] != 0x47; });
}

long transportErrors(const ByteVector& stream) {
    return count(reading::packets(stream, VIDEO), [](const Packet& each) { return (each.bytes[1] & 0x80U) != 0; });
}

/// Packets of video that are the same as so many before them.
template <std::size_t TIMES> long repeated(const ByteVector& stream) {
    const std::vector<Packet> video = reading::packets(stream, VIDEO);
    long found = 0;
    for (std::size_t at = TIMES; at < video.size(); ++at) {
        found += video[at].isSame(video[at - TIMES]) ? 1 : 0;
    }
    return found;
}

long timedPictures(const ByteVector& stream) {
    return count(reading::packets(stream, VIDEO),
                 [](const Packet& each) { return isMeanwhile(each.time()) && each.pts(); });
}

long foreignTables(const ByteVector& stream) {
    return count(reading::sections(stream, PAT),
                 [](const Section& each) { return each.tableId() == 0x80 && each.isWhole(); });
}

long followingEvents(const ByteVector& stream) {
    return count(reading::sections(stream, EIT),
                 [](const Section& each) { return each.tableId() == 0x4E && each.number() == 1; });
}

template <std::uint16_t Pid> long otherContents(const ByteVector& stream) {
    const std::vector<Section> all = reading::sections(stream, Pid);
    return count(all, [&all](const Section& each) {
        return each.version() == 0 && each.isWhole() && each.bytes != all.front().bytes;
    });
}

long otherNetworks(const ByteVector& stream) {
    return count(reading::sections(stream, SDT), [](const Section& each) {
        return each.version() == 1 && each.bytes[8] == 0x07 && each.bytes[9] == 0x36 && each.isWhole();
    });
}

struct Case {
    const char* fault;
    Measure measure;
    long without;
    long with;
};

void PrintTo(const Case& each, std::ostream* stream) {
    *stream << each.fault;
}

/// Times are in steps of a packet, 1.5 milliseconds.
const std::vector<Case> CASES{
    {"sync-lost", foreignBytes, 0, 1000},
    {"sync-byte", wrongSyncBytes, 0, 80},
    {"pat-scrambled", scrambled<PAT>, 0, 120},
    {"pid-stops", packetsMeanwhile<AUDIO>, 375, 0},
    {"transport-error", transportErrors, 0, 80},
    {"scrambled", scrambled<VIDEO>, 0, 3960},
    {"pid-unannounced", packetsMeanwhile<UNANNOUNCED>, 0, 192},
    {"continuity-pmt", continuityErrors<PMT>, 0, 12},
    {"continuity-video", continuityErrors<VIDEO>, 0, 160},
    {"video-replaced", continuityErrors<VIDEO>, 0, 40},
    {"video-lost", continuityErrors<VIDEO>, 0, 1320},
    {"sent-twice", repeated<1>, 0, 80},
    {"sent-thrice", repeated<2>, 0, 80},
    {"loss", largestClockStep, 44, 12041},
    {"pat-stops", silence<PAT>, 103, 12102},
    {"pmt-stops", silence<PMT>, 105, 12100},
    {"one-seg-pmt-stops", silence<ONE_SEG_PMT>, 501, 12500},
    {"nit-stops", silence<NIT>, 1001, 12999},
    {"sdt-stops", silence<SDT>, 2002, 13999},
    {"eit-stops", silence<EIT>, 981, 12981},
    {"tot-stops", silence<TOT>, 5001, 20000},
    {"bit-stops", silence<BIT>, 1001, 13001},
    {"ait-stops", silence<AIT>, 482, 12480},
    {"pat-crc", damaged<PAT>, 0, 40},
    {"pmt-crc", damaged<PMT>, 0, 40},
    {"nit-crc", damaged<NIT>, 0, 4},
    {"sdt-crc", damaged<SDT>, 0, 2},
    {"tot-crc", damaged<TOT>, 0, 1},
    {"ait-crc", damaged<AIT>, 0, 16},
    {"pcr-forward", largestClockStep, 44, 10040},
    {"pcr-back", smallestClockStep, 36, -9960},
    {"pcr-splice", announcedClockSteps, 0, 1},
    {"pcr-frozen", standingClocks, 0, 299},
    {"pcr-stops", packetsMeanwhile<CLOCK>, 300, 0},
    {"pcr-slow", packetsMeanwhile<CLOCK>, 300, 60},
    {"pcr-wrap", smallestClockStep, 36, -95443677},
    {"pts-stops", timedPictures, 360, 0},
    {"pat-other-table", foreignTables, 0, 24},
    {"bit-not-kept", silence<NIT>, 1001, 5001},
    {"eit-following-missing", followingEvents, 24, 12},
    {"tot-back", smallestTimeStep, 5, -3595},
    {"version-flaps", versionChanges<PMT>, 0, 120},
    {"content-changes", otherContents<SDT>, 0, 6},
    {"pmt-changes", otherContents<PMT>, 0, 120},
    {"network-differs", otherNetworks, 0, 6},
    {"loop", smallestClockStep, 36, -3960},
    {"other-source", largestClockStep, 44, 4321040},
    {"pause", largestTimeStep, 5, 35},
};

const ByteVector& clean() {
    static const ByteVector stream = sample::broadcast(LENGTH);
    return stream;
}

ByteVector with(const std::string& fault) {
    const bool lasts = sample::faultNamed(fault).seconds != 0;
    return sample::broadcast(LENGTH, {lasts ? sample::faultAt(fault, BEGIN, END) : sample::faultAt(fault, BEGIN)});
}

class Faults : public testing::TestWithParam<Case> {};

} // namespace

TEST_P(Faults, StandInTheStream) {
    EXPECT_EQ(GetParam().measure(clean()), GetParam().without);
    EXPECT_EQ(GetParam().measure(with(GetParam().fault)), GetParam().with);
}

INSTANTIATE_TEST_SUITE_P(All, Faults, testing::ValuesIn(CASES), [](const auto& each) {
    std::string name = each.param.fault;
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
});

TEST(FaultList, HasThoseOfTheTests) {
    std::vector<std::string> listed;
    for (const sample::Fault& each : sample::faults()) {
        if (each.name.find("app-") != 0) {
            listed.push_back(each.name);
        }
    }
    std::vector<std::string> tested;
    for (const Case& each : CASES) {
        tested.emplace_back(each.fault);
    }
    EXPECT_THAT(tested, testing::UnorderedElementsAreArray(listed));
}

TEST(FaultList, HasNoOther) {
    EXPECT_THROW(sample::faultNamed("no-such-fault"), std::invalid_argument);
}

/// A fault of a table that stops is one of the table, not of what counts its packets; nothing is left when it is over.
TEST(FaultTimes, OneThatLastsLeavesNothingBehind) {
    const ByteVector stream = with("pat-stops");
    EXPECT_EQ(reading::continuityErrors(stream, PAT), 0U);
    EXPECT_EQ(stream.size(), clean().size());
    const std::vector<Packet> before = reading::packets(clean());
    const std::vector<Packet> after = reading::packets(stream);
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (before[at].pid() != PAT && !isMeanwhile(before[at].time())) {
            ASSERT_TRUE(after[at].isSame(before[at])) << at;
        }
    }
}

TEST(FaultTimes, OneLastsAsLongAsItIsListedWith) {
    const ByteVector stream = sample::broadcast(70 * sample::SECOND, {sample::faultAt("pat-stops", BEGIN)});
    EXPECT_EQ(silence<PAT>(stream), 60102);
}

TEST(FaultTimes, SeveralAtOnce) {
    const ByteVector stream =
        sample::broadcast(LENGTH, {sample::faultAt("loss", BEGIN, 5 * sample::SECOND), sample::faultAt("pat-crc", END),
                                   sample::faultAt("transport-error", BEGIN, END)});
    EXPECT_EQ(largestClockStep(stream), 1040);
    EXPECT_EQ(damaged<PAT>(stream), 27);
    EXPECT_EQ(transportErrors(stream), 73);
}

/// Lost on the way: counters of all PIDs jump. Not sent at all: none does.
TEST(FaultCounters, TellLossFromPause) {
    const ByteVector lost = with("loss");
    EXPECT_EQ(reading::continuityErrors(lost, PMT), 1U);
    EXPECT_EQ(reading::continuityErrors(lost, VIDEO), 1U);
    EXPECT_EQ(clean().size() - lost.size(), 7979U * 188U);
    const ByteVector paused = with("pause");
    EXPECT_EQ(paused.size(), clean().size());
    EXPECT_EQ(reading::continuityErrors(paused, VIDEO), 0U);
    EXPECT_EQ(largestClockStep(paused), 44);
}

TEST(FaultClocks, JumpWithTheirTimeStampsAndForOneServiceAlone) {
    for (const char* const fault : {"pcr-forward", "pcr-splice"}) {
        const ByteVector stream = with(fault);
        for (const unsigned pid : {0x0200U, 0x0211U}) {
            const std::vector<Packet> before = reading::packets(clean(), pid);
            const std::vector<Packet> after = reading::packets(stream, pid);
            ASSERT_TRUE(after.back().isSame(before.back())) << fault;
        }
        const auto isTimed = [](const Packet& each) { return each.pts().has_value(); };
        const std::vector<Packet> before = reading::packets(clean(), VIDEO);
        const std::vector<Packet> after = reading::packets(stream, VIDEO);
        const auto timedBefore = std::find_if(before.rbegin(), before.rend(), isTimed);
        const auto timedAfter = std::find_if(after.rbegin(), after.rend(), isTimed);
        EXPECT_EQ(*timedAfter->pts() - *timedBefore->pts(), 900000U) << fault;
        EXPECT_EQ(largestClockStep(stream), 10040) << fault;
    }
}

TEST(FaultClocks, WrapToZero) {
    const ByteVector stream = with("pcr-wrap");
    for (const Packet& each : clocks(stream)) {
        if (each.time() >= 4000000) {
            EXPECT_LT(*each.pcr(), 27000000U / 25);
            return;
        }
    }
    ADD_FAILURE() << "no clock behind the wrap";
}

TEST(FaultSources, LoopIsTheSameAgain) {
    const ByteVector stream = with("loop");
    const std::size_t period = 2660 * reading::PACKET_SIZE;
    EXPECT_TRUE(std::equal(stream.begin(), stream.begin() + 2660 * 188, clean().begin()));
    for (std::size_t at = period; at < stream.size(); ++at) {
        ASSERT_EQ(stream[at], stream[at - period]) << at;
    }
}

TEST(FaultSources, AnotherHasOtherCountersAndVersions) {
    const ByteVector stream = with("other-source");
    for (const unsigned pid : {PAT, PMT, SDT, VIDEO, AIT}) {
        EXPECT_EQ(reading::continuityErrors(stream, pid), 1U) << pid;
    }
    EXPECT_EQ(reading::sections(stream, PAT).front().version(), 0U);
    EXPECT_EQ(reading::sections(stream, PAT).back().version(), 1U);
    EXPECT_EQ(versionChanges<SDT>(stream), 1);
    EXPECT_EQ(damaged<SDT>(stream), 0);
}
