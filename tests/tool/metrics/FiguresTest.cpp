#include "metrics/Figures.h"

#include <algorithm>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <regex>
#include <set>

namespace {

using namespace inspect;
using testing::HasSubstr;

std::set<std::string> names() {
    std::set<std::string> names;
    for (const Metric& metric : metrics()) {
        names.insert(metric.name);
    }
    return names;
}

std::string textOf(const std::string& path) {
    std::ifstream file(path);
    EXPECT_TRUE(file) << path;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// The metrics that a text names.
std::set<std::string> namedIn(const std::string& text) {
    static const std::regex NAME("isdbt_[a-z_]+");
    std::set<std::string> named;
    for (std::sregex_iterator each(text.begin(), text.end(), NAME); each != std::sregex_iterator(); ++each) {
        named.insert(each->str());
    }
    return named;
}

Figures::Time at(int seconds) {
    return Figures::Time(std::chrono::seconds(seconds));
}

Summary summary(std::uint64_t packets, std::optional<double> seconds) {
    Summary summary{};
    summary.packets = packets;
    summary.seconds = seconds;
    return summary;
}

/// The value of the only figure of a metric; nothing when there is none.
std::optional<double> valueOf(const Figures& figures, const std::string& name) {
    std::vector<Metric> all = metrics();
    figures.addTo(all);
    const auto metric = std::find_if(all.begin(), all.end(), [&name](const Metric& each) { return each.name == name; });
    return metric->figures.empty() ? std::nullopt : std::optional(metric->figures.front().value);
}

TEST(Figures, NamesGoByTheConventions) {
    for (const Metric& metric : metrics()) {
        EXPECT_EQ(metric.name.rfind("isdbt_", 0), 0U) << metric.name;
        EXPECT_EQ(std::regex_search(metric.name, std::regex("_total$")), metric.isCounter) << metric.name;
        EXPECT_FALSE(metric.help.empty()) << metric.name;
    }
    EXPECT_EQ(names().size(), metrics().size());
}

TEST(Figures, RateIsThatOfTheLastPackets) {
    Figures figures("source");
    figures.update(summary(1000, {}), false, at(1));
    EXPECT_EQ(valueOf(figures, "isdbt_bit_rate_bits_per_second"), std::nullopt);
    figures.update(summary(2000, 2), false, at(2));
    figures.update(summary(5000, 3), false, at(3));
    EXPECT_EQ(valueOf(figures, "isdbt_bit_rate_bits_per_second"), 3000 * 188 * 8);
    figures.update(summary(5000, 3), false, at(4));
    EXPECT_EQ(valueOf(figures, "isdbt_bit_rate_bits_per_second"), 0);
}

TEST(Figures, SayWhenPacketsLastCame) {
    Figures figures("source");
    figures.update(summary(0, {}), false, at(10));
    EXPECT_EQ(valueOf(figures, "isdbt_last_packet_timestamp_seconds"), std::nullopt);
    figures.update(summary(7, {}), false, at(11));
    figures.update(summary(7, {}), false, at(12));
    EXPECT_EQ(valueOf(figures, "isdbt_last_packet_timestamp_seconds"), 11);
    EXPECT_EQ(valueOf(figures, "isdbt_up"), 1);
    figures.update(summary(7, {}), true, at(13));
    EXPECT_EQ(valueOf(figures, "isdbt_up"), 0);
}

TEST(Figures, SayWhenATableLastCame) {
    Figures figures("source");
    Summary now = summary(7, {});
    PidStatistics pid{};
    pid.pid = 0x1FC8;
    pid.tables.push_back({});
    pid.tables.front().tableId = 0xC8;
    pid.tables.front().sections = 3;
    now.statistics.push_back(pid);
    figures.update(now, false, at(20));
    figures.update(now, false, at(30));
    std::vector<Metric> all = metrics();
    figures.addTo(all);
    const auto seen = std::find_if(all.begin(), all.end(), [](const Metric& each) {
        return each.name == "isdbt_table_last_seen_timestamp_seconds";
    });
    ASSERT_EQ(seen->figures.size(), 1U);
    EXPECT_EQ(seen->figures.front().value, 20);
    EXPECT_EQ(seen->figures.front().labels, (Labels{{"source", "source"}, {"pid", "0x1FC8"}, {"table", "0xC8"}}));
}

TEST(Figures, HaveAnAlarmAsLongAsOneOfItsTablesIsAtFault) {
    const FaultPlace one{0x0100, 0x02, 0xE6A0};
    const FaultPlace other{0x0100, 0x02, 0xE6B8};
    Figures figures("source");
    EXPECT_EQ(valueOf(figures, "isdbt_alarm_active"), std::nullopt);
    figures.alarm("pmt_interval", one, true);
    figures.alarm("pmt_interval", other, true);
    figures.alarm("pmt_interval", one, false);
    EXPECT_EQ(valueOf(figures, "isdbt_alarm_active"), 1);
    figures.alarm("pmt_interval", other, false);
    EXPECT_EQ(valueOf(figures, "isdbt_alarm_active"), 0);
    std::vector<Metric> all = metrics();
    figures.addTo(all);
    EXPECT_EQ(all.back().figures.front().labels,
              (Labels{{"source", "source"}, {"pid", "0x0100"}, {"table", "PMT"}, {"check", "pmt_interval"}}));
}

TEST(Figures, ForgetNoAlarmsButTakeNoMoreThanAMultiplexHas) {
    Figures figures("source");
    for (unsigned pid = 0; pid < 8192; ++pid) {
        figures.alarm("pid_error", {static_cast<Pid>(pid), std::nullopt, std::nullopt}, true);
    }
    std::vector<Metric> all = metrics();
    figures.addTo(all);
    EXPECT_EQ(all.back().figures.size(), 4096U);
}

TEST(MonitoringDocs, NameEachMetric) {
    EXPECT_EQ(namedIn(textOf(DOCS_FOLDER "/monitoring.md")), names());
}

TEST(MonitoringDocs, ExamplesAskForMetricsThatThereAre) {
    for (const char* const file : {"isdbt-inspect.rules.yml", "dashboard.json"}) {
        const std::set<std::string> named = namedIn(textOf(std::string(DOCS_FOLDER "/monitoring/") + file));
        EXPECT_FALSE(named.empty());
        for (const std::string& name : named) {
            EXPECT_EQ(names().count(name), 1U) << name << " in " << file;
        }
    }
}

} // namespace
