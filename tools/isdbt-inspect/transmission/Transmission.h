#pragma once

#include "packets/Pid.h"
#include "sections/Section.h"
#include "transmission/Parameters.h"
#include "transmission/Trailer.h"

#include <array>

namespace inspect {

/// How often something was found, and where first.
struct Occurrences {
    std::uint64_t count = 0;
    std::optional<Position> first;

    void add(const Position& position) {
        if (count++ == 0) {
            first = position;
        }
    }
};

/// Packets that did not come, as TSP_counter tells.
struct LostPackets {
    std::uint64_t packets = 0; ///< exact, unless an outage lasts two frames or longer
    Occurrences gaps;          ///< where they are missing
    Occurrences unmeasured;    ///< where the counter goes back, so that nobody knows how many are missing
};

/// Frames, or layers in frames, that have another number of packets than the IIP says.
struct WrongCounts {
    Occurrences frames;
    unsigned found = 0; ///< in the first of them
    unsigned expected = 0;

    void add(const Position& position, unsigned count, unsigned right) {
        frames.add(position);
        if (frames.count == 1) {
            found = count;
            expected = right;
        }
    }
};

/// What the trailers of a broadcast transport stream (BTS) tell.
struct Trailers {
    std::uint64_t packets = 0; ///< whose trailer is not damaged
    Occurrences damaged;       ///< packets whose trailer is no ISDB-T information
    std::uint64_t frames = 0;  ///< that came whole
    LostPackets lost;
    WrongCounts wrongFrames;
    Occurrences framesWithoutInformation;
    std::array<WrongCounts, LAYER_COUNT> wrongLayers;
    std::array<std::uint64_t, LAYER_COUNT> packetsOfLayers{};
    std::uint64_t emergencies = 0; ///< packets whose flag is 1, which alone means nothing: some senders always set it
    std::uint64_t emergencyChanges = 0;
};

/// How a stream is to be sent, as far as it says.
struct Transmission {
    std::optional<Trailers> trailers;                 ///< nothing where packets have none, or one that says nothing
    std::optional<TransmissionParameters> parameters; ///< of the last IIP
    std::uint64_t parameterChanges = 0;
    std::uint64_t informationPackets = 0; ///< IIPs that are not damaged
    Occurrences damagedInformation;       ///< IIPs whose CRC_32 is wrong
    std::uint64_t emergencies = 0;        ///< IIPs whose flag is 1
};

} // namespace inspect
