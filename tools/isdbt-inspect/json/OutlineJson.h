#pragma once

#include "arranging/Outline.h"

#include <string>

namespace inspect {

/// A line with the outline of a multiplex, with all that its tables say.
std::string outlineLine(const std::string& source, const std::vector<Node>& nodes);

} // namespace inspect
