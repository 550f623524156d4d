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
void appendFaults(Page& page, const Faults& faults, Listed listed = Listed::All);

} // namespace inspect
