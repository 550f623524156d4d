#pragma once

#include "inputs/Timetable.h"
#include "terminal/Line.h"

namespace inspect {

/// "! no data for 5.0 s  2025-06-15 21:30:05 UTC", and how long it was when there are some again.
Line silenceText(const Silence& silence);

} // namespace inspect
