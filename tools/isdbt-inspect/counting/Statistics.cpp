#include "counting/Statistics.h"

#include "naming/Names.h"
#include "tables/TableKinds.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr double PACKET_SIZE = 188;
constexpr double BITS_PER_BYTE = 8;

std::optional<double> bitRate(double bytes, std::optional<double> seconds) {
    return seconds ? std::optional(bytes * BITS_PER_BYTE / *seconds) : std::nullopt;
}

} // namespace

void Statistics::take(const Section& section, const std::optional<SeenSections::Sight>& sight) {
    Count* const count = countOf(section);
    if (count == nullptr) {
        return;
    }
    ++count->sections;
    count->bytes += section.size();
    if (!sight) {
        ++count->crcErrors;
        return;
    }
    count->distinct += sight->news == SeenSections::News::Repetition ? 0U : 1U;
    count->versionChanges += changesVersion(section) ? 1U : 0U;
    if (sight->before && section.position().seconds) {
        // Where the clock's estimate was ahead of the next reference, time seems to go back a little.
        const double interval = std::max(0.0, *section.position().seconds - *sight->before);
        ++count->intervals;
        count->time += interval;
        count->largest = std::max(count->largest, interval);
    }
}

void Statistics::reject(const Section& section) {
    if (Count* const count = countOf(section)) {
        ++count->rejected;
    }
}

/// Null when there is no room for another. The table_id of a damaged section may be wrong: it must be known.
Statistics::Count* Statistics::countOf(const Section& section) {
    const TableOfPid key{section.pid(), section.tableId()};
    if (const auto found = m_counts.find(key); found != m_counts.end()) {
        return &found->second;
    }
    const bool credible = !tableName(section.tableId()).empty() || section.sound();
    return credible && m_counts.size() < CAPACITY ? &m_counts[key] : nullptr;
}

bool Statistics::changesVersion(const Section& section) {
    const std::optional<LongHeader> header = section.longHeader();
    if (!header || !header->current) {
        return false;
    }
    const TableKey table{section.pid(), section.tableId(), header->extension};
    const std::uint8_t* const before = m_versions.find(table);
    const bool changes = before != nullptr && *before != header->version;
    m_versions.put(table, header->version);
    return changes;
}

TableStatistics Statistics::statisticsOf(std::uint8_t tableId, const Count& count, std::optional<double> seconds) {
    TableStatistics table{tableId,
                          std::string(tableName(tableId)),
                          count.sections,
                          count.distinct,
                          count.versionChanges,
                          count.crcErrors,
                          count.rejected,
                          std::nullopt,
                          std::nullopt,
                          bitRate(static_cast<double>(count.bytes), seconds)};
    if (count.intervals != 0) {
        table.meanInterval = count.time / static_cast<double>(count.intervals);
        table.largestInterval = count.largest;
    }
    return table;
}

PidStatistics Statistics::statisticsOf(std::optional<Pid> pid, const Traffic& traffic) const {
    PidStatistics statistics{pid, {}, 0, 0, std::nullopt, std::nullopt, {}};
    const PidTraffic* const ofPid = pid && traffic.ofPids != nullptr ? traffic.ofPids->of(*pid) : nullptr;
    if (ofPid == nullptr) {
        return statistics;
    }
    statistics.content = m_names.of(*pid);
    statistics.packets = ofPid->packets;
    statistics.share = static_cast<double>(statistics.packets) / static_cast<double>(traffic.allPackets);
    statistics.bitRate = bitRate(static_cast<double>(statistics.packets) * PACKET_SIZE, traffic.seconds);
    if (*pid != NULL_PID) {
        statistics.discontinuities = ofPid->discontinuities;
    }
    if (traffic.layers != nullptr) {
        statistics.layers = traffic.layers->at(*pid);
    }
    return statistics;
}

std::vector<PidStatistics> Statistics::of(const Traffic& traffic, const std::set<std::uint8_t>& tables) const {
    std::map<std::optional<Pid>, PidStatistics> byPid;
    if (traffic.ofPids != nullptr && tables.empty()) {
        for (const Pid pid : traffic.ofPids->pids()) {
            byPid.emplace(pid, statisticsOf(pid, traffic));
        }
    }
    for (const auto& [table, count] : m_counts) {
        const auto& [pid, tableId] = table;
        if (tables.empty() || tables.count(tableId) != 0) {
            PidStatistics& ofPid = byPid.emplace(pid, statisticsOf(pid, traffic)).first->second;
            ofPid.tables.push_back(statisticsOf(tableId, count, traffic.seconds));
        }
    }
    std::vector<PidStatistics> all;
    all.reserve(byPid.size());
    for (auto& [pid, statistics] : byPid) {
        if (pid && statistics.content.empty() && statistics.tables.empty()) {
            statistics.content = names::PID.of(*pid);
        }
        all.push_back(std::move(statistics));
    }
    return all;
}

} // namespace inspect
