#pragma once

#include "checking/Fault.h"
#include "reports/Report.h"

namespace inspect {

/// What was lost or damaged on the way, as the summary counts it.
void checkDamages(Faults& faults, const std::string& about, const Summary& summary);

} // namespace inspect
