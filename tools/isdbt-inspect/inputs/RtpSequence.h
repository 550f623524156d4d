#pragma once

#include "inputs/RtpDatagram.h"

namespace inspect {

/// Follows the sequence numbers of an RTP stream.
class RtpSequence {
public:
    /// @return how many datagrams are missing in front of this one; nothing for one that comes late, and so counts as
    ///         missing already, or that comes twice: it must not be taken.
    std::optional<std::uint32_t> take(const RtpDatagram& datagram);

private:
    std::optional<std::uint32_t> m_source;
    std::uint16_t m_expected = 0;
};

} // namespace inspect
