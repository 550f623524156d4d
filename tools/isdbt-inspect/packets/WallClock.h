#pragma once

#include "packets/Position.h"

#include <cmath>
#include <optional>
#include <string>

namespace inspect {

/// Tells the time of the world that belongs to a time of the stream, once the stream has said what time it is.
class WallClock {
public:
    /// The stream says what time it is. It says so in whole seconds: where that is no news, the time goes on evenly.
    /// @param seconds of the stream
    /// @param unixTime in UTC
    void set(double seconds, std::int64_t unixTime);

    bool isSet() const { return m_anchor.has_value(); }

    /// Nothing before it was set.
    std::optional<WallTime> at(std::optional<double> seconds) const {
        return m_anchor && seconds ? std::optional(from(*m_anchor, *seconds)) : std::nullopt;
    }

    /// When the stream began, by what it said first.
    std::optional<WallTime> atBegin() const;

private:
    struct Anchor {
        double seconds;
        std::int64_t milliseconds;
    };

    static WallTime from(const Anchor& anchor, double seconds) {
        constexpr double MILLISECONDS = 1000;
        return {anchor.milliseconds + std::llround((seconds - anchor.seconds) * MILLISECONDS),
                WallTime::Source::TimeTable};
    }

    std::optional<Anchor> m_anchor;
    std::optional<Anchor> m_first;
};

/// What this machine's clock shows.
WallTime arrivalTime();

/// "2025-06-15T21:30:00.000Z"
std::string rfc3339(const WallTime& time);

/// The milliseconds since 1970 of such a text; nothing when it is none.
std::optional<std::int64_t> readRfc3339(const std::string& text);

} // namespace inspect
