#pragma once

#include "packets/Pid.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace inspect {

/// What became of something that is not in a folder as it was announced.
struct NotAsAnnounced {
    enum class Kind {
        Renamed,    ///< written under another name, as its own is none for a file, or there already
        Partial,    ///< written as far as it came
        Incomplete, ///< not written, as it did not come whole
        Refused,    ///< not written for another reason
        NoFile      ///< a stream, or an object of an unknown kind
    };

    Kind kind;
    std::string path;      ///< in the carousel, as broadcast; empty where no directory names it
    std::string writtenAs; ///< below the folder; empty when it is not written
    std::string text;      ///< why
};

/// A folder with a version of a carousel.
struct Extraction {
    std::string folder; ///< with the path to it
    Pid pid;
    std::optional<std::uint32_t> carouselId; ///< nothing where a DSI joins groups
    std::uint64_t version;                   ///< from 1, counted as they were extracted
    std::size_t files = 0;                   ///< that were written whole
    std::uint64_t bytes = 0;                 ///< of these
    std::size_t partial = 0;
    std::size_t incomplete = 0;
    std::size_t refused = 0;
    std::vector<NotAsAnnounced> others; ///< in the order of the carousel

    /// Whether all files that were announced have been written.
    bool whole() const { return partial + incomplete + refused == 0; }
};

} // namespace inspect
