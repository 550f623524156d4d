#pragma once

#include <cstdint>
#include <optional>

namespace inspect {

/// A moment in the time of the world.
struct WallTime {
    enum class Source {
        Arrival,  ///< this machine's clock when it came
        TimeTable ///< the last TOT, from which the stream's clock went on
    };

    std::int64_t milliseconds; ///< since 1970-01-01T00:00:00Z
    Source source;
};

/// Where something was found in its input.
struct Position {
    std::uint64_t packet = 0;       ///< number of the packet that completed it, from 1; 0 when there are no packets
    std::uint64_t offset = 0;       ///< where that packet, or without packets the section, begins, in bytes
    std::optional<double> seconds;  ///< when it was sent, as far as the stream's clock tells
    std::optional<WallTime> time{}; ///< the same in the time of the world, as far as it is known
};

} // namespace inspect
