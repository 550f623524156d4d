#include "OptionValues.h"

#include <algorithm>
#include <charconv>

namespace inspect {

std::optional<unsigned> readNumber(std::string_view text, unsigned most) {
    const bool hexadecimal = text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X');
    const char* const begin = text.data() + (hexadecimal ? 2 : 0);
    const char* const end = text.data() + text.size();
    unsigned number = 0;
    const auto [behind, error] = std::from_chars(begin, end, number, hexadecimal ? 16 : 10);
    const bool read = error == std::errc() && behind == end && number <= most;
    return read ? std::optional(number) : std::nullopt;
}

std::optional<double> readBitRate(std::string_view text) {
    constexpr double KILO = 1e3;
    constexpr double MEGA = 1e6;
    constexpr double MOST = 1e12;
    const char unit = text.empty() ? '\0' : text.back();
    const double factor = unit == 'k' ? KILO : unit == 'M' ? MEGA : 1;
    text.remove_suffix(factor == 1 ? 0 : 1);
    double value = 0;
    const auto [behind, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool read = error == std::errc() && behind == text.data() + text.size() && value * factor >= 1;
    return read && value * factor <= MOST ? std::optional(value * factor) : std::nullopt;
}

std::optional<double> readTime(std::string_view text) {
    constexpr int PARTS = 3;     // hours, minutes, seconds
    constexpr double SIXTY = 60; // of one in the other before it
    constexpr std::string_view MARKS = "0123456789.";
    const char unit = text.empty() ? '\0' : text.back();
    const bool isInMinutes = unit == 'm';
    text.remove_suffix(isInMinutes || unit == 's' ? 1 : 0);
    double seconds = 0;
    for (int count = 0; count < PARTS; ++count) {
        const std::string_view part = text.substr(0, text.find(':'));
        double value = 0;
        const auto [behind, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        const bool read = error == std::errc() && behind == part.data() + part.size();
        const bool isBelowOther = count != 0 && (value >= SIXTY || isInMinutes);
        if (!read || isBelowOther || part.find_first_not_of(MARKS) != std::string_view::npos) {
            return std::nullopt;
        }
        seconds = seconds * SIXTY + value;
        if (part.size() == text.size()) {
            return isInMinutes ? seconds * SIXTY : seconds;
        }
        text.remove_prefix(part.size() + 1);
    }
    return std::nullopt;
}

std::optional<Range::Bound> readBound(std::string_view text) {
    std::uint64_t byte = 0;
    const auto [behind, error] = std::from_chars(text.data(), text.data() + text.size(), byte);
    if (error == std::errc() && behind == text.data() + text.size()) {
        return byte;
    }
    const std::optional<double> seconds =
        text.find_first_of(":sm") == std::string_view::npos ? std::nullopt : readTime(text);
    return seconds ? std::optional<Range::Bound>(*seconds) : std::nullopt;
}

std::optional<ReceiverProfiles::value_type> readProfile(std::string_view text) {
    const std::size_t colon = text.find(':');
    const std::optional<unsigned> profile = readNumber(text.substr(0, colon), UINT16_MAX);
    ReceiverProfiles::mapped_type version{};
    std::size_t end = colon;
    for (std::uint8_t& part : version) {
        if (!profile || end == std::string_view::npos) {
            return std::nullopt;
        }
        const std::size_t begin = end + 1;
        end = text.find('.', begin);
        const std::optional<unsigned> number = readNumber(text.substr(begin, end - begin), UINT8_MAX);
        if (!number) {
            return std::nullopt;
        }
        part = static_cast<std::uint8_t>(*number);
    }
    return end == std::string_view::npos
               ? std::optional(ReceiverProfiles::value_type{static_cast<std::uint16_t>(*profile), version})
               : std::nullopt;
}

} // namespace inspect
