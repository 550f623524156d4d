#pragma once

#include "reports/Report.h"

namespace inspect {

/// What came since an earlier moment, with the statistics of that time alone. How long things took must have been
/// measured anew from then on.
/// @param whole what came so far
/// @param before what had come then
Summary since(Summary whole, const Summary& before);

} // namespace inspect
