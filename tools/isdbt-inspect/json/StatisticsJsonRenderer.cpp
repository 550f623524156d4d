#include "json/StatisticsJsonRenderer.h"

#include "naming/Names.h"
#include "json/AlarmJson.h"
#include "json/JsonValues.h"
#include "json/SectionJson.h"
#include "json/TransmissionJson.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

Json pidJson(const std::string& input, const PidStatistics& pid) {
    Json object{{"type", "pid_statistics"}, {"input", input}};
    object["pid"] = orNull(pid.pid);
    object["content"] = orNull(pid.content);
    object["layers"] = layersJson(pid.layers);
    object["packets"] = pid.packets;
    object["share"] = measured(pid.share);
    object["discontinuities"] = orNull(pid.discontinuities);
    object["bit_rate"] = rounded(pid.bitRate);
    return object;
}

Json tableJson(const std::string& input, const std::optional<Pid>& pid, const TableStatistics& table) {
    Json object{{"type", "table_statistics"}, {"input", input}};
    object["pid"] = orNull(pid);
    object["table"] = orNull(table.tableName);
    object["table_id"] = table.tableId;
    object["table_id_name"] = orNull(std::string(names::TABLE_ID.of(table.tableId)));
    object["sections"] = table.sections;
    object["distinct"] = table.distinct;
    object["version_changes"] = table.versionChanges;
    object["crc_errors"] = table.crcErrors;
    object["rejected"] = table.rejected;
    object["mean_interval"] = measured(table.meanInterval);
    object["largest_interval"] = measured(table.largestInterval);
    object["bit_rate"] = rounded(table.bitRate);
    return object;
}

} // namespace

void StatisticsJsonRenderer::alarm(const Alarm& alarm) {
    m_output.write(alarmLine(m_input, alarm));
}

void StatisticsJsonRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    std::string lines;
    for (const PidStatistics& pid : summary.statistics) {
        lines += jsonLine(pidJson(m_input, pid));
        for (const TableStatistics& table : pid.tables) {
            lines += jsonLine(tableJson(m_input, pid.pid, table));
        }
    }
    m_output.write(lines + transmissionLine(m_input, summary) + checkLines(m_input, summary) +
                   faultLines(m_input, faults));
}

} // namespace inspect
