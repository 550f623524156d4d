#include "walking/SectionWalk.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::size_t SHORT_HEADER_SIZE = 3;
constexpr std::size_t LONG_HEADER_SIZE = 8;
constexpr std::size_t CRC_SIZE = 4;
constexpr std::size_t LENGTH_SIZE = 2;
constexpr unsigned LENGTH_MASK = 0x0FFF;
constexpr unsigned APPLICATION_TYPE_MASK = 0x7FFF; // the first bit tells applications of tests

} // namespace

SectionWalk::SectionWalk(const std::uint8_t* section, std::size_t size) : m_section(section), m_end(size) {
    if (size >= SHORT_HEADER_SIZE) {
        m_end = std::min<std::size_t>(size, SHORT_HEADER_SIZE + length(1));
    }
    m_end -= std::min(m_end, CRC_SIZE);
}

unsigned SectionWalk::length(std::size_t at) const {
    return (at + 1 < m_end ? u16(at) : 0) & LENGTH_MASK;
}

std::size_t SectionWalk::loopBehindLength(std::string name, std::optional<std::uint64_t> key, std::size_t at) {
    return holds(at, LENGTH_SIZE) ? loop(std::move(name), key, at + LENGTH_SIZE, length(at)) : m_end;
}

std::size_t SectionWalk::loop(std::string name, std::optional<std::uint64_t> key, std::size_t begin,
                              std::size_t stated) {
    const std::size_t available = begin < m_end ? std::min(stated, m_end - begin) : 0;
    const Carrier carrier{m_section[0], static_cast<std::uint16_t>(u16(SHORT_HEADER_SIZE) & APPLICATION_TYPE_MASK)};
    m_loops.push_back(
        {std::move(name), key, stated, available, descriptorsIn(carrier, m_section, begin, begin + available)});
    return begin + available;
}

void walkProgramMap(SectionWalk& walk) {
    constexpr std::size_t ENTRY_SIZE = 5;
    std::size_t at = walk.loopBehindLength("program", std::nullopt, LONG_HEADER_SIZE + 2);
    while (walk.holds(at, ENTRY_SIZE)) {
        const unsigned pid = walk.u16(at + 1) & 0x1FFFU;
        at = walk.loopBehindLength(fmt::format("elementary_stream 0x{:04X}", pid), pid, at + 3);
    }
}

void walkNetworkInformation(SectionWalk& walk) {
    constexpr std::size_t ENTRY_SIZE = 6;
    std::size_t at = walk.loopBehindLength("network", std::nullopt, LONG_HEADER_SIZE);
    const std::size_t end = std::min(walk.end(), at + LENGTH_SIZE + walk.length(at));
    at += LENGTH_SIZE;
    while (at + ENTRY_SIZE <= end) {
        const unsigned id = walk.u16(at);
        at = walk.loopBehindLength(fmt::format("transport_stream 0x{:04X}", id), id, at + 4);
    }
}

void walkServiceDescription(SectionWalk& walk) {
    constexpr std::size_t ENTRY_SIZE = 5;
    std::size_t at = LONG_HEADER_SIZE + 3;
    while (walk.holds(at, ENTRY_SIZE)) {
        const unsigned id = walk.u16(at);
        at = walk.loopBehindLength(fmt::format("service 0x{:04X}", id), id, at + 3);
    }
}

void walkTimeOffset(SectionWalk& walk) {
    constexpr std::size_t UTC_TIME_SIZE = 5;
    walk.loopBehindLength("time_offset", std::nullopt, SHORT_HEADER_SIZE + UTC_TIME_SIZE);
}

void walkApplicationInformation(SectionWalk& walk) {
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

void walkSoftwareDownload(SectionWalk& walk) {
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

void walkDsmccSection(SectionWalk& walk) {
    if (walk.end() > LONG_HEADER_SIZE) {
        walk.loop("section", std::nullopt, LONG_HEADER_SIZE, walk.end() - LONG_HEADER_SIZE);
    }
}

} // namespace inspect
