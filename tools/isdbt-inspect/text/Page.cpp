#include "text/Page.h"

#include <algorithm>

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

/// The place of the last blank that leaves no more than some columns before it and has a word between it and the
/// margin; of the first one behind them when there is none.
std::size_t lastBlank(std::string_view line, std::size_t width, std::size_t margin) {
    std::size_t found = std::string_view::npos;
    for (std::size_t at = line.find(' ', line.find_first_not_of(' ', margin)); at != std::string_view::npos;
         at = line.find(' ', line.find_first_not_of(' ', at))) {
        if (found != std::string_view::npos && columns(line.substr(0, at)) > width) {
            break;
        }
        found = at;
    }
    return found;
}

} // namespace

std::string Style::paint(Ink ink, std::string_view text) const {
    const std::string_view begin = sequence(ink);
    if (!colour || begin.empty() || text.empty()) {
        return std::string(text);
    }
    return std::string(begin).append(text).append(END);
}

void appendLine(Page& page, std::string_view line, std::size_t indent) {
    std::string margin;
    while (page.style.wraps && columns(margin) + columns(line) > page.style.width) {
        const std::size_t at = lastBlank(line, page.style.width - margin.size(), indent - margin.size());
        if (at == std::string_view::npos) {
            break;
        }
        page.text += margin + std::string(line.substr(0, at)) + '\n';
        line.remove_prefix(std::min(line.find_first_not_of(' ', at), line.size()));
        margin = std::string(indent, ' ');
    }
    page.text += margin + std::string(line) + '\n';
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
