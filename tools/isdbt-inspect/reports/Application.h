#pragma once

#include "reports/Fault.h"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// The profiles of applications that a receiver has, with the highest version of each: major, minor, micro.
using ReceiverProfiles = std::map<std::uint16_t, std::array<std::uint8_t, 3>>;

/// One of the things that have to be right before an application starts, or that it has the use of then.
struct Step {
    enum class Result {
        Passed,
        Failed,
        NotSeen ///< the stream ended, or is too short, before it could be known; or another step failed before
    };

    std::string_view name; ///< "component"
    Result result;
    std::string text; ///< "component tag 0x0C is PID 0x0140"
    FaultPlace place = {};
    std::optional<Position> position = {}; ///< of the packet that shows it
    std::vector<std::uint8_t> bytes = {};  ///< of the descriptor, the section or the message that say so
    bool needed = true;                    ///< nothing starts without it
    std::optional<FaultKind> fault = {};   ///< when it failed, unless that is a fault of something else, or none
};

/// An application of an AIT, and whether a receiver could start it.
struct ApplicationReport {
    enum class Verdict { Starts, DoesNotStart, NotKnown, NotByItself };

    FaultPlace place; ///< of its AIT
    std::uint32_t organisationId;
    std::uint16_t applicationId;
    std::string name;        ///< as the AIT has it; empty when it has none
    std::vector<Step> steps; ///< in the order in which a receiver goes them
    Verdict verdict;
    std::string text;                            ///< the verdict in words
    std::optional<std::uint16_t> serviceId = {}; ///< nothing when no PMT names the PID of its AIT
    std::optional<double> seconds = {};          ///< until all was there that its start needs, when it starts
};

} // namespace inspect
