#pragma once

#include "text/Page.h"

#include <cstddef>
#include <optional>

namespace inspect {

/// What the user says of colours; Auto leaves it to the terminal.
enum class Colour { Auto, Always, Never };

/// How text looks best on a file descriptor. A terminal has its width, and colours unless NO_COLOR is set or it is a
/// dumb one.
/// @param width what the user says of it, if anything
Style styleFor(int descriptor, Colour colour, std::optional<std::size_t> width);

} // namespace inspect
