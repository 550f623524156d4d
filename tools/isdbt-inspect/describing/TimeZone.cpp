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
    const int minutes = std::abs(m_minutes);
    std::string zone = m_minutes == 0 ? "UTC" : fmt::format("UTC{}{}", m_minutes < 0 ? '-' : '+', minutes / 60);
    zone += minutes % 60 == 0 ? "" : fmt::format(":{:02}", minutes % 60);
    return fmt::format(m_assumed ? "{} ({} assumed)" : "{} {}", clock(unixTime), zone);
}

std::string TimeZone::iso(std::int32_t unixTime) const {
    const int minutes = std::abs(m_minutes);
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}{}{:02}:{:02}", clockAt(unixTime), m_minutes < 0 ? '-' : '+', minutes / 60,
                       minutes % 60);
}

} // namespace inspect
