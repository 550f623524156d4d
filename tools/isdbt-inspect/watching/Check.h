#pragma once

#include "packets/Pid.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace inspect {

/// What a profile may set a limit for.
struct Check {
    enum class Limited { Never, Seconds, Times }; ///< whether it has a number, and of what

    /// Of which sections one does not stand for another.
    enum class Each { OnPid, OfTable, Section };

    /// A table that comes again and again.
    struct TableOf {
        std::uint8_t first; ///< table_id
        std::uint8_t last;
        std::optional<Pid> pid; ///< where it is, if it is always there
        Each each;
    };

    std::string_view name;
    std::string_view indicator; ///< of TR 101 290; empty when it has none
    std::string_view what;      ///< "PAT"; of what happens: "lost sync"
    Limited limited;
    bool isSilence = false; ///< whether it is about what has to come again and again
    std::optional<TableOf> table{};
    std::string_view impossible{}; ///< why a program cannot measure it
};

/// All of them, in the order of TR 101 290.
const std::vector<Check>& checks();

/// Null when there is none of that name.
const Check* checkNamed(std::string_view name);

} // namespace inspect
