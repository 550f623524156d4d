#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace inspect {

/// There is no time zone of this name.
struct UnknownTimeZone : std::runtime_error {
    explicit UnknownTimeZone(const std::string& name)
        : std::runtime_error(name + " is no time zone (UTC, UTC-3, UTC+9, UTC-03:30)") {}
};

/// The clock that a station goes by: its tables have hours and minutes, and do not say of which zone.
class TimeZone {
public:
    /// That of Brasília, by which Brazilian stations most likely go.
    TimeZone() = default;

    /// @param name "UTC", "UTC-3", "UTC+05:30"
    /// @throws UnknownTimeZone
    explicit TimeZone(const std::string& name);

    /// That of Japan, assumed.
    static TimeZone ofJapan();

    /// Whether nobody set it.
    bool isAssumed() const { return m_assumed; }

    /// A time for people: "2025-06-15 18:04:05 UTC-3", or with "UTC-3 assumed" in parentheses when nobody set the zone.
    /// @param unixTime as the library counts it, as if the station's clock went by UTC. It has 32 bits, which are
    ///                 negative from 2038-01-20 on; no broadcast comes from before 1970.
    std::string read(std::int32_t unixTime) const;

    /// What the station's clock shows: "2025-06-15 18:04:05".
    static std::string clock(std::int32_t unixTime);

    /// The same in ISO 8601: "2025-06-15T18:04:05-03:00".
    std::string iso(std::int32_t unixTime) const;

    /// The time in truth: seconds since 1970-01-01T00:00:00Z.
    std::int64_t utc(std::int32_t unixTime) const;

    /// The zone by which a station's clock rather goes, if that is another one: "UTC". Empty when it is this one, or
    /// none where ISDB-T is sent.
    /// @param unixTime what the clock shows, as the library counts it
    /// @param now the time in truth
    std::string otherBy(std::int32_t unixTime, std::int64_t now) const;

private:
    int m_minutes = -180; ///< ahead of UTC
    bool m_assumed = true;
};

} // namespace inspect
