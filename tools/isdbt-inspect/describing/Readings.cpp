#include "describing/Readings.h"

#include "naming/Names.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// The classification of ABNT NBR 15603: contents in the upper four bits, the age in the lower ones.
std::string brazilianRating(std::uint8_t rating) {
    const std::string_view age = names::PARENTAL_RATING_BRA_AGE.of(rating & 0x0FU);
    const std::string contents = setFlags(rating, names::PARENTAL_RATING_BRA_CONTENT);
    return age.empty() ? "" : fmt::format("{}{}{}", age, contents.empty() ? "" : ", ", contents);
}

/// Whether four bits are a decimal digit, each time.
bool areDigits(std::uint32_t bcd) {
    for (; bcd != 0; bcd >>= 4U) {
        if ((bcd & 0x0FU) > 9) {
            return false;
        }
    }
    return true;
}

std::int32_t twoDigits(std::uint32_t bcd, unsigned shift) {
    return static_cast<std::int32_t>(10 * (bcd >> (shift + 4) & 0x0FU) + (bcd >> shift & 0x0FU));
}

} // namespace

std::string isoOffset(bool behind, std::uint32_t seconds) {
    const std::uint32_t minutes = seconds / 60;
    return fmt::format("{}{:02}:{:02}", behind ? '-' : '+', minutes / 60, minutes % 60);
}

std::optional<std::int32_t> bcdMinutes(std::uint32_t digits) {
    return areDigits(digits) ? std::optional(60 * twoDigits(digits, 8) + twoDigits(digits, 0)) : std::nullopt;
}

std::optional<std::int32_t> bcdSeconds(std::uint32_t digits) {
    const std::optional<std::int32_t> minutes = bcdMinutes(digits >> 8U);
    return minutes && areDigits(digits & 0xFFU) ? std::optional(60 * *minutes + twoDigits(digits, 0)) : std::nullopt;
}

std::string bcdDuration(std::uint32_t digits) {
    return areDigits(digits)
               ? fmt::format("{:02X}:{:02X}:{:02X}", digits >> 16U & 0xFFU, digits >> 8U & 0xFFU, digits & 0xFFU)
               : "";
}

std::optional<std::int32_t> wireTime(std::uint64_t bits) {
    constexpr std::int64_t DAYS_TO_1970 = 40587;
    constexpr std::int64_t SECONDS_OF_DAY = 86400;
    const auto day = static_cast<std::int64_t>(bits >> 24U) - DAYS_TO_1970;
    const std::optional<std::int32_t> seconds = bcdSeconds(static_cast<std::uint32_t>(bits & 0xFFFFFFU));
    return day >= 0 && seconds ? std::optional(static_cast<std::int32_t>(day * SECONDS_OF_DAY + *seconds))
                               : std::nullopt;
}

std::string megahertz(std::uint16_t sevenths) {
    return fmt::format("{:.6f} MHz", sevenths / 7.0);
}

std::string ticks(std::uint32_t high, std::uint32_t low) {
    constexpr unsigned PER_SECOND = 90000;
    const std::uint64_t count = std::uint64_t{high} << 32U | low;
    return fmt::format("{}.{:06} s", count / PER_SECOND, count % PER_SECOND * 1000000 / PER_SECOND);
}

std::string countryCode(std::uint32_t packed) {
    std::string text;
    for (const unsigned shift : {16U, 8U, 0U}) {
        const auto byte = static_cast<std::uint8_t>(packed >> shift);
        const bool letter = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
        text += letter ? std::string(1, static_cast<char>(byte)) : fmt::format("\\x{:02X}", byte);
    }
    return text;
}

std::string systemManagement(std::uint16_t id) {
    const unsigned system = id >> 8U & 0x3FU;
    const std::string_view name = names::SYSTEM_MANAGEMENT_SYSTEM.of(system);
    return fmt::format("{}, {}, 0x{:02X}", names::SYSTEM_MANAGEMENT_FLAG.of(id >> 14U),
                       name.empty() ? fmt::format("system {}", system) : name, id & 0xFFU);
}

std::string parentalRating(std::string_view country, std::uint8_t rating) {
    constexpr std::uint8_t LAST_AGE = 0x0F;
    if (country == "BRA") {
        return brazilianRating(rating);
    }
    return rating >= 1 && rating <= LAST_AGE ? fmt::format("from {} years", rating + 3) : "";
}

std::string setFlags(std::uint32_t flags, const NameList& names) {
    std::string text;
    for (const Name& each : names) {
        if ((flags & each.first) != 0) {
            text += (text.empty() ? "" : ", ") + std::string(each.text);
        }
    }
    return text;
}

} // namespace inspect
