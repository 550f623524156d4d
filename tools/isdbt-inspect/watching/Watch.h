#pragma once

#include "packets/Event.h"
#include "reports/Alarm.h"
#include "reports/Report.h"
#include "sections/Section.h"
#include "traffic/TrafficCounter.h"

#include <vector>

namespace inspect {

/// Watches a stream for what breaks its limits. What happens is told to it as it happens; time passes by tick().
class Watch {
public:
    explicit Watch(const TrafficCounter& traffic) : m_traffic(traffic) {}

    void take(const Event& event);

    /// A section came whole, sound or not, whether or not it says something new.
    void take(const Section& section);

    /// A sound section said something new, and the library took it or did not.
    void learn(const SectionReport& report);

    /// Time has passed: what should have come by now and did not?
    void tick(const Position& now);

    /// Alarms that began or ended since the last call.
    std::vector<Alarm> news();

    /// All alarms, those that are over, too.
    const std::vector<Alarm>& alarms() const { return m_alarms; }

private:
    const TrafficCounter& m_traffic;
    std::vector<Alarm> m_alarms;
};

} // namespace inspect
