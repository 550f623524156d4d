#include "tool/json/CarriedSections.h"

#include "tool/Streams.h"

#include <algorithm>

namespace {

constexpr std::size_t PACKET_HEADER_SIZE = 4;
constexpr QUOR_U8 STUFFING = 0xFF;

unsigned pidOf(const ByteVector& packet) {
    return (packet[1] & 0x1FU) << 8U | packet[2];
}

ByteVector payloadOf(const ByteVector& packet) {
    const bool adapted = (packet[3] & 0x20U) != 0;
    const std::size_t begin = PACKET_HEADER_SIZE + (adapted ? packet[PACKET_HEADER_SIZE] + 1U : 0U);
    return slice(packet, std::min(begin, packet.size()), packet.size());
}

std::size_t sizeOf(const ByteVector& section) {
    return 3U + ((section[1] & 0x0FU) << 8U | section[2]);
}

} // namespace

std::vector<CarriedSection> sectionsOn(unsigned pid, const ByteVector& stream) {
    std::vector<CarriedSection> sections;
    ByteVector gathered;
    for (std::size_t at = 0; at < stream.size(); at += PACKET_SIZE) {
        const ByteVector packet = slice(stream, at, at + PACKET_SIZE);
        if (pidOf(packet) != pid) {
            continue;
        }
        ByteVector payload = payloadOf(packet);
        const bool begins = (packet[1] & 0x40U) != 0;
        if (begins) {
            payload.erase(payload.begin()); // the pointer; no section of such a stream ends behind it
        }
        gathered = begins ? payload : join({gathered, payload});
        while (gathered.size() > 3 && gathered[0] != STUFFING && gathered.size() >= sizeOf(gathered)) {
            const std::size_t size = sizeOf(gathered);
            sections.push_back({pid, at / PACKET_SIZE + 1, slice(gathered, 0, size)});
            gathered = slice(gathered, size, gathered.size());
        }
    }
    return sections;
}

ByteVector streamOf(unsigned pid, const std::vector<ByteVector>& sections) {
    return StreamBuilder().sections(pid, sections).bytes();
}
