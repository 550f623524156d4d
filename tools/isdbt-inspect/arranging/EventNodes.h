#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"

namespace inspect {

/// DSM-CC stream descriptors: events, time references, modes.
Node eventNode(const Table& section, const Faults& faults);

} // namespace inspect
