#pragma once

#include <cstdint>
#include <string>

namespace inspect {

/// A time as the library counts it, in ISO 8601: "2025-06-15T18:04:05Z". The library keeps 32 bits, which are negative
/// from 2038-01-20 on; no broadcast comes from before 1970.
std::string isoTime(std::int32_t unixTime);

/// An offset from UTC in ISO 8601: "-03:00".
std::string isoOffset(bool behindUtc, std::uint32_t seconds);

} // namespace inspect
