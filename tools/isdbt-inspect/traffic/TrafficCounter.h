#pragma once

#include "packets/Event.h"
#include "packets/Pid.h"
#include "traffic/PidTraffic.h"

#include <array>
#include <memory>

namespace inspect {

/// Looks at every packet of a stream.
class TrafficCounter {
public:
    /// @param events where it tells what happens
    explicit TrafficCounter(Events& events) : m_events(events) {}

    /// @param packet 188 bytes
    void take(const std::uint8_t* packet, const Position& position);

    /// Null when no packet came on it.
    const PidTraffic* of(Pid pid) const { return m_ofPids.at(pid).get(); }

private:
    Events& m_events;
    std::array<std::unique_ptr<PidTraffic>, PID_COUNT> m_ofPids;
};

} // namespace inspect
