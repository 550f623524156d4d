#include "StreamSections.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace {

constexpr std::size_t PACKET = 188;
constexpr std::size_t HEADER = 4;
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

std::vector<ByteVector> sectionsOf(const std::string& file, unsigned pid) {
    std::ifstream stream(file, std::ios::binary);
    ByteVector packet(PACKET);
    ByteVector begun;
    bool open = false;
    std::vector<ByteVector> sections;
    while (stream.read(reinterpret_cast<char*>(packet.data()), PACKET)) {
        const bool payload = (packet[3] & 0x10U) != 0;
        if (((packet[1] & 0x1FU) << 8U | packet[2]) != pid || !payload) {
            continue;
        }
        std::size_t at = HEADER + ((packet[3] & 0x20U) != 0 ? 1U + packet[HEADER] : 0U);
        if ((packet[1] & 0x40U) != 0 && at < PACKET) {
            const std::size_t begin = std::min<std::size_t>(at + 1 + packet[at], PACKET);
            begun.insert(begun.end(), packet.begin() + static_cast<std::ptrdiff_t>(at) + 1,
                         packet.begin() + static_cast<std::ptrdiff_t>(begin));
            cut(begun, sections);
            begun.clear();
            open = true;
            at = begin;
        }
        if (open && at < PACKET) {
            begun.insert(begun.end(), packet.begin() + static_cast<std::ptrdiff_t>(at), packet.end());
            cut(begun, sections);
        }
    }
    return sections;
}
