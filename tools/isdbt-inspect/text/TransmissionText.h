#pragma once

#include "reports/Report.h"
#include "text/Page.h"

namespace inspect {

/// Appends how the stream is to be sent, with a line for each layer; nothing when it does not say.
void appendTransmission(Page& page, const Summary& summary);

} // namespace inspect
