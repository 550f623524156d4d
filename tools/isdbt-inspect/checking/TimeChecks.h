#pragma once

#include "checking/Fault.h"
#include "multiplex/PresentEvents.h"

namespace inspect {

/// Whether the time of day goes by the same clock as the events. In Brazil that of events is local; a time that is
/// three hours off goes by UTC, or the other way round.
void checkTime(Faults& faults, const Table& tot, const PresentEvents& events);

} // namespace inspect
