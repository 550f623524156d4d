#include "Streams.h"

#include "Process.h"

#include <algorithm>
#include <stdexcept>

namespace {

constexpr QUOR_U8 STUFFING = 0xFF;
constexpr unsigned NULL_PID = 0x1FFF;
constexpr QUOR_U16 STREAM = 0x0735;

template <class Change> ByteVector eachPacket(const ByteVector& stream, Change change) {
    ByteVector changed;
    for (std::size_t at = 0; at < stream.size(); at += PACKET_SIZE) {
        const ByteVector packet = change(slice(stream, at, at + PACKET_SIZE));
        changed.insert(changed.end(), packet.begin(), packet.end());
    }
    return changed;
}

} // namespace

LongHeader named(QUOR_U16 extension, unsigned version) {
    LongHeader header;
    header.extension = extension;
    header.version = version;
    return header;
}

ByteVector pat(const std::string& programs, unsigned version) {
    return longSection(PAT, named(STREAM, version), hex(programs));
}

ByteVector sdt(const std::string& services) {
    return longSection(SDT, named(STREAM), hex("0735 FF" + services));
}

ByteVector sampleStream() {
    return readFile(SAMPLE_FILE);
}

ByteVector packetOfSample(std::size_t position) {
    return slice(sampleStream(), position * PACKET_SIZE, (position + 1) * PACKET_SIZE);
}

ByteVector slice(const ByteVector& bytes, std::size_t begin, std::size_t end) {
    return ByteVector(bytes.begin() + static_cast<std::ptrdiff_t>(begin),
                      bytes.begin() + static_cast<std::ptrdiff_t>(end));
}

ByteVector withTimeStamps(const ByteVector& stream, const ByteVector& stamp) {
    return eachPacket(stream, [&stamp](const ByteVector& packet) { return join({stamp, packet}); });
}

ByteVector withParity(const ByteVector& stream) {
    return eachPacket(stream, [](const ByteVector& packet) { return join({packet, fill(16, 0x5A)}); });
}

StreamBuilder& StreamBuilder::section(unsigned pid, const ByteVector& section) {
    return begin(pid, join({hex("00"), section}));
}

StreamBuilder& StreamBuilder::sections(unsigned pid, const std::vector<ByteVector>& sections) {
    constexpr std::size_t ROOM = PACKET_SIZE - 4;
    for (const ByteVector& section : sections) {
        const ByteVector payload = join({hex("00"), section});
        for (std::size_t at = 0; at < payload.size(); at += ROOM) {
            packet(pid, at == 0, slice(payload, at, std::min(at + ROOM, payload.size())));
        }
    }
    return *this;
}

StreamBuilder& StreamBuilder::begin(unsigned pid, const ByteVector& payloadWithPointer) {
    return packet(pid, true, payloadWithPointer);
}

StreamBuilder& StreamBuilder::proceed(unsigned pid, const ByteVector& payload) {
    return packet(pid, false, payload);
}

StreamBuilder& StreamBuilder::packet(unsigned pid, bool unitStart, const ByteVector& payload) {
    unsigned& continuity = m_continuity[pid];
    ByteVector packet =
        join({hex("47"), u16(pid, unitStart ? 0x4000 : 0), {static_cast<QUOR_U8>(0x10 | continuity)}, payload});
    if (packet.size() > PACKET_SIZE) {
        throw std::length_error("more than a packet");
    }
    packet.resize(PACKET_SIZE, STUFFING);
    continuity = (continuity + 1) % 16;
    m_bytes.insert(m_bytes.end(), packet.begin(), packet.end());
    return *this;
}

StreamBuilder& StreamBuilder::again() {
    const ByteVector packet = slice(m_bytes, m_bytes.size() - PACKET_SIZE, m_bytes.size());
    m_bytes.insert(m_bytes.end(), packet.begin(), packet.end());
    return *this;
}

StreamBuilder& StreamBuilder::lose(unsigned pid, unsigned packets) {
    m_continuity[pid] = (m_continuity[pid] + packets) % 16;
    return *this;
}

StreamBuilder& StreamBuilder::clock(unsigned pid, std::uint64_t ticks) {
    const std::uint64_t reference = (ticks / 300) << 15U | std::uint64_t{0x3F} << 9U | ticks % 300;
    ByteVector packet = join({hex("47"), u16(pid), hex("20 B7 10")});
    for (unsigned shift = 48; shift > 0; shift -= 8) {
        packet.push_back(static_cast<QUOR_U8>(reference >> (shift - 8)));
    }
    packet.resize(PACKET_SIZE, STUFFING);
    m_bytes.insert(m_bytes.end(), packet.begin(), packet.end());
    return *this;
}

StreamBuilder& StreamBuilder::null(std::size_t packets) {
    for (std::size_t count = 0; count < packets; ++count) {
        packet(NULL_PID, false, {});
    }
    return *this;
}

StreamBuilder& StreamBuilder::patch(std::size_t at, QUOR_U8 value) {
    m_bytes.at(m_bytes.size() - PACKET_SIZE + at) = value;
    return *this;
}
