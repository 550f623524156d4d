#include "terminal/Terminal.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace inspect {

namespace {

/// Narrower than this, lines are left to the terminal.
constexpr std::size_t LEAST_WIDTH = 40;

std::string_view environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string_view{} : value;
}

std::size_t widthOf(int terminal) {
    winsize size{};
    const bool known = ioctl(terminal, TIOCGWINSZ, &size) == 0 && size.ws_col != 0;
    return known ? std::max<std::size_t>(size.ws_col, LEAST_WIDTH) : Style::USUAL_WIDTH;
}

} // namespace

Style styleFor(int descriptor, Colour colour, std::optional<std::size_t> width) {
    const bool terminal = isatty(descriptor) != 0;
    const bool wished = environment("NO_COLOR").empty() && environment("TERM") != "dumb";
    Style style;
    style.colour = colour == Colour::Always || (colour == Colour::Auto && terminal && wished);
    style.width = width.value_or(terminal ? widthOf(descriptor) : Style::USUAL_WIDTH);
    style.wraps = terminal || width.has_value();
    return style;
}

} // namespace inspect
