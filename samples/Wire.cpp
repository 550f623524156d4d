#include "Wire.h"

#include <bitstream/mpeg/psi.h>

namespace sample {

namespace {

constexpr unsigned BITS_PER_BYTE = 8;

/// @param flags section_syntax_indicator, private_indicator and two reserved bits
Bytes section(std::uint8_t tableId, unsigned flags, const Bytes& behindLength) {
    Wire wire;
    wire.bits(8, tableId)
        .bits(4, flags)
        .bits(12, behindLength.size() + PSI_CRC_SIZE) // section_length
        .append(behindLength)
        .append(Bytes(PSI_CRC_SIZE));
    Bytes whole = wire.bytes();
    psi_set_crc(whole.data());
    return whole;
}

} // namespace

Wire& Wire::bits(unsigned width, std::uint64_t value) {
    while (width != 0) {
        --width;
        if (m_usedBits == 0) {
            m_bytes.push_back(0);
        }
        const auto bit = static_cast<unsigned>(value >> width & 1U);
        m_bytes.back() = static_cast<std::uint8_t>(m_bytes.back() | bit << (BITS_PER_BYTE - 1 - m_usedBits));
        m_usedBits = (m_usedBits + 1) % BITS_PER_BYTE;
    }
    return *this;
}

Wire& Wire::reserved(unsigned width) {
    return bits(width, ~std::uint64_t{0});
}

Wire& Wire::text(std::string_view characters) {
    m_bytes.insert(m_bytes.end(), characters.begin(), characters.end());
    return *this;
}

Wire& Wire::append(const Bytes& bytes) {
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    return *this;
}

Wire& Wire::countedText(std::string_view characters) {
    return bits(8, characters.size()).text(characters);
}

Wire& Wire::loop(const Bytes& bytes) {
    return reserved(4).bits(12, bytes.size()).append(bytes);
}

Bytes descriptor(std::uint8_t tag, const Wire& body) {
    return Wire().bits(8, tag).bits(8, body.bytes().size()).append(body.bytes()).bytes();
}

std::uint64_t bcd(unsigned number) {
    return number / 10 << 4U | number % 10;
}

Bytes clockTime(unsigned day, unsigned hour, unsigned minute, unsigned second) {
    return Wire().bits(16, day).bits(8, bcd(hour)).bits(8, bcd(minute)).bits(8, bcd(second)).bytes();
}

Bytes clockTime(unsigned day, unsigned second) {
    return clockTime(day + second / 86400, second / 3600 % 24, second / 60 % 60, second % 60);
}

namespace {

Bytes numbered(std::uint16_t extension, const Wire& body, const SectionNumber& number) {
    return Wire()
        .bits(16, extension)
        .reserved(2)
        .bits(5, number.version)
        .bits(1, 1) // current_next_indicator
        .bits(8, number.number)
        .bits(8, number.last)
        .append(body.bytes())
        .bytes();
}

} // namespace

Bytes longSection(std::uint8_t tableId, std::uint16_t extension, const Wire& body, const SectionNumber& number) {
    return section(tableId, 0xF, numbered(extension, body, number));
}

Bytes downloadSection(std::uint8_t tableId, std::uint16_t extension, const Wire& body, const SectionNumber& number) {
    return section(tableId, 0xB, numbered(extension, body, number));
}

Bytes shortSection(std::uint8_t tableId, const Wire& body) {
    return section(tableId, 0x7, body.bytes());
}

} // namespace sample
