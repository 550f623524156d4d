#pragma once

#include "arranging/ServiceNodes.h"

namespace inspect {

/// What NIT, PAT and SDT say of a transport stream, and its services.
Node transportStreamNode(const TransportStream& stream, const Multiplex& multiplex, const Faults& faults);

} // namespace inspect
