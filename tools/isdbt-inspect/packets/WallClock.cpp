#include "packets/WallClock.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <ctime>
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
        m_first = m_first ? m_first : m_anchor;
    }
}

std::optional<WallTime> WallClock::atBegin() const {
    return m_first ? std::optional(from(*m_first, 0)) : std::nullopt;
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

std::optional<std::int64_t> readRfc3339(const std::string& text) {
    constexpr std::size_t FRACTION_SIZE = 5; // ".000Z"
    std::tm date{};
    const char* const rest = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%S", &date);
    const char* const end = text.c_str() + text.size();
    int fraction = 0;
    if (rest == nullptr || static_cast<std::size_t>(end - rest) != FRACTION_SIZE || *rest != '.' || end[-1] != 'Z' ||
        std::from_chars(rest + 1, end - 1, fraction).ptr != end - 1) {
        return std::nullopt;
    }
    return static_cast<std::int64_t>(timegm(&date)) * SECOND + fraction;
}

} // namespace inspect
