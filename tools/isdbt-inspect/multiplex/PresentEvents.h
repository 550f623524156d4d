#pragma once

#include "sections/BoundedMap.h"
#include "sections/SectionGatherer.h"

namespace inspect {

/// The events that are on the air, as the EIT says of the services of its own transport stream. Of the EIT, which the
/// library does not understand, this is all that is looked at: it tells the clock by which a station writes its times.
class PresentEvents {
public:
    /// How much a station may be ahead or behind with what it says.
    static constexpr std::uint32_t TOLERANCE = 300; // seconds

    PresentEvents();

    /// The PIDs from whose packets it learns.
    const PidSet& pids() const { return m_gatherer.pids(); }

    /// @param packet 188 bytes, of any PID
    void take(const std::uint8_t* packet, const Position& position);

    /// Whether one of those that were said to be present at a place of the stream has this time in it.
    /// @param unixTime by the station's clock, as if it went by UTC
    bool have(std::int64_t unixTime, const Position& position) const;

private:
    /// How many services may have one. No multiplex comes near; a broken stream must not fill the memory.
    static constexpr std::size_t CAPACITY = 256;

    struct Event {
        std::int64_t begin; ///< as unixTime above
        std::int64_t end;
        Position said; ///< where it was last said to be present
    };

    void take(const Section& section);
    static std::optional<Event> firstIn(const Section& section);

    SectionGatherer m_gatherer;
    BoundedMap<std::uint16_t, Event> m_events{CAPACITY}; ///< by service_id
};

} // namespace inspect
