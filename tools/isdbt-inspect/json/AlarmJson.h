#pragma once

#include "reports/Report.h"

#include <string>

namespace inspect {

/// An alarm that begins, becomes worse or ends, as a line.
std::string alarmLine(const std::string& source, const Alarm& alarm);

/// A line for what became of each check; none when no limits are asked for.
std::string checkLines(const std::string& source, const Summary& summary);

} // namespace inspect
