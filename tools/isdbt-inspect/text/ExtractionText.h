#pragma once

#include "reports/Extraction.h"
#include "terminal/Line.h"

#include <vector>

namespace inspect {

/// A folder that was written, and the first of what is not in it as it was announced.
std::vector<Line> extractionText(const Extraction& extraction);

} // namespace inspect
