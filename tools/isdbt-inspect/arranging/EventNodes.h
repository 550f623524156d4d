#pragma once

#include "arranging/Table.h"

namespace inspect {

/// DSM-CC stream descriptors: events, time references, modes.
Node eventNode(const Table& section);

} // namespace inspect
