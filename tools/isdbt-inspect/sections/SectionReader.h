#pragma once

#include "packets/Input.h"
#include "sections/Section.h"

#include <vector>

namespace inspect {

/// Cuts a byte stream into sections that stand one behind the other. Where a section should begin, 0xFF is stuffing.
class SectionReader {
public:
    explicit SectionReader(Input& input);

    /// The next section; at the end of the input what there is of it. Nothing at the end.
    /// @throws InputError when the input cannot be read, or is empty.
    std::optional<Section> next();

private:
    bool readUntil(std::size_t size);
    std::size_t available() const { return m_end - m_at; }

    Input& m_input;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_at = 0;
    std::size_t m_end = 0;
    std::uint64_t m_dropped = 0; ///< bytes of the input before those in the buffer
};

} // namespace inspect
