#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"
#include "multiplex/PresentEvents.h"
#include "reports/Report.h"

namespace inspect {

/// Finds what does not fit together, and what did not come whole. What a fault is about is a part of the multiplex, the
/// transmission, or the stream.
/// @param events those that are on the air
Faults check(const Multiplex& multiplex, const PresentEvents& events, const Summary& summary);

} // namespace inspect
