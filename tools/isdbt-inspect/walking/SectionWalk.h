#pragma once

#include "walking/DescriptorLoops.h"

namespace inspect {

/// The bytes of a section up to its CRC_32, and the loops that have been found in them. Bytes behind them read as 0.
class SectionWalk {
public:
    /// @param section from table_id to CRC_32, or as much of it as there is
    SectionWalk(const std::uint8_t* section, std::size_t size);

    std::size_t end() const { return m_end; }
    bool holds(std::size_t at, std::size_t count) const { return at <= m_end && count <= m_end - at; }

    unsigned u8(std::size_t at) const { return at < m_end ? m_section[at] : 0; }
    unsigned u16(std::size_t at) const { return u8(at) << 8U | u8(at + 1); }
    std::uint32_t u32(std::size_t at) const { return u16(at) << 16U | u16(at + 2); }

    /// A length of 12 bits; 0 when it is not there whole.
    unsigned length(std::size_t at) const;

    /// Walks the descriptors behind a length of 12 bits, if there is one. @return where the loop ends.
    std::size_t loopBehindLength(std::string name, std::optional<std::uint64_t> key, std::size_t at);

    /// Walks descriptors. @return where the loop ends.
    std::size_t loop(std::string name, std::optional<std::uint64_t> key, std::size_t begin, std::size_t stated);

    std::vector<DescriptorLoop> take() { return std::move(m_loops); }

private:
    const std::uint8_t* m_section;
    std::size_t m_end;
    std::vector<DescriptorLoop> m_loops;
};

// The loops of each table, in the order of the wire.
void walkProgramMap(SectionWalk& walk);
void walkNetworkInformation(SectionWalk& walk);
void walkServiceDescription(SectionWalk& walk);
void walkTimeOffset(SectionWalk& walk);
void walkApplicationInformation(SectionWalk& walk);
void walkSoftwareDownload(SectionWalk& walk);
void walkDsmccSection(SectionWalk& walk);

} // namespace inspect
