#include "describing/Readings.h"

#include <ctime>
#include <fmt/chrono.h>
#include <fmt/format.h>

namespace inspect {

std::string isoTime(std::int32_t unixTime) {
    return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(std::time_t{static_cast<std::uint32_t>(unixTime)}));
}

std::string isoOffset(bool behindUtc, std::uint32_t seconds) {
    const std::uint32_t minutes = seconds / 60;
    return fmt::format("{}{:02}:{:02}", behindUtc ? '-' : '+', minutes / 60, minutes % 60);
}

} // namespace inspect
