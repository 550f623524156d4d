#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"
#include "multiplex/PresentEvents.h"
#include "transmission/Transmission.h"

namespace inspect {

/// Finds what does not fit together. What a fault is about is a part of the multiplex, or the transmission.
/// @param events those that are on the air
/// @param transmission nothing when the stream does not say how it is to be sent
Faults check(const Multiplex& multiplex, const PresentEvents& events, const std::optional<Transmission>& transmission);

} // namespace inspect
