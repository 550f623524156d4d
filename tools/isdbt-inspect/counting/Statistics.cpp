#include "counting/Statistics.h"

#include "naming/Names.h"
#include "tables/TableKinds.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::uint64_t PACKET_SIZE = 188;

} // namespace

std::optional<double> bitRateOfBytes(std::uint64_t bytes, std::optional<double> seconds) {
    constexpr double BITS_PER_BYTE = 8;
    return seconds && *seconds > 0 ? std::optional(static_cast<double>(bytes) * BITS_PER_BYTE / *seconds)
                                   : std::nullopt;
}

double share(std::uint64_t packets, std::uint64_t all) {
    return all == 0 ? 0 : static_cast<double>(packets) / static_cast<double>(all);
}

std::optional<double> bitRate(std::uint64_t packets, std::optional<double> seconds) {
    return bitRateOfBytes(packets * PACKET_SIZE, seconds);
}

void Statistics::take(const Section& section, const std::optional<SeenSections::News>& news) {
    Count* const count = countOf(section);
    if (count == nullptr) {
        return;
    }
    ++count->sections;
    count->bytes += section.size();
    if (!news) {
        ++count->crcErrors;
        return;
    }
    const bool isNew = *news != SeenSections::News::Repetition;
    count->distinct += isNew ? 1U : 0U;
    count->versionChanges += changesVersion(section) ? 1U : 0U;
    if (const std::optional<LongHeader> header = section.longHeader()) {
        ++count->versions[header->version];
    }
    measure(*count, section, isNew);
}

void Statistics::beginPeriod() {
    for (auto& [table, count] : m_counts) {
        count.intervals.between = {};
    }
}

/// Takes down when the first section came.
void Statistics::begin(Count& count, std::optional<double> seconds) {
    std::optional<double>& before = count.intervals.before;
    if (seconds && (!before || *seconds < *before)) {
        before = std::max(0.0, *seconds);
    }
}

/// Measures the interval that ends with the section.
void Statistics::measure(Count& count, const Section& section, bool isNew) {
    const std::optional<LongHeader> header = section.longHeader();
    const Place place = Place::of(section.pid(), section.tableId(), header).inTheOnlyPat();
    if (header) {
        for (const Place& ended : m_places.keysBehind({place.table, header->lastSectionNumber, header->current})) {
            m_places.erase(ended);
        }
    }
    const std::optional<double> now = section.position().seconds;
    const Last* const last = m_places.find(place);
    const bool isRejected = !isNew && last != nullptr && last->rejected;
    count.rejected += isRejected ? 1U : 0U;
    if (now && last != nullptr && last->seconds) {
        // Where the clock's estimate was ahead of the next reference, time seems to go back a little.
        count.intervals.between.take(std::max(0.0, *now - *last->seconds), section.position());
    }
    begin(count, now);
    m_places.put(place, {section.position().packet, now, isRejected});
}

void Statistics::reject(const Section& section) {
    Count* const count = countOf(section);
    if (count == nullptr) {
        return;
    }
    if (section.sound()) {
        const Place place = Place::of(section.pid(), section.tableId(), section.longHeader()).inTheOnlyPat();
        Last* const last = m_places.find(place);
        if (last == nullptr || last->rejected) {
            return;
        }
        last->rejected = true;
        ++count->rejectedDistinct;
    }
    ++count->rejected;
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

/// How long the stream went on behind what came last of each table. What is announced need not come any more.
std::map<Statistics::TableOfPid, double> Statistics::openAt(std::optional<double> end) const {
    std::map<TableOfPid, double> open;
    for (const auto& [place, last] : m_places.entries()) {
        if (end && place.current) {
            double& longest = open[{place.table.pid, place.table.tableId}];
            longest = std::max(longest, *end - last.seconds.value_or(0));
        }
    }
    return open;
}

TableStatistics Statistics::statisticsOf(std::uint8_t tableId, const Count& count, std::optional<double> seconds) {
    return {tableId,
            std::string(tableName(tableId)),
            count.sections,
            count.distinct,
            count.versionChanges,
            count.versions,
            count.crcErrors,
            count.rejected,
            count.rejectedDistinct,
            count.intervals,
            count.bytes,
            bitRateOfBytes(count.bytes, seconds)};
}

PidTraffic Statistics::totalOf(const TrafficCounter& traffic) {
    PidTraffic total;
    for (const Pid pid : traffic.pids()) {
        const PidTraffic& each = *traffic.of(pid);
        for (const auto count : TRAFFIC_COUNTS) {
            total.*count += each.*count;
        }
        total.pcrIntervals.merge(each.pcrIntervals);
        total.ptsIntervals.merge(each.ptsIntervals);
    }
    return total;
}

PidStatistics Statistics::statisticsOf(std::optional<Pid> pid, const Traffic& traffic) const {
    PidStatistics statistics{pid, {}, std::nullopt, {}, 0, std::nullopt, {}};
    if (!pid || traffic.ofPids == nullptr) {
        return statistics;
    }
    if (const PidTraffic* const ofPid = traffic.ofPids->of(*pid)) {
        statistics.traffic = *ofPid;
    }
    const std::uint64_t packets = statistics.traffic.packets;
    statistics.content = m_names.of(*pid);
    statistics.announced = names::PID.of(*pid).empty() ? m_names.announces(*pid) : true;
    statistics.share = share(packets, traffic.allPackets);
    statistics.bitRate = bitRate(packets, traffic.seconds);
    if (traffic.layers != nullptr) {
        statistics.layers = traffic.layers->at(*pid);
    }
    return statistics;
}

std::vector<PidStatistics> Statistics::of(const Traffic& traffic, const std::set<std::uint8_t>& tables) const {
    std::map<std::optional<Pid>, PidStatistics> byPid;
    for (std::size_t number = 0; number < PID_COUNT && tables.empty() && traffic.ofPids != nullptr; ++number) {
        const auto pid = static_cast<Pid>(number);
        if (traffic.ofPids->of(pid) != nullptr || m_names.isExpected(pid)) {
            byPid.emplace(pid, statisticsOf(pid, traffic));
        }
    }
    const std::map<TableOfPid, double> open = openAt(traffic.end);
    for (const auto& [table, count] : m_counts) {
        const auto& [pid, tableId] = table;
        if (tables.empty() || tables.count(tableId) != 0) {
            PidStatistics& ofPid = byPid.emplace(pid, statisticsOf(pid, traffic)).first->second;
            TableStatistics& ofTable = ofPid.tables.emplace_back(statisticsOf(tableId, count, traffic.seconds));
            if (const auto last = open.find(table); last != open.end()) {
                ofTable.intervals.after = std::max(0.0, last->second);
            }
        }
    }
    std::vector<PidStatistics> all;
    all.reserve(byPid.size());
    for (auto& [pid, statistics] : byPid) {
        if (pid && statistics.content.empty() && statistics.tables.empty()) {
            const std::string_view known = names::PID.of(*pid);
            statistics.content = known.empty() && m_names.isProgramMap(*pid) ? "PMT" : known;
        }
        all.push_back(std::move(statistics));
    }
    return all;
}

} // namespace inspect
