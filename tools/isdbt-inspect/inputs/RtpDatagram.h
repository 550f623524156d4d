#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace inspect {

/// A datagram of the Real-time Transport Protocol that carries transport packets.
struct RtpDatagram {
    std::uint16_t sequenceNumber;
    std::uint32_t source;        ///< synchronisation source: who sends it
    const std::uint8_t* payload; ///< from a sync byte on
    std::size_t size;
};

/// Recognises one. @return nothing for a datagram without the protocol, or with something else in it.
std::optional<RtpDatagram> readRtp(const std::uint8_t* data, std::size_t size);

} // namespace inspect
