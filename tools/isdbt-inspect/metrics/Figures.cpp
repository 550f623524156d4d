#include "metrics/Figures.h"

#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr double PACKET_BITS = 188 * 8;

/// Their places among all metrics.
enum FamilyRow {
    Up,
    LastPacket,
    Packets,
    BitRate,
    SkippedBytes,
    TransportErrors,
    InputLosses,
    PidPackets,
    Discontinuities,
    Sections,
    DistinctSections,
    VersionChanges,
    CrcErrors,
    Rejected,
    TableLastSeen,
    AlarmActive,
};

std::string hex(Pid pid) {
    return fmt::format("0x{:04X}", pid);
}

std::string nameOf(std::uint8_t tableId) {
    const std::string_view name = tableName(tableId);
    return name.empty() ? fmt::format("0x{:02X}", tableId) : std::string(name);
}

double secondsOf(Figures::Time time) {
    return std::chrono::duration<double>(time.time_since_epoch()).count();
}

} // namespace

std::vector<Metric> metrics() {
    return {
        {"isdbt_up", "1 while the input is read, 0 when it has ended", false, {}},
        {"isdbt_last_packet_timestamp_seconds", "when packets last came, by this machine's clock", false, {}},
        {"isdbt_packets_total", "transport packets", true, {}},
        {"isdbt_bit_rate_bits_per_second", "of the packets of 188 bytes, lately, by the stream's clock", false, {}},
        {"isdbt_skipped_bytes_total", "bytes between packets", true, {}},
        {"isdbt_transport_errors_total", "packets marked as damaged", true, {}},
        {"isdbt_input_losses_total", "datagrams that were lost on the way or dropped here", true, {}},
        {"isdbt_pid_packets_total", "transport packets of a PID", true, {}},
        {"isdbt_discontinuities_total", "places where packets of a PID are missing", true, {}},
        {"isdbt_sections_total", "complete sections of a table, sound or not", true, {}},
        {"isdbt_distinct_sections_total", "sections that differ from the one before at their place", true, {}},
        {"isdbt_version_changes_total", "sections with another version_number than the one before", true, {}},
        {"isdbt_crc_errors_total", "sections whose CRC_32 is wrong", true, {}},
        {"isdbt_rejected_total", "sections that the library did not take", true, {}},
        {"isdbt_table_last_seen_timestamp_seconds",
         "when sections of a table last came, by this machine's clock",
         false,
         {}},
        {"isdbt_alarm_active", "1 while something is wrong, 0 when it no longer is", false, {}},
    };
}

void Figures::Seen::update(std::uint64_t now, Time when) {
    if (now != count) {
        count = now;
        at = when;
    }
}

void Figures::update(const Summary& summary, bool ended, Time now) {
    updateRate(summary);
    m_packets.update(summary.packets, now);
    for (const PidStatistics& pid : summary.statistics) {
        for (const TableStatistics& table : pid.tables) {
            m_tables[{pid.pid, table.tableId}].update(table.sections, now);
        }
    }
    m_summary = summary;
    m_ended = ended;
}

/// The stream's clock shows it even where the packets come in bursts.
void Figures::updateRate(const Summary& summary) {
    if (summary.seconds && *summary.seconds > m_summary.seconds.value_or(0)) {
        m_bitRate = static_cast<double>(summary.packets - m_summary.packets) * PACKET_BITS /
                    (*summary.seconds - m_summary.seconds.value_or(0));
    } else if (summary.packets == m_summary.packets) {
        m_bitRate = 0;
    }
}

/// No multiplex has so many. What is at fault in a broken stream must not fill the memory.
void Figures::alarm(std::string_view check, const FaultPlace& place, bool isActive) {
    constexpr std::size_t CAPACITY = 4096;
    const Alarmed alarmed{std::string(check), place.pid, place.tableId};
    if (m_alarms.size() >= CAPACITY && m_alarms.count(alarmed) == 0) {
        return;
    }
    if (isActive) {
        m_alarms[alarmed].insert(place.extension);
    } else {
        m_alarms[alarmed].erase(place.extension);
    }
}

Labels Figures::labels(std::optional<Pid> pid, std::optional<std::uint8_t> tableId) const {
    Labels labels{{"source", m_source}};
    if (pid) {
        labels.emplace_back("pid", hex(*pid));
    }
    if (tableId) {
        labels.emplace_back("table", nameOf(*tableId));
    }
    return labels;
}

void Figures::addTo(std::vector<Metric>& metrics) const {
    const auto add = [&metrics](FamilyRow row, const Labels& labels, auto value) {
        metrics[row].figures.push_back({labels, static_cast<double>(value)});
    };
    const Labels ofAll = labels();
    add(Up, ofAll, m_ended ? 0 : 1);
    if (m_packets.at) {
        add(LastPacket, ofAll, secondsOf(*m_packets.at));
    }
    add(Packets, ofAll, m_summary.packets);
    if (m_bitRate) {
        add(BitRate, ofAll, *m_bitRate);
    }
    add(SkippedBytes, ofAll, m_summary.skippedBytes);
    add(TransportErrors, ofAll, countOf(m_summary, Damage::TransportError));
    add(InputLosses, ofAll, countOf(m_summary, Damage::InputLoss));
    for (const PidStatistics& pid : m_summary.statistics) {
        const Labels ofPid = labels(pid.pid);
        add(PidPackets, ofPid, pid.traffic.packets);
        add(Discontinuities, ofPid, pid.traffic.discontinuities);
        for (const TableStatistics& table : pid.tables) {
            const Labels ofTable = labels(pid.pid, table.tableId);
            add(Sections, ofTable, table.sections);
            add(DistinctSections, ofTable, table.distinct);
            add(VersionChanges, ofTable, table.versionChanges);
            add(CrcErrors, ofTable, table.crcErrors);
            add(Rejected, ofTable, table.rejected);
            if (const auto seen = m_tables.find({pid.pid, table.tableId}); seen != m_tables.end() && seen->second.at) {
                add(TableLastSeen, ofTable, secondsOf(*seen->second.at));
            }
        }
    }
    for (const auto& [alarmed, extensions] : m_alarms) {
        Labels ofAlarm = labels(alarmed.pid, alarmed.tableId);
        ofAlarm.emplace_back("check", alarmed.check);
        add(AlarmActive, ofAlarm, extensions.empty() ? 0 : 1);
    }
}

} // namespace inspect
