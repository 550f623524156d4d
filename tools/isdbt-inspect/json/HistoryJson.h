#pragma once

#include "history/History.h"

#include <string>

namespace inspect {

/// What came when: a line for each PID, each table on it and each kind of event, and one for each event.
/// @param sectionsLeftOut those that said something new, and for which there was no room
std::string historyLines(const std::string& source, const History& history, std::uint64_t sectionsLeftOut);

} // namespace inspect
