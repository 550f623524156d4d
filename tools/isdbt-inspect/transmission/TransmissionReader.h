#pragma once

#include "transmission/FrameTally.h"
#include "transmission/InformationPacket.h"
#include "transmission/PacketCounter.h"

#include <vector>

namespace inspect {

/// By PID.
using LayersOfPids = std::array<LayerSet, PID_COUNT>;

/// Reads what a stream says of its transmission: the trailers, once it is certain that they are those of a broadcast
/// transport stream (BTS), and the IIPs, which a copy without trailers may still have.
class TransmissionReader {
public:
    /// @param packet 188 bytes; each one when there are trailers, else those of the IIP's PID
    /// @param trailer 16 bytes; null when it has none
    void take(const std::uint8_t* packet, const std::uint8_t* trailer, const Position& position);

    /// What was found, when no packet follows. Nothing when the stream says nothing of it.
    std::optional<Transmission> finish();

    /// Whether it is certain that the stream is a BTS.
    bool isBroadcast() const { return m_isBroadcast; }

    /// So far, by TSP_counter.
    std::uint64_t lostPackets() const { return m_counter.lost().packets; }

    /// The layers of the packets of each PID; null when the stream is no BTS.
    const LayersOfPids* layersOfPids() const { return m_isBroadcast ? &m_layersOfPids : nullptr; }

private:
    struct Arrival {
        Pid pid;
        std::optional<Trailer> trailer;
        Position position;
    };

    void takeInformation(const std::uint8_t* packet, const Position& position);
    void recognise(const Arrival& arrival);
    void count(const Arrival& arrival);
    FrameLength frameLength() const;

    bool m_isBroadcast = false;
    std::vector<Arrival> m_waiting; ///< as long as that is not certain
    unsigned m_run = 0;             ///< packets that follow each other at their end
    LayersOfPids m_layersOfPids{};
    Trailers m_trailers;
    std::optional<bool> m_emergency; ///< the flag of the trailer before
    PacketCounter m_counter;
    FrameTally m_tally;
    Transmission m_transmission;
    std::optional<TransmissionParameters> m_settled; ///< which two IIPs in a row say
};

} // namespace inspect
