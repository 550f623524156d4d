#pragma once

#include "reports/Report.h"

#include <string>

namespace inspect {

/// A line for each PID of carousels, and behind it one for each of its carousels.
/// @param interim in seconds since the input began; nothing at its end
/// @param step in seconds, in which it is said when each block came; nothing when nobody asks for that
std::string carouselLines(const std::string& source, const Summary& summary, std::optional<double> interim = {},
                          std::optional<double> step = {});

} // namespace inspect
