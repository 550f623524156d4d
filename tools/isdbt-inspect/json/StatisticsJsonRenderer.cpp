#include "json/StatisticsJsonRenderer.h"

#include "naming/Names.h"
#include "packets/WallClock.h"
#include "json/AlarmJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

/// What came before the time of the world was known has it in the end, too.
Position dated(Position position, const Position& last) {
    constexpr double SECOND = 1000;
    if (!position.time && position.seconds && last.time && last.seconds) {
        position.time = last.time;
        position.time->milliseconds -= std::llround((*last.seconds - *position.seconds) * SECOND);
    }
    return position;
}

Json spreadJson(const Spread& spread, const Position& last) {
    Json object{{"count", spread.count()}, {"sum", measured(spread.sum())}};
    object["minimum"] = measured(spread.minimum());
    object["maximum"] = measured(spread.maximum());
    object["longest"] = nullptr;
    if (spread.count() != 0) {
        addPosition(object["longest"], dated(spread.longestAt(), last));
    }
    object["buckets"] = spread.buckets();
    return object;
}

/// What became of packets, and what they measure.
void addTraffic(Json& object, const PidTraffic& traffic, const Position& last) {
    object["discontinuities"] = traffic.discontinuities;
    object["announced_discontinuities"] = traffic.announcedJumps;
    object["packets_lost"] = traffic.lost;
    object["duplicates"] = traffic.duplicates;
    object["transport_errors"] = traffic.transportErrors;
    object["scrambled"] = traffic.scrambled;
    object["pcrs"] = traffic.pcrs;
    object["pcr_intervals"] = spreadJson(traffic.pcrIntervals, last);
    object["pcr_jumps"] = traffic.pcrJumps;
    object["pts_intervals"] = spreadJson(traffic.ptsIntervals, last);
}

Json pidJson(const std::string& source, const PidStatistics& pid, const Position& last) {
    Json object = lineObject("pid_statistics", source);
    object["pid"] = orNull(pid.pid);
    object["content"] = orNull(pid.content);
    object["announced"] = pid.announced ? Json(*pid.announced) : Json();
    object["layers"] = layersJson(pid.layers);
    object["packets"] = pid.traffic.packets;
    object["share"] = measured(pid.share);
    object["bit_rate"] = rounded(pid.bitRate);
    object["lowest_bit_rate"] = rounded(pid.traffic.lowestBitRate);
    object["highest_bit_rate"] = rounded(pid.traffic.highestBitRate);
    addTraffic(object, pid.traffic, last);
    addTime(object, last);
    return object;
}

Json versionsJson(const std::map<std::uint8_t, std::uint64_t>& versions) {
    Json array = Json::array();
    for (const auto& [version, sections] : versions) {
        array.push_back({{"version", version}, {"sections", sections}});
    }
    return array;
}

Json tableJson(const std::string& source, const std::optional<Pid>& pid, const TableStatistics& table,
               const Position& last) {
    Json object = lineObject("table_statistics", source);
    object["pid"] = orNull(pid);
    object["table"] = orNull(table.tableName);
    object["table_id"] = table.tableId;
    object["table_id_name"] = orNull(std::string(names::TABLE_ID.of(table.tableId)));
    object["sections"] = table.sections;
    object["distinct"] = table.distinct;
    object["versions"] = versionsJson(table.versions);
    object["version_changes"] = table.versionChanges;
    object["crc_errors"] = table.crcErrors;
    object["rejected"] = table.rejected;
    object["rejected_distinct"] = table.rejectedDistinct;
    object["intervals"] = spreadJson(table.intervals.between, last);
    object["open_at_begin"] = measured(table.intervals.before);
    object["open_at_end"] = measured(table.intervals.after);
    object["bit_rate"] = rounded(table.bitRate);
    addTime(object, last);
    return object;
}

std::uint64_t countOf(Damage damage, const Summary& summary) {
    std::uint64_t count = 0;
    for (const Finding& finding : summary.damages) {
        count += finding.damage == damage ? finding.count : 0;
    }
    return count;
}

Json streamJson(const std::string& source, const Summary& summary) {
    Json object = lineObject("stream", source);
    object["packets"] = summary.packets;
    object["packet_spacing"] = summary.packetSpacing != 0 ? Json(summary.packetSpacing) : Json();
    object["duration"] = measured(summary.seconds);
    object["bit_rate"] = rounded(summary.bitRate);
    object["sections"] = summary.sections;
    object["crc_errors"] = countOf(Damage::CrcError, summary);
    object["sections_cut_short"] = countOf(Damage::SectionCutShort, summary);
    object["malformed_packets"] = countOf(Damage::MalformedPacket, summary);
    object["bytes_skipped"] = summary.skippedBytes;
    object["input_losses"] = countOf(Damage::InputLoss, summary);
    addTraffic(object, summary.traffic, summary.last);
    object["first_time"] = summary.first ? Json(rfc3339(*summary.first)) : Json();
    addTime(object, summary.last);
    return object;
}

/// The lines of all PIDs.
/// @param interim in seconds since the input began; nothing at its end
std::string statisticsLines(const std::string& source, const Summary& summary, std::optional<double> interim) {
    const auto line = [&interim](Json object) {
        if (interim) {
            object["interim"] = measured(interim);
        }
        return jsonLine(object);
    };
    std::string lines;
    for (const PidStatistics& pid : summary.statistics) {
        lines += line(pidJson(source, pid, summary.last));
        for (const TableStatistics& table : pid.tables) {
            lines += line(tableJson(source, pid.pid, table, summary.last));
        }
    }
    return lines + line(streamJson(source, summary));
}

} // namespace

void StatisticsJsonRenderer::alarm(const Alarm& alarm) {
    m_output.write(alarmLine(m_source, alarm));
}

void StatisticsJsonRenderer::interim(const Summary& summary, double seconds) {
    m_output.write(statisticsLines(m_source, summary, seconds));
}

void StatisticsJsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    m_output.write(statisticsLines(m_source, summary, {}) + transmissionLine(m_source, summary) +
                   checkLines(m_source, summary) + faultLines(m_source, faults));
}

} // namespace inspect
