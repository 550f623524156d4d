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
    std::optional<double> end = {};       ///< when the last one was sent, by the stream's clock
    const LayersOfPids* layers = nullptr; ///< null when they do not tell
};

/// What part of all packets these are, 0 to 1.
double share(std::uint64_t packets, std::uint64_t all);

/// Of so many bytes; nothing without a clock, or when no time passed.
std::optional<double> bitRateOfBytes(std::uint64_t bytes, std::optional<double> seconds);

/// Of so many packets of 188 bytes.
std::optional<double> bitRate(std::uint64_t packets, std::optional<double> seconds);

/// Counts what comes of each table on each PID.
class Statistics {
public:
    /// How many tables are counted, each on each of its PIDs. No multiplex comes near; a broken stream must not fill
    /// the memory.
    static constexpr std::size_t CAPACITY = 4096;

    /// A section came, sound or not.
    /// @param news how it compares with its place; nothing when it is not sound
    void take(const Section& section, const std::optional<SeenSections::News>& news);

    /// A period begins for which it is measured anew how long things take. Counts go on.
    void beginPeriod();

    /// The stream's clock is known from now on.
    /// @param secondsOf std::optional<double>(std::uint64_t packet), of those that have come
    template <class Clock> void date(const Clock& secondsOf) {
        m_places.forEach([&](const Place& place, Last& last) {
            last.seconds = last.packet == 0 ? std::nullopt : secondsOf(last.packet);
            begin(m_counts[{place.table.pid, place.table.tableId}], last.seconds);
        });
    }

    /// The library does not take the section, which came last at its place. Repetitions of it count by themselves.
    void reject(const Section& section);

    /// Learns from the fields of a table what the PIDs carry.
    void learn(std::uint8_t tableId, const Fields& fields) { m_names.learn(tableId, fields); }

    /// Learns where keys come, from a section of whatever table.
    void learnKeys(const Section& section) { m_names.learnKeys(section); }

    /// What came, by PID.
    /// @param tables the table_id of those that are asked for; all tables, and all PIDs, when there is none
    std::vector<PidStatistics> of(const Traffic& traffic, const std::set<std::uint8_t>& tables) const;

    /// What came on all PIDs together.
    static PidTraffic totalOf(const TrafficCounter& traffic);

private:
    using TableOfPid = std::pair<std::optional<Pid>, std::uint8_t>;

    struct Count {
        std::uint64_t sections = 0;
        std::uint64_t distinct = 0;
        std::uint64_t versionChanges = 0;
        std::map<std::uint8_t, std::uint64_t> versions;
        std::uint64_t crcErrors = 0;
        std::uint64_t rejected = 0;
        std::uint64_t rejectedDistinct = 0;
        std::uint64_t bytes = 0;
        Intervals intervals;
    };

    /// What came last at a place of a table.
    struct Last {
        std::uint64_t packet;
        std::optional<double> seconds;
        bool rejected;
    };

    Count* countOf(const Section& section);
    static void begin(Count& count, std::optional<double> seconds);
    void measure(Count& count, const Section& section, bool isNew);
    bool changesVersion(const Section& section);
    std::map<TableOfPid, double> openAt(std::optional<double> end) const;
    static TableStatistics statisticsOf(std::uint8_t tableId, const Count& count, std::optional<double> seconds);
    PidStatistics statisticsOf(std::optional<Pid> pid, const Traffic& traffic) const;

    std::map<TableOfPid, Count> m_counts;
    BoundedMap<TableKey, std::uint8_t> m_versions{SeenSections::CAPACITY};
    BoundedMap<Place, Last> m_places{SeenSections::CAPACITY};
    StreamNames m_names;
};

} // namespace inspect
