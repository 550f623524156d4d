#include "counting/Statistics.h"

#include "support/Bytes.h"

#include <gtest/gtest.h>

using inspect::Pid;
using inspect::SeenSections;
using inspect::Statistics;

namespace {

inspect::Section section(Pid pid, const ByteVector& bytes, std::optional<double> seconds = std::nullopt) {
    inspect::Section::Memory copy(static_cast<std::uint8_t*>(std::malloc(bytes.size())));
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return inspect::Section(pid, std::move(copy), inspect::Position{1, 0, seconds});
}

std::vector<inspect::PidStatistics> statisticsOf(const Statistics& statistics) {
    inspect::Traffic traffic;
    traffic.seconds = traffic.end = 4.0;
    return statistics.of(traffic, {});
}

} // namespace

TEST(Statistics, AddsUpIntervals) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    statistics.take(section(0, pat, 1.0), SeenSections::News::New);
    statistics.take(section(0, pat, 1.5), SeenSections::News::Repetition);
    statistics.take(section(0, pat, 3.0), SeenSections::News::Repetition);
    const inspect::TableStatistics table = statisticsOf(statistics).at(0).tables.at(0);
    EXPECT_EQ(table.tableName, "PAT");
    EXPECT_EQ(table.sections, 3U);
    EXPECT_EQ(table.distinct, 1U);
    EXPECT_EQ(table.intervals.between.mean(), 1.0);
    EXPECT_EQ(table.intervals.between.maximum(), 1.5);
    EXPECT_EQ(table.bitRate, 96.0); // 3 sections of 16 bytes in 4 s
}

/// What a table that stops shows: how long it is away, and that this need not be all.
TEST(Statistics, IntervalsAtTheEndsAreOpen) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    statistics.take(section(0, pat, 1.0), SeenSections::News::New);
    statistics.take(section(0, pat, 1.5), SeenSections::News::Repetition);
    const inspect::Intervals intervals = statisticsOf(statistics).at(0).tables.at(0).intervals;
    EXPECT_EQ(intervals.before, 1.0);
    EXPECT_EQ(intervals.after, 2.5); // until 4 s
    const std::optional<inspect::LongestInterval> longest = inspect::longestOf(intervals, 4.0);
    ASSERT_TRUE(longest);
    EXPECT_EQ(longest->seconds, 2.5);
    EXPECT_EQ(longest->from, 1.5);
    EXPECT_EQ(longest->to, std::nullopt);
}

/// Before two references nobody knows the time; it is known behind them.
TEST(Statistics, WhatComesBeforeTheClockIsDatedBehind) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    statistics.take(section(0, pat), SeenSections::News::New);
    statistics.date([](std::uint64_t packet) { return std::optional(0.25 * static_cast<double>(packet)); });
    statistics.take(section(0, pat, 3.0), SeenSections::News::Repetition);
    const inspect::Intervals intervals = statisticsOf(statistics).at(0).tables.at(0).intervals;
    EXPECT_EQ(intervals.before, 0.25);
    EXPECT_EQ(intervals.between.count(), 1U);
    EXPECT_EQ(intervals.between.maximum(), 2.75);
}

/// Of several sections one may stop alone. One that the table has no more is not missed.
TEST(Statistics, TheSectionThatWaitsLongestCounts) {
    Statistics statistics;
    const auto take = [&statistics](QUOR_U8 number, QUOR_U8 last, double seconds) {
        LongHeader header;
        header.section = number;
        header.last = last;
        statistics.take(section(0, longSection(0x00, header, {}), seconds), SeenSections::News::Repetition);
    };
    take(0, 1, 0.5);
    take(1, 1, 0.75);
    take(0, 1, 3.5);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).intervals.after, 3.25);
    take(0, 0, 3.75);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).intervals.after, 0.25);
}

