#pragma once

#include "inputs/Timetable.h"

#include <string>

namespace inspect {

/// A line that says that nothing comes on an input, or that something comes again.
std::string silenceLine(const std::string& source, const Silence& silence);

} // namespace inspect
