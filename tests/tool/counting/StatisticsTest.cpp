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
    traffic.seconds = 4.0;
    return statistics.of(traffic, {});
}

} // namespace

TEST(Statistics, AddsUpIntervals) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, hex("0001 E100"));
    statistics.take(section(0, pat, 1.0), SeenSections::Sight{SeenSections::News::New, std::nullopt});
    statistics.take(section(0, pat, 1.5), SeenSections::Sight{SeenSections::News::Repetition, 1.0});
    statistics.take(section(0, pat, 3.0), SeenSections::Sight{SeenSections::News::Repetition, 1.5});
    const inspect::TableStatistics table = statisticsOf(statistics).at(0).tables.at(0);
    EXPECT_EQ(table.tableName, "PAT");
    EXPECT_EQ(table.sections, 3U);
    EXPECT_EQ(table.distinct, 1U);
    EXPECT_EQ(table.meanInterval, 1.0);
    EXPECT_EQ(table.largestInterval, 1.5);
    EXPECT_EQ(table.bitRate, 96.0); // 3 sections of 16 bytes in 4 s
}

TEST(Statistics, IntervalIsNeverNegative) {
    Statistics statistics;
    const ByteVector pat = longSection(0x00, {}, {});
    statistics.take(section(0, pat, 1.0), SeenSections::Sight{SeenSections::News::Repetition, 1.001});
    EXPECT_EQ(statisticsOf(statistics).at(0).tables.at(0).meanInterval, 0.0);
}

/// Versions belong to a table_id_extension: two tables on one PID do not change each other's.
TEST(Statistics, EachExtensionHasItsOwnVersions) {
    Statistics statistics;
    const auto take = [&statistics](QUOR_U16 extension, unsigned version) {
        LongHeader header;
        header.extension = extension;
        header.version = version;
        statistics.take(section(0x0130, longSection(0x74, header, hex("F000 F000"))),
                        SeenSections::Sight{SeenSections::News::New, std::nullopt});
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
    statistics.take(inspect::Section(pat.data(), pat.size(), {}),
                    SeenSections::Sight{SeenSections::News::New, std::nullopt});
    const std::vector<inspect::PidStatistics> all = statisticsOf(statistics);
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(all[0].pid, std::nullopt);
    EXPECT_EQ(all[0].discontinuities, std::nullopt);
    EXPECT_EQ(all[0].tables.at(0).sections, 1U);
}

/// A broken stream may pretend to carry any table anywhere.
TEST(Statistics, CountsNoMoreTablesThanItHasRoomFor) {
    Statistics statistics;
    for (unsigned pid = 0; pid < 32; ++pid) {
        for (unsigned tableId = 0; tableId < 256; ++tableId) {
            statistics.take(section(static_cast<Pid>(pid), longSection(static_cast<QUOR_U8>(tableId), {}, {})),
                            SeenSections::Sight{SeenSections::News::New, std::nullopt});
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