TEST(Statistics, AnnouncedVersionNeedNotComeAgain) {
    Statistics statistics;
    LongHeader next;
    next.current = false;
    statistics.take(section(0, longSection(0x00, next, {}), 1.0), SeenSections::News::New);
    statistics.take(section(0, longSection(0x00, {}, {}), 3.5), SeenSections::News::New);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).intervals.after, 0.5);
}

TEST(Statistics, RejectedSectionsCountEachTimeThatTheyCome) {
    Statistics statistics;
    const inspect::Section refused = section(0x0101, longSection(0x02, {}, {}));
    statistics.take(refused, SeenSections::News::New);
    statistics.reject(refused);
    statistics.take(refused, SeenSections::News::Repetition);
    statistics.take(refused, SeenSections::News::Repetition);
    const inspect::Section taken = section(0x0101, longSection(0x02, {}, hex("E100 F000")));
    statistics.take(taken, SeenSections::News::New);
    statistics.take(taken, SeenSections::News::Repetition);
    const inspect::TableStatistics table = statisticsOf(statistics).at(0).tables.at(0);
    EXPECT_EQ(table.sections, 5U);
    EXPECT_EQ(table.distinct, 2U);
    EXPECT_EQ(table.rejected, 3U);
    EXPECT_EQ(table.rejectedDistinct, 1U);
}

TEST(Statistics, CountsTheSectionsOfEachVersion) {
    Statistics statistics;
    for (const unsigned version : {3U, 3U, 31U, 3U}) {
        LongHeader header;
        header.version = version;
        statistics.take(section(0, longSection(0x00, header, {})), SeenSections::News::New);
    }
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).versions,
              (std::map<std::uint8_t, std::uint64_t>{{3, 3}, {31, 1}}));
}

TEST(Statistics, IntervalIsNeverNegative) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, {});
    statistics.take(section(0, pat, 1.001), SeenSections::News::New);
    statistics.take(section(0, pat, 1.0), SeenSections::News::Repetition);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).intervals.between.mean(), 0.0);
}

/// Versions belong to a table_id_extension: two tables on one PID do not change each other's.
TEST(Statistics, EachExtensionHasItsOwnVersions) {
    Statistics statistics;
    const auto take = [&statistics](QUOR_U16 extension, unsigned version) {
        LongHeader header;
        header.extension = extension;
        header.version = version;
        statistics.take(section(0x0130, longSection(0x74, header, hex("F000 F000"))), SeenSections::News::New);
    };
    take(1, 3);
    take(9, 7);
    take(1, 3);
    take(9, 7);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).versionChanges, 0U);
    take(9, 8);
    take(1, 2);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).versionChanges, 2U);
}

TEST(Statistics, SectionsThatDidNotComeInPacketsHaveNoPid) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, {});
    statistics.take(inspect::Section(pat.data(), pat.size(), {}), SeenSections::News::New);
    const std::vector<inspect::PidStatistics> all = statisticsOf(statistics);
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].pid, std::nullopt);
    EXPECT_EQ(all[0].tables.at(0).sections, 1U);
}

/// A broken stream may pretend to carry any table anywhere.
TEST(Statistics, CountsNoMoreTablesThanItHasRoomFor) {
    Statistics statistics;
    for (unsigned pid = 0; pid < 32; ++pid) {
        for (unsigned tableId = 0; tableId < 256; ++tableId) {
            statistics.take(section(static_cast<Pid>(pid), longSection(static_cast<QUOR_U8>(tableId), {}, {})),
                            SeenSections::News::New);
        }
    }
    EXPECT_EQ(statisticsOf(statistics).size(), 16U); // 4096 tables
}

TEST(Statistics, DamagedSectionMakesNoTableThatNobodyKnows) {
    Statistics statistics;
    ByteVector damaged = longSection(0x4A, {}, {});
    damaged.back() ^= 0x01U;
    statistics.take(section(0x0011, damaged), std::nullopt);
    EXPECT_TRUE(statisticsOf(statistics).empty());
    damaged[0] = 0x42;
    statistics.take(section(0x0011, damaged), std::nullopt);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).crcErrors, 1U);
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).distinct, 0U);
}
