#include "packets/WallClock.h"

#include <chrono>
#include <cmath>
#include <fmt/chrono.h>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::int64_t SECOND = 1000;

} // namespace

void WallClock::set(double seconds, std::int64_t unixTime) {
    const std::int64_t said = unixTime * SECOND;
    const std::optional<WallTime> expected = at(seconds);
    if (!expected || std::abs(expected->milliseconds - said) > SECOND) {
        m_anchor = Anchor{seconds, said};
    }
}

std::optional<WallTime> WallClock::at(std::optional<double> seconds) const {
    if (!m_anchor || !seconds) {
        return std::nullopt;
    }
    const auto passed = std::llround((*seconds - m_anchor->seconds) * static_cast<double>(SECOND));
    return WallTime{m_anchor->milliseconds + passed, WallTime::Source::TimeTable};
}

WallTime arrivalTime() {
    using std::chrono::milliseconds;
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return {std::chrono::duration_cast<milliseconds>(now).count(), WallTime::Source::Arrival};
}

std::string rfc3339(const WallTime& time) {
    const std::int64_t fraction = (time.milliseconds % SECOND + SECOND) % SECOND; // it may be before 1970
    const auto whole = static_cast<std::time_t>((time.milliseconds - fraction) / SECOND);
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z", fmt::gmtime(whole), fraction);
}

} // namespace inspect
