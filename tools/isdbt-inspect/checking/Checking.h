#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"
#include "transmission/Transmission.h"

namespace inspect {

/// Finds what does not fit together. What a fault is about is a part of the multiplex, or the transmission.
/// @param transmission nothing when the stream does not say how it is to be sent
Faults check(const Multiplex& multiplex, const std::optional<Transmission>& transmission);

} // namespace inspect
