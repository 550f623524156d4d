#pragma once

#include "rendering/Page.h"
#include "rendering/Report.h"

namespace inspect {

/// Appends what came of each table and on each PID, as far as anything came.
void appendStatistics(Page& page, const Summary& summary);

} // namespace inspect
