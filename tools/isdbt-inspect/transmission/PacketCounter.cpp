#include "transmission/PacketCounter.h"

namespace inspect {

namespace {

/// So many questions stay open while no IIP comes.
constexpr std::size_t MOST_OPEN = 64;

bool follows(const Trailer& last, const Trailer& next) {
    const bool sameFrame = next.frameIndicator == last.frameIndicator;
    return next.frameHead ? !sameFrame && next.counter == 0 : sameFrame && next.counter == last.counter + 1;
}

/// Whether one packet stands between two others, of which the first or the second may be a frame's head.
bool followsButOne(const Trailer& last, const Trailer& next) {
    const bool sameFrame = next.frameIndicator == last.frameIndicator;
    return sameFrame ? next.counter == last.counter + 2 : next.counter == (next.frameHead ? 0U : 1U);
}

bool repeats(const Trailer& last, const Trailer& next) {
    return next.frameIndicator == last.frameIndicator && next.counter == last.counter;
}

} // namespace

PacketCounter::Step PacketCounter::take(const Trailer& trailer, const Position& position, const FrameLength& length) {
    if (length.settled && !m_settled) {
        settle(length);
    }
    if (m_jump) {
        return takeAfterJump(trailer, position, length);
    }
    if (m_last && follows(*m_last, trailer)) {
        return proceed(trailer, position, length);
    }
    if (m_last) {
        m_jump = {trailer, position};
    } else {
        m_last = trailer;
    }
    return Step::Jump;
}

PacketCounter::Step PacketCounter::proceed(const Trailer& trailer, const Position& position,
                                           const FrameLength& length) {
    const Open frame{true, std::int64_t{m_last->counter} + 1, position};
    m_last = trailer;
    if (!trailer.frameHead) {
        return Step::Next;
    }
    measure(frame, length);
    return Step::NewFrame;
}

/// A trailer that is damaged would look like a great loss, and one more behind it.
PacketCounter::Step PacketCounter::takeAfterJump(const Trailer& trailer, const Position& position,
                                                 const FrameLength& length) {
    // The head of a frame may follow any packet.
    const bool endsFrame = trailer.frameHead && length.latest && m_last->counter + 2 == *length.latest;
    if (!endsFrame && follows(m_jump->to, trailer)) {
        believeJump(length);
        return proceed(trailer, position, length);
    }
    if (followsButOne(*m_last, trailer)) {
        if (repeats(*m_last, m_jump->to)) {
            lose(1, m_jump->position);
        }
        m_jump.reset();
        m_last = trailer;
        return Step::Jump;
    }
    believeJump(length);
    m_jump = {trailer, position};
    return Step::Jump;
}

void PacketCounter::believeJump(const FrameLength& length) {
    const Jump jump = *m_jump;
    const std::int64_t between = std::int64_t{jump.to.counter} - std::int64_t{m_last->counter} - 1;
    const bool sameFrame = jump.to.frameIndicator == m_last->frameIndicator;
    m_jump.reset();
    m_last = jump.to;
    if (!sameFrame) {
        measure({false, between, jump.position}, length);
    } else if (between >= 0) {
        lose(between, jump.position);
    } else {
        m_lost.unmeasured.add(jump.position);
    }
}

void PacketCounter::measure(const Open& open, const FrameLength& length) {
    if (!m_settled && m_open.size() < MOST_OPEN) {
        m_open.push_back(open);
    } else if (open.endsFrame && length.settled) {
        endFrame(static_cast<unsigned>(open.packets), *length.settled, open.position);
    } else if (!open.endsFrame && length.latest) {
        lose(*length.latest + open.packets, open.position);
    } else if (!open.endsFrame) {
        m_lost.unmeasured.add(open.position);
    }
}

void PacketCounter::settle(const FrameLength& length) {
    m_settled = true;
    for (const Open& open : m_open) {
        measure(open, length);
    }
    m_open.clear();
}

/// What a frame has too little may be lost, but not the same packets of two frames.
void PacketCounter::endFrame(unsigned packets, unsigned right, const Position& position) {
    if (packets == right) {
        m_shortFrame.reset();
    } else if (packets < right && m_shortFrame != packets) {
        m_shortFrame = packets;
        m_lostAtItsEnd = right - packets;
        lose(m_lostAtItsEnd, position);
    } else {
        if (packets < right && m_lostAtItsEnd != 0) {
            find(m_lostAtItsEnd);
            m_lostAtItsEnd = 0;
            m_wrongFrames.add(position, packets, right);
        }
        m_wrongFrames.add(position, packets, right);
    }
}

void PacketCounter::lose(std::int64_t packets, const Position& position) {
    if (packets > 0) {
        m_lost.packets += static_cast<std::uint64_t>(packets);
        m_lost.gaps.add(position);
    }
}

/// They were not lost after all.
void PacketCounter::find(unsigned packets) {
    m_lost.packets -= packets;
    if (--m_lost.gaps.count == 0) {
        m_lost.gaps.first.reset();
    }
}

void PacketCounter::skip(const FrameLength& length) {
    if (m_jump) {
        believeJump(length);
    }
    if (m_last) {
        ++m_last->counter;
        m_last->frameHead = false;
    }
}

void PacketCounter::finish(const FrameLength& length) {
    if (m_jump) {
        believeJump(length);
    }
    settle(length);
}

} // namespace inspect
