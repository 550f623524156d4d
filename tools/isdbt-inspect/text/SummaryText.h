#pragma once

#include "reports/Report.h"

#include <string>

namespace inspect {

/// What came in, and what of it was damaged, in one line.
std::string summaryText(const Summary& summary);

} // namespace inspect
