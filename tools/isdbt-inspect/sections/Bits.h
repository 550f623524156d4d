#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace inspect {

/// Bytes that are read from the left, field by field. Fields beyond the end are 0.
class Bits {
public:
    Bits(const std::uint8_t* data, std::size_t size) : m_data(data), m_end(8 * size) {}

    /// The next field.
    /// @param width in bits, up to 64
    std::uint64_t take(unsigned width);

    std::uint32_t take32(unsigned width) { return static_cast<std::uint32_t>(take(width)); }

    /// The next bytes, or as many as there are.
    std::vector<std::uint8_t> takeBytes(std::size_t count);

    std::vector<std::uint8_t> takeAll() { return takeBytes(left()); }

    /// Bytes that have not been begun.
    std::size_t left() const { return m_at < m_end ? (m_end - m_at) / 8 : 0; }

    /// Whether more was taken than there is, or somebody said so.
    bool failed() const { return m_at > m_end; }
    void fail() { m_at = m_end + 1; }

private:
    const std::uint8_t* m_data;
    std::size_t m_end; ///< in bits
    std::size_t m_at = 0;
};

} // namespace inspect
