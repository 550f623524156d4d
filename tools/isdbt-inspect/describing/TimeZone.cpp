#include "describing/TimeZone.h"

#include <cstdlib>
#include <ctime>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <regex>

namespace inspect {

namespace {

std::tm clockAt(std::int32_t unixTime) {
    return fmt::gmtime(std::time_t{static_cast<std::uint32_t>(unixTime)});
}

/// @param ahead of UTC, in minutes
std::string nameOf(int ahead) {
    const int minutes = std::abs(ahead);
    std::string name = ahead == 0 ? "UTC" : fmt::format("UTC{}{}", ahead < 0 ? '-' : '+', minutes / 60);
    name += minutes % 60 == 0 ? "" : fmt::format(":{:02}", minutes % 60);
    return name;
}

} // namespace

TimeZone::TimeZone(const std::string& name) : m_minutes(0), m_assumed(false) {
    const std::regex form("UTC(?:([+-])([0-9]{1,2})(?::([0-5][0-9]))?)?");
    std::smatch parts;
    if (!std::regex_match(name, parts, form)) {
        throw UnknownTimeZone(name);
    }
    if (parts[1].matched) {
        constexpr int LARGEST = 14 * 60; // no place on earth is further from Greenwich
        m_minutes = std::stoi(parts[2]) * 60 + (parts[3].matched ? std::stoi(parts[3]) : 0);
        if (m_minutes > LARGEST) {
            throw UnknownTimeZone(name);
        }
        m_minutes = parts[1] == "-" ? -m_minutes : m_minutes;
    }
}

TimeZone TimeZone::ofJapan() {
    TimeZone zone;
    zone.m_minutes = 9 * 60;
    return zone;
}

std::string TimeZone::clock(std::int32_t unixTime) {
    return fmt::format("{:%Y-%m-%d %H:%M:%S}", clockAt(unixTime));
}

std::string TimeZone::read(std::int32_t unixTime) const {
    return fmt::format(m_assumed ? "{} ({} assumed)" : "{} {}", clock(unixTime), nameOf(m_minutes));
}

std::string TimeZone::iso(std::int32_t unixTime) const {
    const int minutes = std::abs(m_minutes);
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}{}{:02}:{:02}", clockAt(unixTime), m_minutes < 0 ? '-' : '+', minutes / 60,
                       minutes % 60);
}

std::int64_t TimeZone::utc(std::int32_t unixTime) const {
    constexpr std::int64_t SECONDS = 60;
    return std::int64_t{static_cast<std::uint32_t>(unixTime)} - m_minutes * SECONDS;
}

std::string TimeZone::otherBy(std::int32_t unixTime, std::int64_t now) const {
    constexpr int CANDIDATES[] = {0, -180, 540}; // UTC, Brasília and Japan
    constexpr std::int64_t TOLERANCE = 120;      // of the station's clock, this machine's, and the way between
    const std::int64_t ahead = std::int64_t{static_cast<std::uint32_t>(unixTime)} - now;
    for (const int minutes : CANDIDATES) {
        if (std::abs(ahead - std::int64_t{minutes} * 60) <= TOLERANCE) {
            return minutes == m_minutes ? "" : nameOf(minutes);
        }
    }
    return {};
}

} // namespace inspect
