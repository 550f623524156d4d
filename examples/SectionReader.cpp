#include "SectionReader.h"

#include <algorithm>
#include <iconv.h>
#include <utility>

namespace {

constexpr std::size_t PACKET_LENGTH = 188;
constexpr QUOR_U8 SYNC_BYTE = 0x47;
constexpr QUOR_U8 STUFFING = 0xFF; // in the place of a table_id: nothing but stuffing follows
constexpr std::size_t HEADER_LENGTH = 3;
constexpr std::size_t SHORTEST_SECTION = HEADER_LENGTH + 4; // with a CRC_32

std::size_t sectionLength(const std::vector<QUOR_U8>& section) {
    return HEADER_LENGTH + ((section[1] & 0x0FU) << 8U | section[2]);
}

/// 0 over a whole section, its CRC_32 included, when nothing is damaged.
QUOR_U32 crc32(const std::vector<QUOR_U8>& bytes, std::size_t length) {
    QUOR_U32 crc = 0xFFFFFFFF;
    for (std::size_t at = 0; at < length; ++at) {
        crc ^= static_cast<QUOR_U32>(bytes[at]) << 24U;
        for (int bit = 0; bit < 8; ++bit) {
            crc = (crc & 0x80000000U) != 0 ? crc << 1U ^ 0x04C11DB7U : crc << 1U;
        }
    }
    return crc;
}

} // namespace

void SectionReader::watch(QUOR_U16 pid, Callback callback) {
    m_filters[pid].callback = std::move(callback);
}

bool SectionReader::read(std::istream& stream) {
    QUOR_U8 packet[PACKET_LENGTH];
    while (stream.read(reinterpret_cast<char*>(packet), sizeof packet)) {
        if (packet[0] != SYNC_BYTE) {
            return false;
        }
        const auto filter = m_filters.find(static_cast<QUOR_U16>((packet[1] & 0x1FU) << 8U | packet[2]));
        const bool hasPayload = (packet[3] & 0x10U) != 0;
        const bool hasAdaptation = (packet[3] & 0x20U) != 0;
        const std::size_t payload = hasAdaptation ? 5U + packet[4] : 4U;
        if (filter == m_filters.end() || !hasPayload || payload >= PACKET_LENGTH) {
            continue;
        }
        const QUOR_U8* begin = packet + payload;
        const QUOR_U8* const end = packet + PACKET_LENGTH;
        const bool unitStarts = (packet[1] & 0x40U) != 0;
        if (unitStarts) {
            // pointer_field: the bytes that still belong to the section before
            const QUOR_U8* const start = begin + 1 + std::min<std::ptrdiff_t>(*begin, end - begin - 1);
            take(filter->second, begin + 1, start);
            filter->second.bytes.assign(start, end);
            deliver(filter->second);
        } else {
            take(filter->second, begin, end);
        }
    }
    return stream.gcount() == 0;
}

/// More of a section that has begun; what comes before the first beginning is of no use.
void SectionReader::take(Filter& filter, const QUOR_U8* begin, const QUOR_U8* end) {
    if (!filter.bytes.empty()) {
        filter.bytes.insert(filter.bytes.end(), begin, end);
        deliver(filter);
    }
}

void SectionReader::deliver(Filter& filter) {
    std::vector<QUOR_U8>& bytes = filter.bytes;
    while (bytes.size() >= HEADER_LENGTH && bytes[0] != STUFFING && bytes.size() >= sectionLength(bytes)) {
        const std::size_t length = sectionLength(bytes);
        if (length >= SHORTEST_SECTION && crc32(bytes, length) == 0) {
            const Callback callback = filter.callback; // which may be replaced while it runs
            callback(bytes.data(), static_cast<QUOR_U32>(length));
        }
        bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(length));
    }
    if (!bytes.empty() && bytes[0] == STUFFING) {
        bytes.clear();
    }
}

std::string utf8(const std::string& text) {
    iconv_t converter = iconv_open("UTF-8", "ISO-8859-15");
    std::string in = text;
    std::string out(3 * in.size(), '\0');
    char* from = &in[0];
    char* to = &out[0];
    std::size_t fromLeft = in.size();
    std::size_t toLeft = out.size();
    iconv(converter, &from, &fromLeft, &to, &toLeft);
    iconv_close(converter);
    out.resize(out.size() - toLeft);
    return out;
}
