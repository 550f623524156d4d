#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"

namespace inspect {

/// The time of day as the stream last gave it.
Node timeNode(const Table& tot, const Faults& faults);

} // namespace inspect
