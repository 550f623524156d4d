#pragma once

#include "packets/Position.h"
#include "sections/Place.h"

#include <cstddef>
#include <cstdint>
#include <dsmcc/Carousel.h>
#include <map>
#include <string>
#include <vector>

namespace inspect {

/// PIDs whose carousels are put together; of more, nothing is kept.
constexpr std::size_t MOST_CAROUSEL_PIDS = 64;

/// What a carousel's reader did not take, however often.
struct CarouselRefusal {
    dsmcc::Refusal refusal; ///< the first of its kind
    std::uint64_t count;
    Position first;
};

/// A carousel as it is. What it points to lives until the next section is taken.
struct CarouselReport {
    Pid pid;
    dsmcc::Carousel carousel;
    dsmcc::Tree tree;
};

/// A component that has the PID of carousels.
struct CarouselStream {
    std::uint16_t service;
    std::optional<std::uint8_t> componentTag;
    std::vector<std::uint16_t> associationTags; ///< beside the one that the component_tag is
};

/// A DSI or DII as it last changed.
struct CarouselMessage {
    Position position;
    std::vector<std::uint8_t> bytes; ///< of its section
};

/// What came of carousels on a PID.
struct CarouselPid {
    Pid pid;
    std::uint64_t sections;  ///< of tables 0x3B and 0x3C that were sound
    std::uint64_t crcErrors; ///< those that were not
    std::vector<CarouselRefusal> refusals;
    std::vector<CarouselReport> carousels;
    std::map<std::uint16_t, CarouselMessage> messages = {}; ///< by the identification in their transactionIds
    std::vector<CarouselStream> streams = {};               ///< as far as program maps have come
};

} // namespace inspect
