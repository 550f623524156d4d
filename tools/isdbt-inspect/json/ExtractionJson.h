#pragma once

#include "reports/Extraction.h"

namespace inspect {

/// A line for a folder that was written.
std::string extractionLine(const std::string& source, const Extraction& extraction);

} // namespace inspect
