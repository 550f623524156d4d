#pragma once

#include "checking/Fault.h"
#include "transmission/Transmission.h"

namespace inspect {

/// What a modulator cannot send as it is, and where the NIT says that it is sent otherwise.
void checkTransmission(Faults& faults, const Transmission& transmission, const Multiplex& multiplex);

} // namespace inspect
