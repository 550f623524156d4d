#pragma once

#include "reports/Report.h"
#include "text/Page.h"

namespace inspect {

/// Appends what came of each table and on each PID, as far as anything came, and how it is to be sent.
void appendStatistics(Page& page, const Summary& summary);

} // namespace inspect
