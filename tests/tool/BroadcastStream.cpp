#include "BroadcastStream.h"

#include <algorithm>
#include <map>

// word 0, AC data 1, reserved 11, initialization_timing_indicator 1111 | mode 01, guard interval 00, twice |
// system 00, count_down_index 1111, alert 0, partial reception 1 |
// 001 001 011 0001 | 011 010 010 1100 | 111 111 111 1111 | 1 and the layers again | 1s | CRC_32
const char* const MODE_1_GUARD_1_32 = "7F 44 3D 258B4B3FFF 258B4B3FFF FFFFFF AA2433BD";

namespace {

constexpr std::size_t PACKET = 188;

ByteVector payloadOn(unsigned pid) {
    ByteVector packet = join({hex("47"), u16(pid), hex("10")});
    packet.resize(PACKET, 0xFF);
    return packet;
}

/// What a packet of a frame is, by its place in it.
struct Kind {
    std::size_t end;
    unsigned pid;
    unsigned layer;
};

constexpr Kind KINDS[] = {{16, 0x0211, 1}, {16 + 648, 0x0111, 2}, {FRAME - 1, 0x1FFF, 0}, {FRAME, 0x1FF0, 8}};

} // namespace

ByteVector informationPacket(const std::string& configuration) {
    ByteVector packet = join({hex("47 1FF0 10  0000"), hex(configuration), hex("00 00 00")});
    packet.resize(PACKET, 0xFF);
    return packet;
}

ByteVector trailer(unsigned layer, unsigned counter, bool oddFrame, bool emergency) {
    const unsigned flags = 0xA0U | (emergency ? 0x08U : 0) | (counter == 0 ? 0x02U : 0) | (oddFrame ? 0x01U : 0);
    return join({{static_cast<QUOR_U8>(flags), static_cast<QUOR_U8>(layer << 4U | 0x0FU)},
                 u16(counter, 0xE000),
                 hex("FFFFFFFF 0000000000000000")});
}

BroadcastStream::BroadcastStream(unsigned frames) {
    for (unsigned frame = 0; frame < frames; ++frame) {
        for (std::size_t at = 0; at < FRAME; ++at) {
            const Kind& kind =
                *std::find_if(std::begin(KINDS), std::end(KINDS), [at](const Kind& each) { return at < each.end; });
            const ByteVector packet = kind.layer == 8 ? informationPacket() : payloadOn(kind.pid);
            m_packets.push_back(join({packet, trailer(kind.layer, static_cast<unsigned>(at), frame % 2 != 0)}));
        }
    }
    count();
}

/// Gives the packets of its own PIDs their continuity_counters.
void BroadcastStream::count() {
    std::map<unsigned, unsigned> counters;
    for (ByteVector& packet : m_packets) {
        const unsigned pid = (packet[1] & 0x1FU) << 8U | packet[2];
        if (std::any_of(std::begin(KINDS), std::end(KINDS), [pid](const Kind& each) { return each.pid == pid; })) {
            packet[3] = static_cast<QUOR_U8>((packet[3] & 0xF0U) | (counters[pid]++ & 0x0FU));
        }
    }
}

BroadcastStream& BroadcastStream::carry(std::size_t at, const ByteVector& packet) {
    std::copy(packet.begin(), packet.end(), m_packets.at(at).begin());
    count();
    return *this;
}

BroadcastStream& BroadcastStream::configure(const std::string& configuration) {
    for (std::size_t at = FRAME - 1; at < m_packets.size(); at += FRAME) {
        carry(at, informationPacket(configuration));
    }
    return *this;
}

BroadcastStream& BroadcastStream::patch(std::size_t at, std::size_t byte, QUOR_U8 value) {
    m_packets.at(at).at(byte) = value;
    return *this;
}

BroadcastStream& BroadcastStream::lose(std::size_t at, std::size_t count) {
    const auto begin = m_packets.begin() + static_cast<std::ptrdiff_t>(at);
    m_packets.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
    return *this;
}

ByteVector BroadcastStream::bytes() const {
    ByteVector stream;
    for (const ByteVector& packet : m_packets) {
        stream.insert(stream.end(), packet.begin(), packet.end());
    }
    return stream;
}

ByteVector BroadcastStream::withoutTrailers() const {
    ByteVector stream;
    for (const ByteVector& packet : m_packets) {
        stream.insert(stream.end(), packet.begin(), packet.begin() + PACKET);
    }
    return stream;
}
