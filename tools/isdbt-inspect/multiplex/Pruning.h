#pragma once

#include "describing/Field.h"

namespace inspect {

/// The fields without those that hold nothing, and without lengths of what stands behind them.
Fields pruned(const Fields& fields);

} // namespace inspect
