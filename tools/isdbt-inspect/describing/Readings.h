#pragma once

#include "naming/NameList.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// An offset from the station's clock: "-01:00".
std::string isoOffset(bool behind, std::uint32_t seconds);

/// The minutes of four BCD digits, hours and minutes. Nothing when they are no digits.
std::optional<std::int32_t> bcdMinutes(std::uint32_t digits);

/// The seconds of six BCD digits, hours, minutes and seconds. Nothing when they are no digits.
std::optional<std::int32_t> bcdSeconds(std::uint32_t digits);

/// A duration of six BCD digits: "01:30:00". Empty when they are no digits.
std::string bcdDuration(std::uint32_t digits);

/// A time on the wire, of 16 bits of Modified Julian Date and six BCD digits, as the library counts it. Nothing when it
/// is undefined: when digits are no digits, or the date lies before 1970.
std::optional<std::int32_t> wireTime(std::uint64_t bits);

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
