#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"
#include "reports/Report.h"

namespace inspect {

/// Finds what does not fit together, and what did not come whole. What a fault is about is a part of the multiplex, the
/// transmission, or the stream.
Faults check(const Multiplex& multiplex, const Summary& summary);

} // namespace inspect
