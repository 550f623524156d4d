#pragma once

#include "reports/Report.h"
#include "text/Page.h"

namespace inspect {

/// An alarm that begins, becomes worse or ends, in a line.
Line alarmText(const Alarm& alarm);

/// Writes it.
void writeAlarm(Output& output, const Style& style, const Alarm& alarm);

/// Appends what became of each check; nothing when no limits are asked for.
void appendChecks(Page& page, const Summary& summary);

} // namespace inspect
