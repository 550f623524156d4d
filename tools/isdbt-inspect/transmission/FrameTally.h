#pragma once

#include "transmission/PacketCounter.h"

namespace inspect {

/// Counts the packets of each layer in frames that came whole.
class FrameTally {
public:
    /// @param information whether the packet is an IIP
    /// @param parameters of the frames that end now; nothing when they are not certain
    void take(PacketCounter::Step step, const Trailer& trailer, bool information, const Position& position,
              const std::optional<TransmissionParameters>& parameters);

    /// The frame is not whole.
    void discard() { m_whole = false; }

    /// No packet follows: a frame is whole if it has as many as it should.
    /// @param hasInformation whether any IIP came
    void finish(const std::optional<TransmissionParameters>& parameters, bool hasInformation);

    std::uint64_t frames() const { return m_frames; }
    const Occurrences& withoutInformation() const { return m_withoutInformation; }
    const std::array<WrongCounts, LAYER_COUNT>& wrongLayers() const { return m_wrongLayers; }

private:
    void begin(const Position& position);
    void end(const std::optional<TransmissionParameters>& parameters);

    bool m_whole = false; ///< what is counted began with the head of a frame, and nothing is missing up to now
    Position m_head;
    std::uint64_t m_packets = 0;
    std::array<unsigned, LAYER_COUNT> m_ofLayers{};
    bool m_hasInformation = false;
    std::uint64_t m_frames = 0;
    Occurrences m_withoutInformation;
    Occurrences m_perhapsWithout; ///< frames whose end, with the IIP, may be lost: their length was not known
    std::array<WrongCounts, LAYER_COUNT> m_wrongLayers;
};

} // namespace inspect
