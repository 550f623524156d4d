#include "text/StatisticsText.h"

#include "tables/TableKinds.h"
#include "text/Columns.h"
#include "text/TransmissionText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr const char* UNKNOWN = "-";
constexpr double PACKET_BITS = 188 * 8;
constexpr double KILO = 1000;
constexpr double PERCENT = 100;

/// Large numbers need no fraction.
std::string rounded(double value) {
    constexpr double LARGE = 1000;
    constexpr double VERY_LARGE = 10000;
    return fmt::format("{:.{}f}", value, value < LARGE ? 2 : value < VERY_LARGE ? 1 : 0);
}

std::string kilobits(std::optional<double> bitRate) {
    return bitRate ? rounded(*bitRate / KILO) : UNKNOWN;
}

std::string interval(std::optional<double> seconds) {
    constexpr double LONG = 100;
    return seconds ? fmt::format("{:.{}f} s", *seconds, *seconds < LONG ? 3 : 1) : UNKNOWN;
}

std::string pidText(std::optional<Pid> pid) {
    return pid ? fmt::format("0x{:04X}", *pid) : UNKNOWN;
}

/// A count that catches the eye unless it is 0.
Line noticed(std::uint64_t count, Ink ink) {
    return {std::to_string(count), count == 0 ? Ink::Plain : ink};
}

const std::vector<Column> TABLE_COLUMNS{{"", "PID", Column::Kind::Name},
                                        {"", "table", Column::Kind::Name},
                                        {"", "sections"},
                                        {"", "distinct", Column::Kind::Number, 2},
                                        {"version", "changes", Column::Kind::Number, 2},
                                        {"CRC", "errors"},
                                        {"", "rejected"},
                                        {"mean", "interval", Column::Kind::Number, 2},
                                        {"largest", "interval", Column::Kind::Number, 2},
                                        {"", "kbit/s", Column::Kind::Number, 1}};

/// Names of tables that the library does not understand are long; the PIDs have them behind all else.
std::string labelIn(const Style& style, const TableStatistics& table) {
    constexpr std::size_t ROOM_FOR_NAMES = 100;
    return table.tableName.empty() && style.width < ROOM_FOR_NAMES ? fmt::format("0x{:02X}", table.tableId)
                                                                   : tableLabel(table.tableId);
}

Row rowOf(const PidStatistics& pid, const TableStatistics& table, const Style& style) {
    return {{pidText(pid.pid), Ink::Name},
            {labelIn(style, table), Ink::Name},
            std::to_string(table.sections),
            std::to_string(table.distinct),
            noticed(table.versionChanges, Ink::Remark),
            noticed(table.crcErrors, Ink::Fault),
            noticed(table.rejected, Ink::Fault),
            interval(table.meanInterval),
            interval(table.largestInterval),
            kilobits(table.bitRate)};
}

const std::vector<Column> PID_COLUMNS{{"", "PID", Column::Kind::Name},
                                      {"", "packets"},
                                      {"", "share"},
                                      {"", "kbit/s", Column::Kind::Number, 1},
                                      {"", "discontinuities", Column::Kind::Number, 2},
                                      {"", "content", Column::Kind::Rest}};

/// With the layer before the content, where packets tell theirs.
std::vector<Column> pidColumns(const Summary& summary) {
    std::vector<Column> columns = PID_COLUMNS;
    if (summary.transmission && summary.transmission->trailers) {
        columns.insert(columns.end() - 1, {"", "layer", Column::Kind::Name});
    }
    return columns;
}

/// "private sections: AIT"
std::string contentOf(const PidStatistics& pid) {
    std::vector<std::string> names;
    for (const TableStatistics& table : pid.tables) {
        names.push_back(tableLabel(table.tableId));
    }
    return fmt::format("{}{}{}", pid.content, pid.content.empty() || names.empty() ? "" : ": ", fmt::join(names, ", "));
}

/// "A"
std::string layersOf(const LayerSet& layers) {
    std::vector<std::string> names;
    for (unsigned indicator = 0; indicator < layers.size(); ++indicator) {
        if (layers[indicator]) {
            names.push_back(layerName(indicator));
        }
    }
    return fmt::format("{}", fmt::join(names, "+"));
}

Row rowOf(const PidStatistics& pid) {
    Row row{{pidText(pid.pid), Ink::Name},
            std::to_string(pid.packets),
            fmt::format("{:.2f} %", pid.share * PERCENT),
            kilobits(pid.bitRate),
            pid.discontinuities ? noticed(*pid.discontinuities, Ink::Fault) : Line(UNKNOWN),
            contentOf(pid)};
    if (pid.layers) {
        row.insert(row.end() - 1, layersOf(*pid.layers));
    }
    return row;
}

std::string clockText(const Summary& summary) {
    if (!summary.seconds) {
        return "no clock (PCR) in the stream: intervals and bit rates are unknown";
    }
    const double bits = static_cast<double>(summary.packets) * PACKET_BITS;
    return fmt::format("{:.3f} s by the stream's clock, {} kbit/s", *summary.seconds,
                       kilobits(bits / *summary.seconds));
}

} // namespace

void appendStatistics(Page& page, const Summary& summary) {
    std::vector<Row> tables;
    std::vector<Row> pids;
    for (const PidStatistics& pid : summary.statistics) {
        for (const TableStatistics& table : pid.tables) {
            tables.push_back(rowOf(pid, table, page.style));
        }
        if (pid.packets != 0) {
            pids.push_back(rowOf(pid));
        }
    }
    if (!tables.empty()) {
        appendRows(page, TABLE_COLUMNS, std::move(tables));
        page.lines.emplace_back();
    }
    if (!pids.empty()) {
        appendRows(page, pidColumns(summary), std::move(pids));
        page.lines.emplace_back();
        appendLine(page, clockText(summary), INDENT);
    }
    if (summary.transmission) {
        page.lines.emplace_back();
        appendTransmission(page, summary);
    }
}

} // namespace inspect
