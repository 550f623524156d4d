#pragma once

#include "support/Bytes.h"

#include <map>
#include <string>

constexpr std::size_t PACKET_SIZE = 188;
constexpr unsigned PAT_PID = 0x0000;
constexpr unsigned TOT_PID = 0x0014;

// The table_ids of the tables.
constexpr QUOR_U8 PAT = 0x00;
constexpr QUOR_U8 PMT = 0x02;
constexpr QUOR_U8 DSMCC = 0x3D;
constexpr QUOR_U8 NIT = 0x40;
constexpr QUOR_U8 SDT = 0x42;
constexpr QUOR_U8 TOT = 0x73;
constexpr QUOR_U8 AIT = 0x74;
constexpr QUOR_U8 SDTT = 0xC3;

/// The header of a table with this table_id_extension.
LongHeader named(QUOR_U16 extension, unsigned version = 0);

/// The PAT of transport stream 0x0735: pat("E6A0 E101") has one program.
ByteVector pat(const std::string& programs, unsigned version = 0);

/// The SDT of the same: sdt("E6A0 FD 8000") has one service.
ByteVector sdt(const std::string& services);

/// The stream that comes with the project.
ByteVector sampleStream();

/// The packet of the sample at a position, counted from 0.
ByteVector packetOfSample(std::size_t position);

/// Packets, or parts of them: `slice(stream, 2 * PACKET_SIZE, 3 * PACKET_SIZE)` is the third one.
ByteVector slice(const ByteVector& bytes, std::size_t begin, std::size_t end);

/// A time stamp of four bytes in front of each packet of 188.
ByteVector withTimeStamps(const ByteVector& stream, const ByteVector& stamp);

/// Sixteen bytes of parity behind each packet of 188.
ByteVector withParity(const ByteVector& stream);

/// Writes packets by hand.
class StreamBuilder {
public:
    /// A packet whose payload begins at a section; the rest is stuffing.
    StreamBuilder& section(unsigned pid, const ByteVector& section);

    /// Sections of any length, each from a packet of its own on.
    StreamBuilder& sections(unsigned pid, const std::vector<ByteVector>& sections);

    /// A packet with this payload, stuffing behind it.
    StreamBuilder& begin(unsigned pid, const ByteVector& payloadWithPointer);
    StreamBuilder& proceed(unsigned pid, const ByteVector& payload);

    /// The last packet once more, byte for byte.
    StreamBuilder& again();

    /// The next packet of this PID counts as if packets before it were lost.
    StreamBuilder& lose(unsigned pid, unsigned packets);

    /// A packet with a program clock reference and no payload.
    /// @param ticks of 27 MHz
    StreamBuilder& clock(unsigned pid, std::uint64_t ticks);

    /// Null packets.
    StreamBuilder& null(std::size_t packets);

    /// Overwrites a byte of the last packet.
    StreamBuilder& patch(std::size_t at, QUOR_U8 value);

    const ByteVector& bytes() const { return m_bytes; }

private:
    StreamBuilder& packet(unsigned pid, bool unitStart, const ByteVector& payload);

    ByteVector m_bytes;
    std::map<unsigned, unsigned> m_continuity;
};
