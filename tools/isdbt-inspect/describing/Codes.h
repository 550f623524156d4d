#pragma once

#include "QuorDefs.h"
#include "describing/Field.h"

namespace inspect {

/// A service_type by its name.
Field serviceType(QUOR_U8 type);

} // namespace inspect
