#include "watching/SectionWatch.h"

#include "describing/Readings.h"
#include "sections/Bits.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace inspect {

namespace {

struct Reserved {
    Pid pid;
    std::uint8_t first; ///< table_id
    std::uint8_t last;
};

constexpr Reserved RESERVED[] = {{0x0000, 0x00, 0x00}, {0x0001, 0x01, 0x01}, {0x0010, 0x40, 0x41}, {0x0010, 0x72, 0x72},
                                 {0x0011, 0x42, 0x42}, {0x0011, 0x46, 0x46}, {0x0011, 0x4A, 0x4A}, {0x0011, 0x72, 0x72},
                                 {0x0012, 0x4E, 0x6F}, {0x0012, 0x72, 0x72}, {0x0013, 0x71, 0x72}, {0x0014, 0x70, 0x70},
                                 {0x0014, 0x72, 0x73}};

constexpr std::uint8_t TDT = 0x70;
constexpr Pid LAST_OF_DVB = 0x0014;

std::optional<double> between(const Position& one, const Position& other) {
    return one.seconds && other.seconds ? std::optional(*other.seconds - *one.seconds) : std::nullopt;
}

/// Versions of DSM-CC sections are those of what they carry.
bool isOfCarousel(std::uint8_t tableId) {
    constexpr std::uint8_t FIRST = 0x3A;
    constexpr std::uint8_t LAST = 0x3F;
    return tableId >= FIRST && tableId <= LAST;
}

FaultPlace placeOf(const Section& section, std::optional<std::uint16_t> extension = std::nullopt) {
    return {section.pid(), section.tableId(), extension};
}

} // namespace

PidSet SectionWatch::reservedPids() {
    PidSet pids;
    for (const Reserved& reserved : RESERVED) {
        pids.set(reserved.pid);
    }
    return pids;
}

void SectionWatch::take(const Section& section) {
    if (!section.pid()) {
        return; // it did not come in packets
    }
    checkTableId(section);
    if (!section.sound()) {
        m_alarms.happened(
            {"crc", placeOf(section)}, section.position(),
            fmt::format("CRC_32 of {} on PID 0x{:04X} is wrong", tableLabel(section.tableId()), *section.pid()));
        return;
    }
    if (const std::optional<LongHeader> header = section.longHeader(); header) {
        checkGap(section, *header);
        checkVersion(section, *header);
        if (section.tableId() == NIT && header->current) {
            learnNetworks(section);
        } else if (section.tableId() == SDT && header->current) {
            checkNetwork(section, *header);
        }
    } else if (section.tableId() == TOT || section.tableId() == TDT) {
        checkTime(section);
    }
}

void SectionWatch::restart() {
    m_versions = BoundedMap<Place, Versions>(SeenSections::CAPACITY);
    m_ends = BoundedMap<TableKey, Position>(SeenSections::CAPACITY);
    m_networks = BoundedMap<std::uint16_t, std::uint16_t>(SeenSections::CAPACITY);
    m_times.clear();
}

void SectionWatch::checkTableId(const Section& section) {
    const std::uint8_t tableId = section.tableId();
    bool isReserved = false;
    for (const Reserved& reserved : RESERVED) {
        if (reserved.pid == section.pid()) {
            isReserved = true;
            if (tableId >= reserved.first && tableId <= reserved.last) {
                return;
            }
        }
    }
    if (isReserved) {
        m_alarms.happened({"wrong_table_id", placeOf(section)}, section.position(),
                          fmt::format("table_id 0x{:02X} on PID 0x{:04X}", tableId, *section.pid()));
    }
}

/// From the end of one section to that of the next, which is not shorter than the gap between them.
void SectionWatch::checkGap(const Section& section, const LongHeader& header) {
    const Limit* const limit = m_alarms.limitOf("min_gap");
    if (limit == nullptr || section.pid() > LAST_OF_DVB) {
        return;
    }
    const TableKey table{section.pid(), section.tableId(), header.extension};
    const Position* const last = m_ends.find(table);
    const std::optional<double> gap = last == nullptr ? std::nullopt : between(*last, section.position());
    if (gap && *gap < *limit->bounds.front().value) {
        m_alarms.happened({"min_gap", placeOf(section, header.extension)}, section.position(),
                          fmt::format("{} 0x{:04X} came again after {:.3g} s", tableLabel(section.tableId()),
                                      header.extension, *gap));
    }
    m_ends.put(table, section.position());
}

