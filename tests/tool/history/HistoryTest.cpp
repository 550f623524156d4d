#include "history/History.h"

#include "support/Bytes.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using inspect::EventKind;
using inspect::History;
using News = inspect::SeenSections::News;

inspect::Position at(double seconds) {
    return {1, 0, seconds};
}

inspect::Section pat(unsigned version, double seconds, inspect::Pid pid = 0) {
    LongHeader header;
    header.version = version;
    const ByteVector bytes = longSection(0x00, header, {});
    inspect::Section::Memory copy(static_cast<std::uint8_t*>(std::malloc(bytes.size())));
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return inspect::Section(pid, std::move(copy), at(seconds));
}

std::uint64_t allPackets(const History& history) {
    std::uint64_t all = 0;
    for (const auto& course : history.packets()) {
        for (const History::Packets& cell : course) {
            all += cell.packets;
        }
    }
    return all;
}

} // namespace

TEST(History, CountsPacketsInSteps) {
    History history;
    for (const double seconds : {0.0, 0.001, 0.015, 0.016, 1.0}) {
        history.take(0x0111, 1, at(seconds));
    }
    EXPECT_EQ(history.stepLength(), 0.015625);
    const auto& course = history.packets()[0x0111];
    ASSERT_EQ(course.size(), 3U);
    EXPECT_EQ(course[0].step, 0U);
    EXPECT_EQ(course[0].packets, 3U);
    EXPECT_EQ(course[1].step, 1U);
    EXPECT_EQ(course[2].step, 64U);
    EXPECT_TRUE(history.packets()[0x0112].empty());
}

TEST(History, CountsSeveralPacketsAtOnceUpToTheEndOfTheirStep) {
    History history;
    EXPECT_EQ(history.endOfStep(at(0.016)), 0.03125);
    history.take(0x0111, 7, at(0.02));
    history.take(0x0111, 2, at(0.03));
    ASSERT_EQ(history.packets()[0x0111].size(), 1U);
    EXPECT_EQ(history.packets()[0x0111][0].packets, 9U);
}

TEST(History, TakesWhatCameBeforeTheClockForTheBegin) {
    History history;
    history.take(0x0111, 1, inspect::Position{1, 0, {}});
    EXPECT_EQ(history.packets()[0x0111].at(0).step, 0U);
}

TEST(History, TakesATimeThatGoesBackForTheLastOne) {
    History history;
    history.take(0x0111, 1, at(1.0));
    history.take(0x0111, 1, at(0.5));
    ASSERT_EQ(history.packets()[0x0111].size(), 1U);
    EXPECT_EQ(history.packets()[0x0111][0].packets, 2U);
}

TEST(History, HasLongerStepsOfALongerStream) {
    History history;
    for (unsigned second = 0; second < 3600; ++second) {
        history.take(0x0111, 1, at(second));
        history.take(0x0111, 1, at(second + 0.5));
    }
    EXPECT_EQ(history.stepLength(), 1);
    const auto& course = history.packets()[0x0111];
    ASSERT_EQ(course.size(), 3600U);
    EXPECT_EQ(course[3599].step, 3599U);
    EXPECT_TRUE(std::all_of(course.begin(), course.end(), [](const auto& cell) { return cell.packets == 2; }));
}

TEST(History, OfAThousandYearsHasRoom) {
    History history;
    history.take(0x0111, 1, at(0));
    history.take(0x0111, 1, at(4e10));
    history.take(0x0111, 1, at(1e300));
    EXPECT_LE(history.packets()[0x0111].back().step, 4095U);
    EXPECT_EQ(allPackets(history), 3U);
}

/// However many PIDs there are, and however often.
TEST(History, KeepsNoMoreCellsThanItHasRoomFor) {
    History history;
    for (unsigned step = 0; step < 200; ++step) {
        for (inspect::Pid pid = 0; pid < 8192; ++pid) {
            history.take(pid, 1, at(step / 64.0));
        }
    }
    std::size_t cells = 0;
    for (const auto& course : history.packets()) {
        cells += course.size();
    }
    EXPECT_LE(cells, History::MOST_CELLS);
    EXPECT_EQ(allPackets(history), 200U * 8192U);
}

TEST(History, CountsSections) {
    History history;
    history.take(pat(3, 0.0), News::New);
    history.take(pat(3, 0.1), News::Repetition);
    history.take(pat(4, 0.1), News::New);
    history.reject(pat(4, 0.1));
    history.take(pat(4, 0.1), std::nullopt);
    const auto& course = history.tables().at({0, 0x00});
    ASSERT_EQ(course.size(), 2U);
    EXPECT_EQ(course[0].sections, 1U);
    EXPECT_EQ(course[0].distinct, 1U);
    EXPECT_EQ(course[0].version, 3);
    EXPECT_EQ(course[1].step, 6U);
    EXPECT_EQ(course[1].sections, 3U);
    EXPECT_EQ(course[1].distinct, 1U);
    EXPECT_EQ(course[1].crcErrors, 1U);
    EXPECT_EQ(course[1].rejected, 1U);
    EXPECT_EQ(course[1].version, 4);
}

TEST(History, CountsNoMoreTablesThanItHasRoomFor) {
    History history;
    for (inspect::Pid pid = 0; pid < 5000; ++pid) {
        history.take(pat(0, 0.0, pid), News::New);
    }
    EXPECT_EQ(history.tables().size(), 4096U);
}

TEST(History, KeepsEventsAndSumsMeasuresUp) {
    History history;
    history.take(inspect::Event{EventKind::PcrInterval, 0x0100, at(0.000), 0.040});
    history.take(inspect::Event{EventKind::PcrInterval, 0x0100, at(0.010), 0.050});
    history.take(inspect::Event{EventKind::PcrInterval, 0x0100, at(0.012), 0.030});
    history.take(inspect::Event{EventKind::PcrJump, 0x0100, at(0.020), 0, 5, 10});
    const auto& course = history.happenings().at({EventKind::PcrInterval, 0x0100});
    ASSERT_EQ(course.size(), 1U);
    EXPECT_EQ(course[0].count, 3U);
    EXPECT_EQ(course[0].most, 0.050);
    ASSERT_EQ(history.events().size(), 1U);
    EXPECT_EQ(history.events()[0].to, 10);
    EXPECT_EQ(history.happenings().at({EventKind::PcrJump, 0x0100}).size(), 1U);
}

TEST(History, SaysHowManyEventsItHadNoRoomFor) {
    History history;
    for (unsigned each = 0; each < 10003; ++each) {
        history.take(inspect::Event{EventKind::Discontinuity, 0x0111, at(1), 1});
    }
    EXPECT_EQ(history.events().size(), 10000U);
    EXPECT_EQ(history.eventsLeftOut(), 3U);
    EXPECT_EQ(history.happenings().at({EventKind::Discontinuity, 0x0111}).at(0).count, 10003U);
}
