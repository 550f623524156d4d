#include "terminal/Output.h"

#include <algorithm>
#include <cstdlib>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace inspect {

namespace {

constexpr std::string_view COLOUR_END = "\x1B[0m";

/// The sequence that switches a colour on.
std::string_view colourOf(Ink ink) {
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

std::string_view environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? "" : value;
}

bool hasColours(int descriptor) {
    return isatty(descriptor) == 1 && environment("NO_COLOR").empty() && environment("TERM") != "dumb";
}

std::size_t widthOf(int terminal) {
    constexpr std::size_t LEAST = 40; // narrower than this, lines are left to the terminal
    winsize size{};
    const bool known = ioctl(terminal, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return known ? std::max<std::size_t>(size.ws_col, LEAST) : Style::USUAL_WIDTH;
}

} // namespace

Style styleFor(int descriptor, std::optional<std::size_t> width) {
    Style style;
    style.wraps = isatty(descriptor) == 1 || width;
    style.width = width.value_or(style.wraps ? widthOf(descriptor) : Style::USUAL_WIDTH);
    return style;
}

bool mayEndBefore(int descriptor) {
    struct stat status {};
    return isatty(STDERR_FILENO) == 1 && fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

Output::Output(std::shared_ptr<Sink> sink, Colour colour)
    : m_sink(std::move(sink)),
      m_hasColours(colour == Colour::Auto ? hasColours(m_sink->descriptor()) : colour == Colour::Always) {}

void Output::begin(const std::vector<Line>& heading) {
    m_heading = std::make_shared<const std::string>(textOf(heading));
}

std::string Output::textOf(const std::vector<Line>& lines) const {
    std::string text;
    for (const Line& line : lines) {
        for (const Span& span : line.spans()) {
            const std::string_view begin = m_hasColours ? colourOf(span.ink) : std::string_view();
            text.append(begin).append(span.text).append(begin.empty() ? "" : COLOUR_END);
        }
        text += '\n';
    }
    return text;
}

} // namespace inspect
