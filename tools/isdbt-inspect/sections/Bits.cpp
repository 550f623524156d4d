#include "sections/Bits.h"

namespace inspect {

std::uint64_t Bits::take(unsigned width) {
    std::uint64_t value = 0;
    for (const std::size_t behind = m_at + width; m_at < behind; ++m_at) {
        const unsigned bit = m_at < m_end ? m_data[m_at / 8] >> (7 - m_at % 8) & 1U : 0;
        value = value << 1U | bit;
    }
    return value;
}

std::vector<std::uint8_t> Bits::takeBytes(std::size_t count) {
    std::vector<std::uint8_t> bytes;
    for (; count != 0 && left() != 0; --count) {
        bytes.push_back(static_cast<std::uint8_t>(take(8)));
    }
    m_at += 8 * count;
    return bytes;
}

} // namespace inspect
