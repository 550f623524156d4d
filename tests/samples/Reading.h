#pragma once

#include "support/Bytes.h"

#include <optional>

/// What stands in a stream of 188 bytes a packet.
namespace reading {

constexpr std::size_t PACKET_SIZE = 188;

struct Packet {
    std::size_t place; ///< among all packets
    const QUOR_U8* bytes;

    unsigned pid() const { return (bytes[1] & 0x1FU) << 8U | bytes[2]; }
    unsigned counter() const { return bytes[3] & 0x0FU; }
    bool hasPayload() const { return (bytes[3] & 0x10U) != 0; }
    bool beginsUnit() const { return (bytes[1] & 0x40U) != 0; }
    bool isScrambled() const { return (bytes[3] & 0xC0U) != 0; }

    /// When it is sent at 1 Mbit/s, in microseconds.
    std::size_t time() const { return place * 1504; }

    bool isSame(const Packet& other) const;

    /// Program clock reference, in ticks of 27 MHz.
    std::optional<std::uint64_t> pcr() const;

    /// Presentation time stamp, in ticks of 90 kHz.
    std::optional<std::uint64_t> pts() const;
};

std::vector<Packet> packets(const ByteVector& stream);
std::vector<Packet> packets(const ByteVector& stream, unsigned pid);

struct Section {
    std::size_t time; ///< of its first packet
    ByteVector bytes;

    unsigned tableId() const { return bytes[0]; }
    unsigned version() const { return bytes[5] >> 1U & 0x1FU; }
    unsigned number() const { return bytes[6]; }
    bool isWhole() const { return crc32(bytes) == 0; }
};

/// The sections of a PID, each of which begins behind its packet's header.
std::vector<Section> sections(const ByteVector& stream, unsigned pid);

/// Packets of a PID whose counter is not the next one.
/// A packet may come twice.
std::size_t continuityErrors(const ByteVector& stream, unsigned pid);

} // namespace reading
