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
    text.remove_suffix(!text.empty() && text.back() == 's' ? 1 : 0);
    double seconds = 0;
    for (int count = 0; count < PARTS; ++count) {
        const std::string_view part = text.substr(0, text.find(':'));
        double value = 0;
        const auto [behind, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        const bool read = error == std::errc() && behind == part.data() + part.size();
        const bool isBelowOther = count != 0 && value >= SIXTY;
        if (!read || isBelowOther || part.find_first_not_of(MARKS) != std::string_view::npos) {
            return std::nullopt;
        }
        seconds = seconds * SIXTY + value;
        if (part.size() == text.size()) {
            return seconds;
        }
        text.remove_prefix(part.size() + 1);
    }
    return std::nullopt;
}

} // namespace inspect
