#pragma once

#include "counting/StreamNames.h"
#include "reports/Report.h"
#include "sections/BoundedMap.h"
#include "sections/SeenSections.h"
#include "traffic/TrafficCounter.h"
#include "transmission/TransmissionReader.h"

#include <map>
#include <set>
#include <utility>
#include <vector>

namespace inspect {

/// The packets of a stream.
struct Traffic {
    const TrafficCounter* ofPids = nullptr; ///< null when there are none
    std::uint64_t allPackets = 0;
    std::optional<double> seconds = {};   ///< that they took
    const LayersOfPids* layers = nullptr; ///< null when they do not tell
};

/// Counts what comes of each table on each PID.
class Statistics {
public:
    /// How many tables are counted, each on each of its PIDs. No multiplex comes near; a broken stream must not fill
    /// the memory.
    static constexpr std::size_t CAPACITY = 4096;

    /// A section came, sound or not.
    /// @param sight how it compares with its place; nothing when it is not sound
    void take(const Section& section, const std::optional<SeenSections::Sight>& sight);

    /// The library did not take the section.
    void reject(const Section& section);

    /// Learns from the fields of a program map what the PIDs carry.
    void learn(const Fields& programMap) { m_names.learn(programMap); }

    /// What came, by PID.
    /// @param tables the table_id of those that are asked for; all tables, and all PIDs, when there is none
    std::vector<PidStatistics> of(const Traffic& traffic, const std::set<std::uint8_t>& tables) const;

private:
    using TableOfPid = std::pair<std::optional<Pid>, std::uint8_t>;

    struct Count {
        std::uint64_t sections = 0;
        std::uint64_t distinct = 0;
        std::uint64_t versionChanges = 0;
        std::uint64_t crcErrors = 0;
        std::uint64_t rejected = 0;
        std::uint64_t bytes = 0;
        std::uint64_t intervals = 0;
        double time = 0; ///< of all intervals
        double largest = 0;
    };

    Count* countOf(const Section& section);
    bool changesVersion(const Section& section);
    static TableStatistics statisticsOf(std::uint8_t tableId, const Count& count, std::optional<double> seconds);
    PidStatistics statisticsOf(std::optional<Pid> pid, const Traffic& traffic) const;

    std::map<TableOfPid, Count> m_counts;
    BoundedMap<TableKey, std::uint8_t> m_versions{SeenSections::CAPACITY};
    StreamNames m_names;
};

} // namespace inspect
