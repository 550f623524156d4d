#pragma once

#include "checking/Fault.h"
#include "text/Page.h"

namespace inspect {

/// Which faults are listed.
enum class Listed {
    All,
    NotOfSections ///< what is wrong with a section is said where the section is shown, and alarms when they begin
};

/// Appends the faults under a line that counts them; nothing when there are none. What is said of several stands in one
/// line.
/// @param most of how many it says which they are
void appendFaults(Page& page, const Faults& faults, Listed listed = Listed::All, std::size_t most = SIZE_MAX);

} // namespace inspect
