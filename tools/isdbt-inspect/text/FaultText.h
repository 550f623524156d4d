#pragma once

#include "checking/Fault.h"
#include "text/Page.h"

namespace inspect {

/// Appends all faults under a line that counts them; nothing when there are none.
void appendFaults(Page& page, const Faults& faults);

/// The same without what is said of a section where it is shown.
void appendOtherFaults(Page& page, const Faults& faults);

} // namespace inspect
