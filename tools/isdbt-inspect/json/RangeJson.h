#pragma once

#include "reports/Report.h"

#include <string>

namespace inspect {

/// A line that says which packets a range of an input had, and what is known of the input when it ends.
std::string rangeLine(const std::string& source, const Summary& summary);

} // namespace inspect
