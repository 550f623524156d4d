#include "walking/DescriptorLoops.h"

#include "TISDBTTable.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace inspect {

namespace {

constexpr std::size_t SHORT_HEADER_SIZE = 3;
constexpr std::size_t LONG_HEADER_SIZE = 8;
constexpr std::size_t CRC_SIZE = 4;
constexpr std::size_t DESCRIPTOR_HEADER_SIZE = 2;
constexpr std::size_t LENGTH_SIZE = 2;
constexpr unsigned LENGTH_MASK = 0x0FFF;

RawDescriptor descriptorAt(std::uint8_t tableId, const std::uint8_t* data, std::size_t at, std::size_t end) {
    RawDescriptor descriptor{at, data[at], std::nullopt, {}, knownDescriptor(tableId, data[at])};
    if (end - at < DESCRIPTOR_HEADER_SIZE) {
        return descriptor;
    }
    descriptor.length = data[at + 1];
    const std::uint8_t* const body = data + at + DESCRIPTOR_HEADER_SIZE;
    descriptor.body.assign(body, body + std::min<std::size_t>(*descriptor.length, end - at - DESCRIPTOR_HEADER_SIZE));
    return descriptor;
}

/// The bytes of a section up to its CRC_32, and what has been found in them. Bytes behind them read as 0.
class Walk {
public:
    Walk(const std::uint8_t* section, std::size_t size) : m_section(section), m_end(size) {
        if (size >= SHORT_HEADER_SIZE) {
            m_end = std::min<std::size_t>(size, SHORT_HEADER_SIZE + length(1));
        }
        m_end -= std::min(m_end, CRC_SIZE);
    }

    std::size_t end() const { return m_end; }
    bool holds(std::size_t at, std::size_t count) const { return at <= m_end && count <= m_end - at; }

    unsigned u8(std::size_t at) const { return at < m_end ? m_section[at] : 0; }
    unsigned u16(std::size_t at) const { return u8(at) << 8U | u8(at + 1); }
    std::uint32_t u32(std::size_t at) const { return u16(at) << 16U | u16(at + 2); }
    unsigned length(std::size_t at) const { return (at + 1 < m_end ? u16(at) : 0) & LENGTH_MASK; }

    /// Walks the descriptors behind a length of 12 bits, if there is one. @return where the loop ends.
    std::size_t loopBehindLength(std::string name, std::optional<std::uint64_t> key, std::size_t at) {
        return holds(at, LENGTH_SIZE) ? loop(std::move(name), key, at + LENGTH_SIZE, length(at)) : m_end;
    }

    /// Walks descriptors. @return where the loop ends.
    std::size_t loop(std::string name, std::optional<std::uint64_t> key, std::size_t begin, std::size_t stated) {
        const std::size_t available = begin < m_end ? std::min(stated, m_end - begin) : 0;
        m_loops.push_back({std::move(name), key, stated, available,
                           descriptorsIn(m_section[0], m_section, begin, begin + available)});
        return begin + available;
    }

