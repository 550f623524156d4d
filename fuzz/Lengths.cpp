#include "Lengths.h"

#include <algorithm>

namespace {

using Field = Length::Field;

constexpr std::size_t SECTION_HEADER = 3;
constexpr std::size_t LONG_HEADER = 8;
constexpr std::size_t CRC = 4;
constexpr std::size_t DESCRIPTOR_HEADER = 2;

/// Walks a section and notes where its lengths lie. Bytes behind the end read as 0.
class Walk {
public:
    explicit Walk(const ByteVector& wire) : m_wire(wire), m_end(wire.size()) {
        if (wire.size() >= SECTION_HEADER) {
            note(Field::Low12, 1, 0, SECTION_HEADER);
            m_end = std::max(SECTION_HEADER, wire.size() - std::min(CRC, wire.size()));
        }
    }

    bool holds(std::size_t at, std::size_t count) const { return at <= m_end && count <= m_end - at; }
    unsigned u8(std::size_t at) const { return at < m_wire.size() ? m_wire[at] : 0U; }

    /// Notes a length. @return where it ends.
    std::size_t note(Field field, std::size_t at, std::size_t whole, std::size_t begin) {
        const unsigned word = u8(at) << 8U | u8(at + 1);
        const unsigned value = field == Field::Byte ? u8(at) : field == Field::Low12 ? word & 0xFFFU : word >> 4U;
        const std::size_t end = std::min(m_end, begin + value);
        if (begin <= m_end) {
            m_lengths.push_back({field, at, whole, begin, end});
        }
        return std::max(begin, end);
    }

    std::size_t descriptors(std::size_t begin, std::size_t end) {
        std::size_t at = begin;
        while (at + DESCRIPTOR_HEADER <= end) {
            at = note(Field::Byte, at + 1, at, at + DESCRIPTOR_HEADER);
        }
        return end;
    }

    /// The descriptors behind their length, in an entry that begins at @p whole.
    std::size_t loop(std::size_t whole, std::size_t at) {
        const std::size_t end = note(Field::Low12, at, whole, at + 2);
        return descriptors(at + 2, end);
    }

    /// Entries that end with a loop. @param header their bytes in front of the loop's length
    void entries(std::size_t begin, std::size_t end, std::size_t header) {
        for (std::size_t at = begin; at + header + 2 <= end;) {
            at = loop(at, at + header);
        }
    }

    void contents(std::size_t at) {
        constexpr std::size_t HEADER = 8;
        while (holds(at, HEADER)) {
            const std::size_t end = note(Field::High12, at + 4, at, at + HEADER);
            at = descriptors(note(Field::High12, at + 6, at + 6, at + HEADER), end);
        }
    }

    std::size_t end() const { return m_end; }
    std::vector<Length> take() { return std::move(m_lengths); }

private:
    const ByteVector& m_wire;
    std::size_t m_end;
    std::vector<Length> m_lengths;
};

void walkTable(Walk& walk, unsigned tableId) {
    switch (tableId) {
    case 0x02:
        walk.entries(walk.loop(LONG_HEADER + 2, LONG_HEADER + 2), walk.end(), 3);
        break;
    case 0x3D:
        walk.descriptors(LONG_HEADER, walk.end());
        break;
    case 0x40:
    case 0x74: {
        const std::size_t at = walk.loop(LONG_HEADER, LONG_HEADER);
        const std::size_t end = walk.note(Field::Low12, at, at, at + 2);
        walk.entries(at + 2, end, tableId == 0x40 ? 4 : 7);
        break;
    }
    case 0x42:
        walk.entries(LONG_HEADER + 3, walk.end(), 3);
        break;
    case 0x73:
        walk.loop(SECTION_HEADER + 5, SECTION_HEADER + 5);
        break;
    case 0xC3:
        walk.contents(LONG_HEADER + 7);
        break;
    default: // nothing but section_length
        break;
    }
}

} // namespace

void Length::write(ByteVector& wire, std::size_t value) const {
    if (at + (field == Field::Byte ? 1 : 2) > wire.size()) {
        return;
    }
    if (field == Field::Byte) {
        wire[at] = static_cast<QUOR_U8>(value);
        return;
    }
    const unsigned shift = field == Field::High12 ? 4 : 0;
    const unsigned others = static_cast<unsigned>(wire[at]) << 8U | wire[at + 1];
    const std::size_t word = (others & ~(0xFFFU << shift)) | (value & 0xFFFU) << shift;
    wire[at] = static_cast<QUOR_U8>(word >> 8U);
    wire[at + 1] = static_cast<QUOR_U8>(word);
}

std::vector<Length> lengthsOfSection(const ByteVector& wire) {
    Walk walk(wire);
    walkTable(walk, wire.empty() ? 0 : wire[0]);
    return walk.take();
}

std::vector<Length> lengthsOfDescriptor(const ByteVector& wire) {
    if (wire.size() < DESCRIPTOR_HEADER) {
        return {};
    }
    return {{Field::Byte, 1, 0, DESCRIPTOR_HEADER, wire.size()}};
}

void splice(ByteVector& wire, const std::vector<Length>& lengths, std::size_t begin, std::size_t end,
            const ByteVector& with) {
    // The fields lie in front of what they measure, so that they stay where they are.
    for (const Length& length : lengths) {
        if (length.begin <= begin && end <= length.end) {
            length.write(wire, length.end - length.begin - (end - begin) + with.size());
        }
    }
    const auto first = wire.begin() + static_cast<std::ptrdiff_t>(begin);
    wire.insert(wire.erase(first, wire.begin() + static_cast<std::ptrdiff_t>(end)), with.begin(), with.end());
}
