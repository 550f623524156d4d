#pragma once

#include "packets/Spread.h"

namespace inspect {

/// What came on a PID, whatever it carries.
struct PidTraffic {
    std::uint64_t packets = 0;
    std::uint64_t discontinuities = 0; ///< packets in a wrong order, repeated too often, or behind lost ones
    std::uint64_t announcedJumps = 0;  ///< of the continuity_counter, with discontinuity_indicator
    std::uint64_t lost = 0;            ///< packets that the counters show to be missing: at least so many
    std::uint64_t duplicates = 0;      ///< packets that came a second time, as they may
    std::uint64_t transportErrors = 0; ///< packets that the demodulator marked as damaged
    std::uint64_t scrambled = 0;
    Position first;
    Position last;
    Spread pcrIntervals; ///< by the values of the PCRs
    std::uint64_t pcrs = 0;
    std::uint64_t pcrJumps = 0;      ///< that nothing announced
    std::optional<Position> lastPcr; ///< the packet with it
    Spread ptsIntervals;             ///< of video and audio, by the stream's clock
    std::optional<Position> lastPts; ///< the packet with it
    std::optional<Position> firstDiscontinuity;
    std::optional<Position> firstTransportError;

    /// Bits of its packets in each whole second of the stream; nothing before the first one is over.
    std::optional<double> lowestBitRate;
    std::optional<double> highestBitRate;

    /// Counts anew how long things took.
    void beginPeriod() {
        pcrIntervals = ptsIntervals = {};
        lowestBitRate = highestBitRate = std::nullopt;
    }
};

/// What is counted, and adds up.
inline constexpr std::uint64_t PidTraffic::*TRAFFIC_COUNTS[] = {
    &PidTraffic::packets,    &PidTraffic::discontinuities, &PidTraffic::announcedJumps, &PidTraffic::lost,
    &PidTraffic::duplicates, &PidTraffic::transportErrors, &PidTraffic::scrambled,      &PidTraffic::pcrs,
    &PidTraffic::pcrJumps};

} // namespace inspect
