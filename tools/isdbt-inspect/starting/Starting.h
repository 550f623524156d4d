#pragma once

#include "multiplex/Multiplex.h"
#include "reports/Application.h"
#include "reports/Report.h"

namespace inspect {

/// Whether the applications of all AITs start, and if not, why.
/// @param summary with what came on the PIDs, and the carousels
/// @param receiver its profiles; when there are none, any may be meant
std::vector<ApplicationReport> applicationsOf(const Multiplex& multiplex, const Summary& summary,
                                              const ReceiverProfiles& receiver);

/// What was found out of an application; null when it was not looked at.
/// @param application among those of the AIT
const ApplicationReport* reportOf(const std::vector<ApplicationReport>& reports, const Table& ait,
                                  const Fields& application);

} // namespace inspect
