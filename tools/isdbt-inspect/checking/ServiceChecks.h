#pragma once

#include "checking/Fault.h"
#include "multiplex/Multiplex.h"

namespace inspect {

/// Compares what the tables say of a service, and of its components.
void checkService(Faults& faults, const Multiplex& multiplex, const TransportStream& stream, const Service& service);

} // namespace inspect
