#pragma once

#include "naming/NameList.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace inspect {

/// A time as the library counts it, in ISO 8601: "2025-06-15T18:04:05Z". The library keeps 32 bits, which are negative
/// from 2038-01-20 on; no broadcast comes from before 1970.
std::string isoTime(std::int32_t unixTime);

/// An offset from UTC in ISO 8601: "-03:00".
std::string isoOffset(bool behindUtc, std::uint32_t seconds);

/// A duration of six BCD digits: "01:30:00". Empty when they are no digits.
std::string bcdDuration(std::uint32_t digits);

/// A frequency in units of 1/7 MHz: "473.142857 MHz".
std::string megahertz(std::uint16_t sevenths);

/// A time stamp of 33 bits or more that counts 90 kHz: "95443.717689 s".
std::string ticks(std::uint32_t high, std::uint32_t low);

/// Three letters packed in 24 bits: "BRA". Bytes that are no letters are shown as \x81.
std::string countryCode(std::uint32_t packed);

/// What system_management_id says: "broadcast, ISDB, 0x01".
std::string systemManagement(std::uint16_t id);

/// A parental rating: "18, violence" in Brazil, where it has levels and contents; elsewhere "from 13 years".
std::string parentalRating(std::string_view country, std::uint8_t rating);

/// The names of the flags that are set: "32x32 square, 64x64 4:3".
std::string setFlags(std::uint32_t flags, const NameList& names);

} // namespace inspect