    std::vector<DescriptorLoop> take() { return std::move(m_loops); }

private:
    const std::uint8_t* m_section;
    std::size_t m_end;
    std::vector<DescriptorLoop> m_loops;
};

void walkProgramMap(Walk& walk) {
    constexpr std::size_t ENTRY_SIZE = 5;
    std::size_t at = walk.loopBehindLength("program", std::nullopt, LONG_HEADER_SIZE + 2);
    while (walk.holds(at, ENTRY_SIZE)) {
        const unsigned pid = walk.u16(at + 1) & 0x1FFFU;
        at = walk.loopBehindLength(fmt::format("elementary_stream 0x{:04X}", pid), pid, at + 3);
    }
}

void walkNetworkInformation(Walk& walk) {
    constexpr std::size_t ENTRY_SIZE = 6;
    std::size_t at = walk.loopBehindLength("network", std::nullopt, LONG_HEADER_SIZE);
    const std::size_t end = std::min(walk.end(), at + LENGTH_SIZE + walk.length(at));
    at += LENGTH_SIZE;
    while (at + ENTRY_SIZE <= end) {
        const unsigned id = walk.u16(at);
        at = walk.loopBehindLength(fmt::format("transport_stream 0x{:04X}", id), id, at + 4);
    }
}

void walkServiceDescription(Walk& walk) {
    constexpr std::size_t ENTRY_SIZE = 5;
    std::size_t at = LONG_HEADER_SIZE + 3;
    while (walk.holds(at, ENTRY_SIZE)) {
        const unsigned id = walk.u16(at);
        at = walk.loopBehindLength(fmt::format("service 0x{:04X}", id), id, at + 3);
    }
}

void walkTimeOffset(Walk& walk) {
    constexpr std::size_t UTC_TIME_SIZE = 5;
    walk.loopBehindLength("time_offset", std::nullopt, SHORT_HEADER_SIZE + UTC_TIME_SIZE);
}

void walkApplicationInformation(Walk& walk) {
    constexpr std::size_t ENTRY_SIZE = 9;
    std::size_t at = walk.loopBehindLength("common", std::nullopt, LONG_HEADER_SIZE);
    const std::size_t end = std::min(walk.end(), at + LENGTH_SIZE + walk.length(at));
    at += LENGTH_SIZE;
    while (at + ENTRY_SIZE <= end) {
        const std::uint32_t organization = walk.u32(at);
        const unsigned application = walk.u16(at + 4);
        at = walk.loopBehindLength(fmt::format("application {:08X}{:04X}", organization, application),
                                   std::uint64_t{organization} << 16U | application, at + 7);
    }
}

void walkSoftwareDownload(Walk& walk) {
    constexpr std::size_t ENTRY_SIZE = 8;
    const unsigned contents = walk.u8(LONG_HEADER_SIZE + 6);
    std::size_t at = LONG_HEADER_SIZE + 7;
    for (unsigned content = 0; content < contents && walk.holds(at, ENTRY_SIZE); ++content) {
        const std::size_t described = walk.u16(at + 4) >> 4U;
        const std::size_t scheduled = std::min<std::size_t>(walk.u16(at + 6) >> 4U, described);
        at = walk.loop(fmt::format("download_content {}", content + 1), content, at + ENTRY_SIZE + scheduled,
                       described - scheduled);
    }
}

void walkDsmccSection(Walk& walk) {
    if (walk.end() > LONG_HEADER_SIZE) {
        walk.loop("section", std::nullopt, LONG_HEADER_SIZE, walk.end() - LONG_HEADER_SIZE);
    }
}

struct Walker {
    std::uint8_t tableId;
    void (*walk)(Walk& walk);
};

constexpr Walker WALKERS[] = {
    {0x02, walkProgramMap},         {0x3D, walkDsmccSection}, {0x40, walkNetworkInformation},
    {0x42, walkServiceDescription}, {0x73, walkTimeOffset},   {0x74, walkApplicationInformation},
    {0xC3, walkSoftwareDownload},
};

} // namespace

std::vector<DescriptorLoop> descriptorLoops(const std::uint8_t* section, std::size_t size) {
    Walk walk(section, size);
    for (const Walker& each : WALKERS) {
        if (size != 0 && each.tableId == section[0]) {
            each.walk(walk);
        }
    }
    return walk.take();
}

std::vector<RawDescriptor> descriptorsIn(std::uint8_t tableId, const std::uint8_t* data, std::size_t begin,
                                         std::size_t end) {
    std::vector<RawDescriptor> descriptors;
    for (std::size_t at = begin; at < end;) {
        descriptors.push_back(descriptorAt(tableId, data, at, end));
        const RawDescriptor& last = descriptors.back();
        at = last.fits() ? at + DESCRIPTOR_HEADER_SIZE + last.body.size() : end;
    }
    return descriptors;
}

std::vector<std::uint8_t> RawDescriptor::bytes() const {
    std::vector<std::uint8_t> all{tag};
    if (length) {
        all.push_back(*length);
    }
    all.insert(all.end(), body.begin(), body.end());
    return all;
}

std::optional<std::uint16_t> refusal(const RawDescriptor& descriptor) {
    if (descriptor.kind == nullptr || !descriptor.fits()) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> bytes = descriptor.bytes();
    QUOR_U16 errorCode = Quor::TISDBTTable::ERROR_OK;
    const auto taken = descriptor.kind->parse(bytes.data(), static_cast<QUOR_U32>(bytes.size()), &errorCode);
    return taken != nullptr ? std::nullopt : std::optional<std::uint16_t>(errorCode);
}

} // namespace inspect