void SectionWatch::checkVersion(const Section& section, const LongHeader& header) {
    if (isCarouselTable(section.tableId())) {
        return; // carousels and groups on a PID have modules of the same ids
    }
    const Place place = Place::of(section.pid(), section.tableId(), header);
    Versions* const versions = m_versions.find(place);
    if (versions == nullptr) {
        m_versions.put(place, {header.version, header.version, section.fingerprint()});
        return;
    }
    const std::uint32_t content = std::exchange(versions->content, section.fingerprint());
    if (header.version == versions->now) {
        if (content != versions->content && !isOfCarousel(section.tableId())) {
            m_alarms.happened({"silent_change", placeOf(section, header.extension)}, section.position(),
                              fmt::format("{} 0x{:04X} changes without a new version", tableLabel(section.tableId()),
                                          header.extension));
        }
        return;
    }
    const bool isReturn = header.version == versions->before;
    versions->before = std::exchange(versions->now, header.version);
    if (!isReturn) {
        versions->returns = 0;
        return;
    }
    const double passed = between(versions->returned, section.position()).value_or(0);
    versions->returned = section.position();
    const Limit* const limit = m_alarms.limitOf("version_flaps");
    if (limit == nullptr || passed > *limit->bounds.front().value) {
        versions->returns = 1;
    } else if (++versions->returns >= 2) {
        m_alarms.happened({"version_flaps", placeOf(section, header.extension)}, section.position(),
                          fmt::format("{} 0x{:04X} goes back and forth between version {} and {}",
                                      tableLabel(section.tableId()), header.extension,
                                      std::min(versions->now, versions->before),
                                      std::max(versions->now, versions->before)));
    }
}

/// Which network each transport stream comes from.
void SectionWatch::learnNetworks(const Section& section) {
    Bits bits = section.body();
    bits.take(4);
    bits.takeBytes(bits.take32(12)); // descriptors of the network
    bits.take(16);                   // length of all that follows
    while (bits.left() != 0) {
        const auto stream = static_cast<std::uint16_t>(bits.take(16));
        const auto network = static_cast<std::uint16_t>(bits.take(16));
        bits.take(4);
        bits.takeBytes(bits.take32(12));
        if (bits.failed()) {
            return;
        }
        m_networks.put(stream, network);
    }
}

void SectionWatch::checkNetwork(const Section& section, const LongHeader& header) {
    const std::uint16_t* const network = m_networks.find(header.extension);
    Bits bits = section.body();
    const auto said = static_cast<std::uint16_t>(bits.take(16));
    if (network != nullptr && !bits.failed() && said != *network) {
        m_alarms.happened({"original_network", placeOf(section, header.extension)}, section.position(),
                          fmt::format("the SDT says original network 0x{:04X}, the NIT 0x{:04X}", said, *network));
    }
}

void SectionWatch::checkTime(const Section& section) {
    Bits bits(section.data(), section.size());
    bits.take(24); // table_id, section_length
    const std::optional<std::int32_t> time = wireTime(bits.take(40));
    if (bits.failed() || !time) {
        return;
    }
    const auto known = m_times.find(section.tableId());
    if (known == m_times.end()) {
        m_times.emplace(section.tableId(), *time);
        return;
    }
    // As unsigned numbers: they go on beyond 2038.
    const std::int64_t passed =
        std::int64_t{static_cast<std::uint32_t>(*time)} - static_cast<std::uint32_t>(known->second);
    known->second = *time;
    // Without a clock nobody sees whether the stream began again.
    if (passed < 0 && section.position().seconds) {
        m_alarms.happened({"time_runs_back", placeOf(section)}, section.position(),
                          fmt::format("the time of the {} runs back by {} s", tableLabel(section.tableId()), -passed),
                          static_cast<double>(-passed));
    }
}

} // namespace inspect
