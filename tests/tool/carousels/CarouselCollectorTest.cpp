#include "carousels/CarouselCollector.h"

#include "CarouselMessages.h"
#include "support/Bytes.h"
#include "tool/Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace wire;
using testing::ElementsAre;

namespace {

constexpr inspect::Pid PID = 0x0140;

inspect::Section onPid(inspect::Pid pid, const ByteVector& bytes, double seconds = 0) {
    inspect::Section::Memory memory(static_cast<std::uint8_t*>(std::malloc(bytes.size())));
    std::copy(bytes.begin(), bytes.end(), memory.get());
    return {pid, std::move(memory), {7, 1316, seconds}};
}

void take(inspect::CarouselCollector& collector, const std::vector<ByteVector>& sections, inspect::Pid pid = PID) {
    for (const ByteVector& each : sections) {
        collector.take(onPid(pid, each));
    }
}

ByteVector wrongCrc(ByteVector section) {
    section.back() = static_cast<QUOR_U8>(section.back() ^ 1U);
    return section;
}

bool isBegunIn(const ByteVector& packet) {
    return inspect::CarouselCollector::isBegunIn(packet.data());
}

/// Remembers what it is told.
struct Listener : inspect::CarouselListener {
    void before(inspect::Pid pid, const inspect::Position& position, const dsmcc::Carousels& carousels,
                const dsmcc::DownloadInfoIndication& dii) override {
        told.push_back("before " + std::to_string(pid) + " " + std::to_string(position.packet) + " " +
                       std::to_string(carousels.carousels().size()) + " " + std::to_string(dii.modules.size()));
    }
    void ends(inspect::Pid pid, const dsmcc::Carousels& carousels) override {
        told.push_back("ends " + std::to_string(pid) + " " + std::to_string(carousels.carousels().size()));
    }
    std::vector<std::string> told;
};

} // namespace

TEST(CarouselCollector, TakesTheSectionsOfEachPidByThemselves) {
    inspect::CarouselCollector collector;
    take(collector, {dataDii({2, 4}, {{1, 6}}), block({1, 0}, text("abcd"))});
    take(collector, {block({1, 1}, text("ef"))}, 0x0141);
    take(collector, {longSection(0x3D, {}, {})}, 0x0142);
    const std::vector<inspect::CarouselPid> pids = collector.carousels();
    ASSERT_EQ(pids.size(), 2U);
    EXPECT_EQ(pids[0].pid, 0x0140);
    EXPECT_EQ(pids[0].sections, 2U);
    ASSERT_EQ(pids[0].carousels.size(), 1U);
    EXPECT_EQ(pids[0].carousels[0].carousel.id, 2U);
    EXPECT_EQ(pids[0].carousels[0].carousel.groups[0].modules[0]->received(), 1U);
    EXPECT_EQ(pids[0].carousels[0].tree.entries.size(), 1U);
    EXPECT_EQ(pids[1].pid, 0x0141);
    EXPECT_EQ(pids[1].carousels[0].carousel.type, dsmcc::CarouselType::Unknown);
}

TEST(CarouselCollector, CountsWhatItDoesNotTake) {
    inspect::CarouselCollector collector;
    take(collector, {wrongCrc(dataDii({2, 4}, {{1, 6}})), dataDii({2, 4}, {{1, 6}}), block({1, 2}, text("ab")),
                     block({1, 3}, text("ab")), block({1, 0}, text("ab"))});
    const std::vector<inspect::CarouselPid> pids = collector.carousels();
    ASSERT_EQ(pids.size(), 1U);
    EXPECT_EQ(pids[0].sections, 4U);
    EXPECT_EQ(pids[0].crcErrors, 1U);
    ASSERT_EQ(pids[0].refusals.size(), 2U);
    EXPECT_EQ(pids[0].refusals[0].refusal.text, "block 2 of 2");
    EXPECT_EQ(pids[0].refusals[0].count, 2U);
    EXPECT_EQ(pids[0].refusals[0].first.packet, 7U);
    EXPECT_EQ(pids[0].refusals[1].refusal.text, "block 0 has 2 bytes instead of 4");
    EXPECT_EQ(pids[0].refusals[1].count, 1U);
}

TEST(CarouselCollector, TakesNoMoreMemoryThanItMay) {
    inspect::CarouselCollector collector(100000);
    for (unsigned id = 0; id < 8; ++id) {
        take(collector, blocks({id, 0, 1, id}, 4000, fill(20000, 0xAA)), static_cast<inspect::Pid>(0x0140 + id));
    }
    const std::vector<inspect::CarouselPid> pids = collector.carousels();
    ASSERT_EQ(pids.size(), 8U);
    EXPECT_TRUE(pids[0].refusals.empty());
    ASSERT_EQ(pids[7].refusals.size(), 1U);
    EXPECT_EQ(pids[7].refusals[0].count, 5U);
    EXPECT_EQ(pids[7].refusals[0].refusal.text, "the carousels take more than 100000 bytes");
}

TEST(CarouselCollector, ForgetsThePidThatIsSilentForAnother) {
    inspect::CarouselCollector collector;
    for (unsigned pid = 1; pid <= 65; ++pid) {
        collector.take(onPid(static_cast<inspect::Pid>(pid), dataDii({2, 4}, {}), pid));
    }
    EXPECT_EQ(collector.carousels().size(), 64U);
    Listener listener;
    collector.tell(listener);
    collector.take(onPid(66, dataDii({2, 4}, {}), 122.5)); // the first two have been silent for 120 s
    EXPECT_EQ(collector.carousels().size(), 63U);
    EXPECT_THAT(listener.told, ElementsAre("ends 1 1", "ends 2 1", "before 66 7 0 0"));
}

TEST(CarouselCollector, TellsBeforeWhatIsThereIsGone) {
    inspect::CarouselCollector collector;
    Listener listener;
    collector.tell(listener);
    take(collector, {dataDii({2, 4}, {{1, 2}}), block({1, 0}, text("ab")), dataDii({2, 4}, {{1, 2, 2}, {2, 2}})});
    collector.finish();
    EXPECT_THAT(listener.told, ElementsAre("before 320 7 0 1", "before 320 7 1 2", "ends 320 1"));
}

TEST(CarouselCollector, SeesThatASectionBegins) {
    const ByteVector dii = dataDii({2, 4}, {});
    EXPECT_TRUE(isBegunIn(StreamBuilder().section(PID, dii).bytes()));
    EXPECT_TRUE(isBegunIn(StreamBuilder().section(PID, block({1, 0}, text("ab"))).bytes()));
    EXPECT_TRUE(isBegunIn(StreamBuilder().begin(PID, join({hex("03 FFFFFF"), dii})).bytes()));
    EXPECT_FALSE(isBegunIn(StreamBuilder().proceed(PID, join({hex("00"), dii})).bytes()));
    EXPECT_FALSE(isBegunIn(StreamBuilder().section(PID, longSection(0x3D, {}, fill(20, 0x11))).bytes()));
    EXPECT_FALSE(isBegunIn(StreamBuilder().section(PID, longSection(0x3B, {}, fill(20, 0x12))).bytes()));
    EXPECT_FALSE(isBegunIn(StreamBuilder().section(PID, dii).patch(3, 0xD0).bytes())); // scrambled
    EXPECT_FALSE(isBegunIn(StreamBuilder().section(PID, dii).patch(4, 174).bytes()));  // no room for so much
    EXPECT_FALSE(isBegunIn(StreamBuilder().section(PID, dii).patch(3, 0x30).patch(4, 0xFF).bytes()));
}
