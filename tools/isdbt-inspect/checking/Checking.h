#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"

namespace inspect {

/// Finds what does not fit together. What a fault is about is a part of the multiplex.
Faults check(const Multiplex& multiplex);

} // namespace inspect
