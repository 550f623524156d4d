#pragma once

#include "reports/Fault.h"

namespace inspect {

/// A limit that is broken, or something that keeps happening: one alarm from its begin to its end, however often.
struct Alarm {
    enum class Stage {
        Begun,
        Worse, ///< a warning became an alarm
        Ended
    };

    FaultKind kind;             ///< its name is that of the check
    std::string_view indicator; ///< by which TR 101 290 has it: "1.3.a"; empty when it has it not
    FaultPlace place;
    std::optional<double> limit; ///< that is broken, in seconds; nothing when what happened should never happen
    std::string limitSource;     ///< who sets it: "TR 101 290 1.3.a"
    bool isProposal;             ///< no standard at hand does
    std::string text;            ///< "no PAT for 0.512 s (limit 0.5 s, TR 101 290 1.3.a)"
    Position since;
    std::optional<Position> until{}; ///< nothing as long as it goes on
    Position at{};                   ///< where it began, became worse or ended
    std::uint64_t count = 1;         ///< how often it happened
    std::optional<double> worst{};   ///< of what is limited, in its unit
    std::uint64_t alarms = 1;        ///< that are told of together
    Stage stage = Stage::Begun;
};

/// What became of a check.
struct CheckResult {
    std::string_view check;
    std::string_view indicator;
    std::string_view what;  ///< that is looked at
    std::string limits;     ///< "0.2 s, 0.5 s"; empty when it has none
    std::uint64_t alarms;   ///< how many there were
    std::uint64_t warnings; ///< that became no alarms
    std::uint64_t remarks;
    std::string whyUnmeasured; ///< empty when it was measured
};

} // namespace inspect
