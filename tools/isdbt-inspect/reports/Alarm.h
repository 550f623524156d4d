#pragma once

#include "reports/Fault.h"

namespace inspect {

/// A limit that is broken, or something that keeps happening: one alarm from its begin to its end, however often.
struct Alarm {
    FaultKind kind;
    FaultPlace place;
    std::string limit; ///< what it breaks, and who sets it: "0.5 s (TR 101 290, 1.3.a)"; empty when there is none
    std::string text;  ///< "no PAT for 0.5 s"
    Position since;
    std::optional<Position> until; ///< nothing as long as it goes on
    std::uint64_t count = 1;       ///< how often it happened
    std::optional<double> worst;   ///< of what is limited, in its unit
};

} // namespace inspect
