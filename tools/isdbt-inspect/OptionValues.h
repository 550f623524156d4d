#pragma once

#include "Range.h"
#include "reports/Application.h"

#include <optional>
#include <string_view>

namespace inspect {

/// A number as people write it: decimal, or hexadecimal behind 0x. A leading zero has no meaning. Nothing when it is
/// none, or greater than @p most.
std::optional<unsigned> readNumber(std::string_view text, unsigned most);

/// A number of bits a second: "29958294", "29958k", "29.958M". Nothing when it is none, or not more than zero.
std::optional<double> readBitRate(std::string_view text);

/// A time in seconds: "90", "90s", "90.5", "2m", "1:30", "00:01:30". Nothing when it is none.
std::optional<double> readTime(std::string_view text);

/// Where a range begins or ends: a number of bytes, or a time with its unit or with colons. Nothing when it is neither.
std::optional<Range::Bound> readBound(std::string_view text);

/// A profile of applications and its version: "1:1.2.0", "0x0001:1.2.0". Nothing when it is none.
std::optional<ReceiverProfiles::value_type> readProfile(std::string_view text);

} // namespace inspect
