#include "json/StatisticsJsonRenderer.h"

#include "naming/Names.h"
#include "packets/WallClock.h"
#include "json/AlarmJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

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
    object["bytes"] = table.bytes;
    addTime(object, last);
    return object;
}

Json streamJson(const std::string& source, const Summary& summary) {
    Json object = lineObject("stream", source);
    object["packets"] = summary.packets;
    object["packet_spacing"] = summary.packetSpacing != 0 ? Json(summary.packetSpacing) : Json();
    object["duration"] = measured(summary.seconds);
    object["bit_rate"] = rounded(summary.bitRate);
    object["sections"] = summary.sections;
    object["crc_errors"] = countOf(summary, Damage::CrcError);
    object["sections_cut_short"] = countOf(summary, Damage::SectionCutShort);
    object["malformed_packets"] = countOf(summary, Damage::MalformedPacket);
    object["bytes_skipped"] = summary.skippedBytes;
    object["input_losses"] = countOf(summary, Damage::InputLoss);
    addTraffic(object, summary.traffic, summary.last);
    object["first_time"] = summary.first ? Json(rfc3339(*summary.first)) : Json();
    addTime(object, summary.last);
    return object;
}

} // namespace

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

void StatisticsJsonRenderer::interim(const Summary& summary, double seconds) {
    write(statisticsLines(source(), summary, seconds));
}

std::string rangeLines(const std::string& source, const Summary& summary) {
    return (summary.range->ended ? "" : statisticsLines(source, summary, {})) + rangeLine(source, summary);
}

void StatisticsJsonRenderer::endRange(const Summary& summary) {
    write(rangeLines(source(), summary));
}

void StatisticsJsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    write(statisticsLines(source(), summary, {}) + transmissionLine(source(), summary) + checkLines(source(), summary) +
          faultLines(source(), faults));
}

} // namespace inspect
