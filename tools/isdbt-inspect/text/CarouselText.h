#pragma once

#include "reports/Report.h"
#include "text/Page.h"

namespace inspect {

/// Appends what carousels have brought: their announcements, modules and files, and what was refused.
void appendCarousels(Page& page, const Summary& summary);

} // namespace inspect
