#include "support/Bytes.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

ByteVector hex(const std::string& digits) {
    ByteVector bytes;
    std::string pair;
    for (const char digit : digits) {
        if (std::isspace(static_cast<unsigned char>(digit)) != 0) {
            continue;
        }
        pair += digit;
        if (pair.size() == 2) {
            bytes.push_back(static_cast<QUOR_U8>(std::stoul(pair, nullptr, 16)));
            pair.clear();
        }
    }
    if (!pair.empty()) {
        throw std::invalid_argument("odd number of digits: " + digits);
    }
    return bytes;
}

ByteVector text(const std::string& characters) {
    return ByteVector(characters.begin(), characters.end());
}

ByteVector join(std::initializer_list<ByteVector> parts) {
    ByteVector whole;
    for (const ByteVector& part : parts) {
        whole.insert(whole.end(), part.begin(), part.end());
    }
    return whole;
}

ByteVector fill(std::size_t count, QUOR_U8 value) {
    return ByteVector(count, value);
}

HeapBytes::HeapBytes(const ByteVector& bytes)
    : m_data(new QUOR_U8[bytes.size()]), m_size(static_cast<QUOR_U32>(bytes.size())) {
    std::copy(bytes.begin(), bytes.end(), m_data.get());
}

ByteVector u16(unsigned value, unsigned flags) {
    const unsigned word = value | flags;
    return {static_cast<QUOR_U8>(word >> 8), static_cast<QUOR_U8>(word)};
}

QUOR_U32 crc32(const ByteVector& bytes) {
    QUOR_U32 crc = 0xFFFFFFFF;
    for (const QUOR_U8 byte : bytes) {
        crc ^= static_cast<QUOR_U32>(byte) << 24;
        for (int bit = 0; bit < 8; ++bit) {
            crc = crc << 1 ^ ((crc & 0x80000000U) != 0 ? 0x04C11DB7U : 0U);
        }
    }
    return crc;
}

namespace {

ByteVector section(QUOR_U8 tableId, unsigned flags, const ByteVector& afterLength) {
    ByteVector whole = join({{tableId}, u16(static_cast<unsigned>(afterLength.size()) + 4U, flags), afterLength});
    const QUOR_U32 crc = crc32(whole);
    return join({whole, u16(crc >> 16), u16(crc & 0xFFFFU)});
}

} // namespace

ByteVector shortSection(QUOR_U8 tableId, const ByteVector& body) {
    return section(tableId, 0x7000, body);
}

ByteVector longSection(QUOR_U8 tableId, const LongHeader& header, const ByteVector& body) {
    const auto version = static_cast<QUOR_U8>(0xC0U | header.version << 1 | (header.current ? 1U : 0U));
    return section(tableId, 0xB000, join({u16(header.extension), {version, header.section, header.last}, body}));
}

ByteVector withSectionLength(ByteVector section, unsigned sectionLength) {
    section.at(1) = static_cast<QUOR_U8>((section.at(1) & 0xF0U) | sectionLength >> 8);
    section.at(2) = static_cast<QUOR_U8>(sectionLength);
    return section;
}

ByteVector descriptor(QUOR_U8 tag, const ByteVector& body) {
    return join({{tag, static_cast<QUOR_U8>(body.size())}, body});
}

ByteVector loopOf(const ByteVector& content) {
    return join({u16(static_cast<unsigned>(content.size()) & 0x0FFFU, 0xF000), content});
}

ByteVector descriptorRun(QUOR_U8 tag, std::size_t size) {
    constexpr std::size_t HEADER = 2;
    constexpr std::size_t LONGEST = HEADER + 0xFF;
    ByteVector run;
    while (run.size() < size) {
        const std::size_t left = size - run.size();
        // Never leaves a single byte, which is too few for a header.
        const std::size_t next = left == LONGEST + 1 ? LONGEST - 1 : std::min(left, LONGEST);
        run = join({std::move(run), descriptor(tag, fill(next - HEADER, 0))});
    }
    return run;
}
