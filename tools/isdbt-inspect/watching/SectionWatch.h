#pragma once

#include "sections/BoundedMap.h"
#include "sections/SeenSections.h"
#include "watching/Alarms.h"

namespace inspect {

/// Watches what sections say that they never should, one by one and from one to the next.
class SectionWatch {
public:
    explicit SectionWatch(Alarms& alarms) : m_alarms(alarms) {}

    void take(const Section& section);

    /// What comes now has nothing to do with what came.
    void restart();

    /// PIDs that have tables of their own, and no others.
    static PidSet reservedPids();

private:
    /// Of the versions of a section.
    struct Versions {
        std::uint8_t now;
        std::uint8_t before;
        std::uint32_t content;     ///< of the one now
        std::uint64_t returns = 0; ///< of the one before, one after the other
        Position returned{};
    };

    void checkTableId(const Section& section);
    void checkGap(const Section& section, const LongHeader& header);
    void checkVersion(const Section& section, const LongHeader& header);
    void checkTime(const Section& section);
    void learnNetworks(const Section& section);
    void checkNetwork(const Section& section, const LongHeader& header);

    Alarms& m_alarms;
    BoundedMap<Place, Versions> m_versions{SeenSections::CAPACITY};
    BoundedMap<TableKey, Position> m_ends{SeenSections::CAPACITY};               ///< of the last section of each table
    BoundedMap<std::uint16_t, std::uint16_t> m_networks{SeenSections::CAPACITY}; ///< of transport streams, by the NIT
    std::map<std::uint8_t, std::int32_t> m_times;                                ///< of day, by table_id
};

} // namespace inspect
