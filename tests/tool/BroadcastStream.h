#pragma once

#include "support/Bytes.h"

#include <vector>

/// A configuration of mode 1 as an IIP carries it, with its CRC_32: guard interval 1/32, partial reception, layer A
/// with QPSK 2/3 on 1 segment, layer B with 64QAM 3/4 on 12.
extern const char* const MODE_1_GUARD_1_32;

/// Packets of a frame in mode 1 with guard interval 1/32.
constexpr std::size_t FRAME = 1056;

/// An IIP of 188 bytes: packet pointer 0, no branch, stuffing.
/// @param configuration 20 bytes in hexadecimal digits, with their CRC_32
ByteVector informationPacket(const std::string& configuration = MODE_1_GUARD_1_32);

/// A broadcast transport stream: whole frames of mode 1 with guard interval 1/32, each of 16 packets of layer A on PID
/// 0x0211, 648 of layer B on PID 0x0111, 391 null packets and an IIP.
class BroadcastStream {
public:
    explicit BroadcastStream(unsigned frames);

    /// Puts other 188 bytes into a packet. Its trailer stays.
    BroadcastStream& carry(std::size_t at, const ByteVector& packet);

    /// Puts an IIP of this configuration at the end of each frame.
    BroadcastStream& configure(const std::string& configuration);

    /// Changes a byte of a packet, counted from the transport packet's first.
    BroadcastStream& patch(std::size_t at, std::size_t byte, QUOR_U8 value);

    /// Loses packets.
    BroadcastStream& lose(std::size_t at, std::size_t count = 1);

    /// Packets of 204 bytes.
    ByteVector bytes() const;

    /// The same without trailers.
    ByteVector withoutTrailers() const;

    const std::vector<ByteVector>& packets() const { return m_packets; }

private:
    void count();

    std::vector<ByteVector> m_packets;
};

/// A trailer without parity: ISDB-T information of a layer's packet.
ByteVector trailer(unsigned layer, unsigned counter, bool oddFrame, bool emergency = true);

/// Where the IIP of a frame is, which is counted from 0.
constexpr std::size_t informationOf(std::size_t frame) {
    return (frame + 1) * FRAME - 1;
}
