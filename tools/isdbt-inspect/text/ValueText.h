#pragma once

#include "describing/Field.h"
#include "terminal/Line.h"

namespace inspect {

/// What stands behind the name of a field that is not nested: "1 behind UTC", "10800 s = -03:00".
Line valueText(const Field& field);

} // namespace inspect
