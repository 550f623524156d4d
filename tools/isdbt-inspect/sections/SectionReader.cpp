#include "sections/SectionReader.h"

#include <algorithm>
#include <bitstream/mpeg/psi.h>

namespace inspect {

namespace {

constexpr std::uint8_t STUFFING = 0xFF;
constexpr std::size_t BUFFER_SIZE = std::size_t{1} << 16;

} // namespace

SectionReader::SectionReader(Input& input) : m_input(input), m_buffer(BUFFER_SIZE) {}

std::optional<Section> SectionReader::next() {
    while (readUntil(1) && m_buffer[m_at] == STUFFING) {
        ++m_at;
    }
    std::size_t size = available();
    if (readUntil(PSI_HEADER_SIZE)) {
        size = std::size_t{PSI_HEADER_SIZE} + psi_get_length(&m_buffer[m_at]);
    }
    if (!readUntil(size) && m_input.interrupted()) {
        return std::nullopt;
    }
    size = std::min(size, available());
    if (size == 0) {
        if (m_dropped + m_at == 0 && !m_input.interrupted()) {
            throw InputError(m_input.name(), "is empty");
        }
        return std::nullopt;
    }
    Position position;
    position.offset = m_dropped + m_at;
    Section section(&m_buffer[m_at], size, position);
    m_at += size;
    return section;
}

/// Reads on until so many bytes are at hand. @return false when the input ends before.
bool SectionReader::readUntil(std::size_t size) {
    while (available() < size) {
        std::copy(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_at),
                  m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end), m_buffer.begin());
        m_dropped += m_at;
        m_end -= m_at;
        m_at = 0;
        const std::size_t count = m_input.read(m_buffer.data() + m_end, m_buffer.size() - m_end);
        if (count == 0) {
            return false;
        }
        m_end += count;
    }
    return true;
}

} // namespace inspect
