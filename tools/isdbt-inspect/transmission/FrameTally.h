#pragma once

#include "transmission/PacketCounter.h"

#include <map>

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
    /// @param length of frames as the last IIP says, which is better than nothing where that is not certain
    /// @param hasInformation whether any IIP came
    void finish(const std::optional<TransmissionParameters>& parameters, std::optional<unsigned> length,
                bool hasInformation);

    std::uint64_t frames() const { return m_frames; }
    const Occurrences& withoutInformation() const { return m_withoutInformation; }
    const std::array<WrongCounts, LAYER_COUNT>& wrongLayers() const { return m_wrongLayers; }

private:
    void begin(const Position& position);
    void end(const std::optional<TransmissionParameters>& parameters);
    void judge(std::optional<unsigned> length);

    bool m_whole = false; ///< what is counted began with the head of a frame, and nothing is missing up to now
    Position m_head;
    unsigned m_packets = 0;
    std::array<unsigned, LAYER_COUNT> m_ofLayers{};
    bool m_hasInformation = false;
    std::uint64_t m_frames = 0;
    std::optional<unsigned> m_length;             ///< of the frames that were judged last
    std::map<unsigned, std::uint64_t> m_unjudged; ///< frames whose length was not known, by their packets
    Occurrences m_withoutInformation;
    Occurrences m_perhapsWithout; ///< frames whose end, with the IIP, may be lost: their length was not known
    std::array<WrongCounts, LAYER_COUNT> m_wrongLayers;
};

} // namespace inspect
