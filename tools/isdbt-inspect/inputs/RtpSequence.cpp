#include "inputs/RtpSequence.h"

namespace inspect {

namespace {

/// Datagrams that overtake others on the way do so by a few. What lies further back is a sender that begins anew.
constexpr unsigned LATEST = 100;

constexpr unsigned ROUND = 0x10000;

} // namespace

std::optional<std::uint32_t> RtpSequence::take(const RtpDatagram& datagram) {
    const bool sameSource = m_source == datagram.source;
    const unsigned ahead = (datagram.sequenceNumber + ROUND - m_expected) % ROUND;
    if (sameSource && ahead >= ROUND - LATEST) {
        return std::nullopt;
    }
    m_source = datagram.source;
    m_expected = static_cast<std::uint16_t>(datagram.sequenceNumber + 1);
    return sameSource && ahead < ROUND / 2 ? ahead : 0;
}

} // namespace inspect
