#pragma once

#include "arranging/Table.h"

namespace inspect {

/// The time of day as the stream last gave it.
Node timeNode(const Table& tot);

} // namespace inspect
