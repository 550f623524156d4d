#include "terminal/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

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

Output::Output(int descriptor, Colour colour, ProgressLine* progress)
    : m_descriptor(descriptor),
      m_hasColours(colour == Colour::Auto ? hasColours(descriptor) : colour == Colour::Always),
      m_progress(isatty(descriptor) == 1 ? progress : nullptr) {}

void Output::write(std::string_view text) const {
    if (m_progress != nullptr) {
        m_progress->erase();
    }
    while (!text.empty()) {
        const ssize_t count = ::write(m_descriptor, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EPIPE) {
            throw OutputClosed();
        } else if (errno != EINTR) {
            throw std::runtime_error(std::string("standard output: ") + std::strerror(errno));
        }
    }
}

void Output::write(const std::vector<Line>& lines) const {
    std::string text;
    for (const Line& line : lines) {
        for (const Span& span : line.spans()) {
            const std::string_view begin = m_hasColours ? colourOf(span.ink) : std::string_view();
            text.append(begin).append(span.text).append(begin.empty() ? "" : COLOUR_END);
        }
        text += '\n';
    }
    write(text);
}

} // namespace inspect
