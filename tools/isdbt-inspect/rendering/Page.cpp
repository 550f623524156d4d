#include "rendering/Page.h"

namespace inspect {

namespace {

constexpr char ESCAPE = '\x1B';
constexpr std::string_view END = "\x1B[0m";

/// The sequence that switches a colour on.
std::string_view sequence(Ink ink) {
    switch (ink) {
    case Ink::Heading:
        return "\x1B[1m";
    case Ink::Name:
        return "\x1B[36m";
    case Ink::Remark:
        return "\x1B[33m";
    case Ink::Good:
        return "\x1B[32m";
    case Ink::Fault:
        return "\x1B[1;31m";
    case Ink::Plain:
        break;
    }
    return {};
}

} // namespace

std::string Style::paint(Ink ink, std::string_view text) const {
    const std::string_view begin = sequence(ink);
    if (!colour || begin.empty() || text.empty()) {
        return std::string(text);
    }
    return std::string(begin).append(text).append(END);
}

std::string inputHeading(const std::string& name, const Style& style) {
    return style.namesInputs ? style.paint(Ink::Heading, "== " + name + " ==") + '\n' : std::string();
}

std::size_t columns(std::string_view text) {
    std::size_t count = 0;
    bool escaped = false;
    for (const char each : text) {
        escaped = escaped || each == ESCAPE;
        // of a character in UTF-8, all bytes but the first begin with the bits 10
        count += !escaped && (static_cast<unsigned char>(each) & 0xC0U) != 0x80 ? 1U : 0U;
        escaped = escaped && each != 'm';
    }
    return count;
}

std::string padded(const std::string& text, std::size_t width) {
    const std::size_t used = columns(text);
    return used < width ? text + std::string(width - used, ' ') : text;
}

} // namespace inspect
