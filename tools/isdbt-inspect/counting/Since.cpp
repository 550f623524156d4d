#include "counting/Since.h"

#include "counting/Statistics.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::uint64_t TableStatistics::*TABLE_COUNTS[] = {
    &TableStatistics::sections,  &TableStatistics::distinct, &TableStatistics::versionChanges,
    &TableStatistics::crcErrors, &TableStatistics::rejected, &TableStatistics::rejectedDistinct,
    &TableStatistics::bytes};

void subtract(PidTraffic& traffic, const PidTraffic& before) {
    for (const auto count : TRAFFIC_COUNTS) {
        traffic.*count -= before.*count;
    }
}

void subtract(TableStatistics& table, const TableStatistics& before) {
    for (const auto count : TABLE_COUNTS) {
        table.*count -= before.*count;
    }
    for (const auto& [version, sections] : before.versions) {
        if ((table.versions[version] -= sections) == 0) {
            table.versions.erase(version);
        }
    }
}

/// What there is of the same PID, or table. What came once is there ever after.
template <class Each, class Key> const Each* find(const std::vector<Each>& all, const Each& each, Key Each::*key) {
    const auto found = std::find_if(all.begin(), all.end(), [&](const Each& other) { return other.*key == each.*key; });
    return found == all.end() ? nullptr : &*found;
}

void subtract(PidStatistics& pid, const PidStatistics& before) {
    subtract(pid.traffic, before.traffic);
    for (TableStatistics& table : pid.tables) {
        if (const auto* const found = find(before.tables, table, &TableStatistics::tableId)) {
            subtract(table, *found);
        }
    }
}

void rate(PidStatistics& pid, const Summary& summary) {
    pid.share = share(pid.traffic.packets, summary.packets);
    pid.bitRate = bitRate(pid.traffic.packets, summary.seconds);
    for (TableStatistics& table : pid.tables) {
        table.bitRate = bitRateOfBytes(table.bytes, summary.seconds);
    }
}

} // namespace

Summary since(Summary whole, const Summary& before) {
    whole.packets -= before.packets;
    whole.sections -= before.sections;
    whole.skippedBytes -= before.skippedBytes;
    if (whole.seconds) {
        *whole.seconds -= before.seconds.value_or(0);
    }
    whole.bitRate = bitRate(whole.packets, whole.seconds);
    for (Finding& finding : whole.damages) {
        finding.count -= countOf(before, finding.damage);
    }
    subtract(whole.traffic, before.traffic);
    for (PidStatistics& pid : whole.statistics) {
        if (const auto* const found = find(before.statistics, pid, &PidStatistics::pid)) {
            subtract(pid, *found);
        }
        rate(pid, whole);
    }
    return whole;
}

} // namespace inspect
