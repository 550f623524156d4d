#include "support/StreamSections.h"

#include <algorithm>

namespace {

constexpr std::ptrdiff_t PACKET = 188;
constexpr std::ptrdiff_t HEADER = 4;
constexpr QUOR_U8 STUFFING = 0xFF;

std::size_t sizeOf(const ByteVector& section) {
    return 3U + ((section[1] & 0x0FU) << 8U | section[2]);
}

/// Takes the complete sections from the front.
void cut(ByteVector& bytes, std::vector<ByteVector>& sections) {
    while (bytes.size() >= 3 && bytes[0] != STUFFING && bytes.size() >= sizeOf(bytes)) {
        const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(sizeOf(bytes));
        sections.emplace_back(bytes.begin(), end);
        bytes.erase(bytes.begin(), end);
    }
    if (!bytes.empty() && bytes[0] == STUFFING) {
        bytes.clear();
    }
}

} // namespace

std::vector<ByteVector> sectionsOf(const ByteVector& stream, unsigned pid) {
    ByteVector begun;
    bool open = false;
    std::vector<ByteVector> sections;
    for (auto packet = stream.begin(); stream.end() - packet >= PACKET; packet += PACKET) {
        const bool payload = (packet[3] & 0x10U) != 0;
        if (((packet[1] & 0x1FU) << 8U | packet[2]) != pid || !payload) {
            continue;
        }
        std::ptrdiff_t at = HEADER + ((packet[3] & 0x20U) != 0 ? 1 + packet[HEADER] : 0);
        if ((packet[1] & 0x40U) != 0 && at < PACKET) {
            const std::ptrdiff_t begin = std::min(at + 1 + packet[at], PACKET);
            begun.insert(begun.end(), packet + at + 1, packet + begin);
            cut(begun, sections);
            begun.clear();
            open = true;
            at = begin;
        }
        if (open && at < PACKET) {
            begun.insert(begun.end(), packet + at, packet + PACKET);
            cut(begun, sections);
        }
    }
    return sections;
}

std::vector<ByteVector> packetsOf(const ByteVector& section, unsigned pid, unsigned& continuity) {
    const ByteVector payload = join({hex("00"), section}); // pointer_field
    std::vector<ByteVector> packets;
    for (auto from = payload.begin(); from != payload.end();) {
        const std::ptrdiff_t size = std::min(payload.end() - from, PACKET - HEADER);
        ByteVector packet = join(
            {hex("47"), u16(pid, packets.empty() ? 0x4000 : 0), {static_cast<QUOR_U8>(0x10U | continuity++ % 16U)}});
        packet.insert(packet.end(), from, from + size);
        packet.resize(PACKET, STUFFING);
        packets.push_back(std::move(packet));
        from += size;
    }
    return packets;
}
