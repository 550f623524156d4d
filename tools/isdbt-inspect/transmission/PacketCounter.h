#pragma once

#include "transmission/Transmission.h"

#include <vector>

namespace inspect {

/// The packets of a frame, as the IIPs say.
struct FrameLength {
    std::optional<unsigned> latest;
    std::optional<unsigned> settled; ///< nothing while an IIP says other than the one before: which frame is meant?
};

/// Follows TSP_counter, which goes on from packet to packet whatever they carry.
class PacketCounter {
public:
    enum class Step {
        Next,     ///< the packet follows the one before
        NewFrame, ///< the same, and it is the head of a frame
        Jump      ///< it does not
    };

    Step take(const Trailer& trailer, const Position& position, const FrameLength& length);

    /// A packet came whose trailer cannot be read.
    void skip(const FrameLength& length);

    /// No packet follows.
    void finish(const FrameLength& length);

    const LostPackets& lost() const { return m_lost; }
    const WrongCounts& wrongFrames() const { return m_wrongFrames; }

private:
    struct Jump {
        Trailer to;
        Position position;
    };

    /// What only the frame's length can tell.
    struct Open {
        bool endsFrame;       ///< a frame seems to be complete; else packets are lost between two frames
        std::int64_t packets; ///< of the frame; or those that are lost, apart from one frame
        Position position;
    };

    Step proceed(const Trailer& trailer, const Position& position, const FrameLength& length);
    Step takeAfterJump(const Trailer& trailer, const Position& position, const FrameLength& length);
    void believeJump(const FrameLength& length);
    void measure(const Open& open, const FrameLength& length);
    void settle(const FrameLength& length);
    void endFrame(unsigned packets, unsigned right, const Position& position);
    void lose(std::int64_t packets, const Position& position);
    void find(unsigned packets);

    std::optional<Trailer> m_last;
    std::optional<Jump> m_jump; ///< a packet that does not follow the last one: others must confirm it
    std::vector<Open> m_open;   ///< before the first IIPs have told the length
    bool m_settled = false;
    LostPackets m_lost;
    WrongCounts m_wrongFrames;
    std::optional<unsigned> m_shortFrame; ///< the packets of the frame before, when it had too few
    unsigned m_lostAtItsEnd = 0;          ///< what it had too little, as long as that counts as lost
};

} // namespace inspect
