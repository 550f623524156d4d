#include "text/StatisticsText.h"

#include "packets/WallClock.h"
#include "tables/TableKinds.h"
#include "text/Columns.h"
#include "text/TransmissionText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr const char* UNKNOWN = "-";
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

/// Names of tables that the library does not understand are long; the PIDs have them behind all else.
std::string labelIn(const Style& style, const TableStatistics& table) {
    constexpr std::size_t ROOM_FOR_NAMES = 100;
    return table.tableName.empty() && style.width < ROOM_FOR_NAMES ? fmt::format("0x{:02X}", table.tableId)
                                                                   : tableLabel(table.tableId);
}

/// "0, 3-5"
std::string versionsOf(const TableStatistics& table) {
    std::string text;
    for (auto each = table.versions.begin(); each != table.versions.end();) {
        const unsigned first = each->first;
        unsigned last = first;
        for (++each; each != table.versions.end() && each->first == last + 1; ++each) {
            ++last;
        }
        text += fmt::format("{}{}", text.empty() ? "" : ", ", first);
        text += last != first ? fmt::format("-{}", last) : "";
    }
    return text.empty() ? UNKNOWN : text;
}

const std::vector<Column> SECTION_COLUMNS{{"", "PID", Column::Kind::Name},
                                          {"", "table", Column::Kind::Name},
                                          {"", "sections"},
                                          {"", "distinct", Column::Kind::Number, 2},
                                          {"", "versions", Column::Kind::Number, 4},
                                          {"version", "changes", Column::Kind::Number, 3},
                                          {"CRC", "errors"},
                                          {"", "rejected"},
                                          {"rejected", "distinct", Column::Kind::Number, 5},
                                          {"", "kbit/s", Column::Kind::Number, 1}};

Row sectionRow(const PidStatistics& pid, const TableStatistics& table, const Style& style) {
    return {{pidText(pid.pid), Ink::Name},
            {labelIn(style, table), Ink::Name},
            std::to_string(table.sections),
            std::to_string(table.distinct),
            versionsOf(table),
            noticed(table.versionChanges, Ink::Remark),
            noticed(table.crcErrors, Ink::Fault),
            noticed(table.rejected, Ink::Fault),
            noticed(table.rejectedDistinct, Ink::Fault),
            kilobits(table.bitRate)};
}

const std::vector<Column> INTERVAL_COLUMNS{{"", "PID", Column::Kind::Name},
                                           {"", "table", Column::Kind::Name},
                                           {"shortest", "interval", Column::Kind::Number, 4},
                                           {"mean", "interval", Column::Kind::Number, 3},
                                           {"longest", "interval"},
                                           {"", "from", Column::Kind::Number, 2},
                                           {"", "to", Column::Kind::Number, 1},
                                           {"open at", "begin", Column::Kind::Number, 5},
                                           {"open at", "end", Column::Kind::Number, 5}};

/// One that the stream does not show whole may have lasted longer.
Row intervalRow(const PidStatistics& pid, const TableStatistics& table, const Summary& summary, const Style& style) {
    const Intervals& intervals = table.intervals;
    Row row{{pidText(pid.pid), Ink::Name},
            {labelIn(style, table), Ink::Name},
            interval(intervals.between.minimum()),
            interval(intervals.between.mean())};
    if (const std::optional<LongestInterval> longest = longestOf(intervals, summary.last.seconds)) {
        const bool isOpen = !longest->from || !longest->to;
        const Ink ink = isOpen ? Ink::Remark : Ink::Plain;
        row.emplace_back((isOpen ? "> " : "") + interval(longest->seconds), ink);
        row.emplace_back(longest->from ? interval(longest->from) : "begin", ink);
        row.emplace_back(longest->to ? interval(longest->to) : "end", ink);
    } else {
        row.insert(row.end(), 3, UNKNOWN);
    }
    row.emplace_back(interval(intervals.before));
    row.emplace_back(interval(intervals.after));
    return row;
}

const std::vector<Column> PID_COLUMNS{{"", "PID", Column::Kind::Name},         {"", "packets"},
                                      {"", "share", Column::Kind::Number, 2},  {"", "kbit/s", Column::Kind::Number, 1},
                                      {"", "lowest", Column::Kind::Number, 3}, {"", "highest", Column::Kind::Number, 3},
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
Line contentOf(const PidStatistics& pid) {
    std::vector<std::string> names;
    for (const TableStatistics& table : pid.tables) {
        names.push_back(tableLabel(table.tableId));
    }
    const std::string content =
        fmt::format("{}{}{}", pid.content, pid.content.empty() || names.empty() ? "" : ": ", fmt::join(names, ", "));
    const Line remark = pid.traffic.packets == 0 ? Line("no packets", Ink::Remark)
                        : pid.announced == false ? Line("not announced", Ink::Remark)
                                                 : Line();
    return remark.empty() || content.empty() ? remark + content : remark + ": " + content;
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

Row pidRow(const PidStatistics& pid) {
    Row row{{pidText(pid.pid), Ink::Name},
            std::to_string(pid.traffic.packets),
            fmt::format("{:.2f} %", pid.share * PERCENT),
            kilobits(pid.bitRate),
            kilobits(pid.traffic.lowestBitRate),
            kilobits(pid.traffic.highestBitRate),
            contentOf(pid)};
    if (pid.layers) {
        row.insert(row.end() - 1, layersOf(*pid.layers));
    }
    return row;
}

const std::vector<Column> DAMAGE_COLUMNS{{"", "PID", Column::Kind::Name},
                                         {"", "discontinuities"},
                                         {"packets", "lost"},
                                         {"announced", "jumps", Column::Kind::Number, 2},
                                         {"", "duplicates", Column::Kind::Number, 1},
                                         {"transport", "errors"},
                                         {"", "scrambled"}};

/// Nothing when all its packets came as they were sent.
std::optional<Row> damageRow(const PidStatistics& pid) {
    const PidTraffic& traffic = pid.traffic;
    if (traffic.discontinuities + traffic.announcedJumps + traffic.duplicates + traffic.transportErrors +
            traffic.scrambled ==
        0) {
        return std::nullopt;
    }
    const std::string least = traffic.lost == 0 ? "" : ">= ";
    return Row{{pidText(pid.pid), Ink::Name},
               noticed(traffic.discontinuities, Ink::Fault),
               Line(least) + noticed(traffic.lost, Ink::Fault),
               noticed(traffic.announcedJumps, Ink::Remark),
               std::to_string(traffic.duplicates),
               noticed(traffic.transportErrors, Ink::Fault),
               noticed(traffic.scrambled, Ink::Remark)};
}

const std::vector<Column> CLOCK_COLUMNS{{"", "PID", Column::Kind::Name},
                                        {"", "PCRs", Column::Kind::Number, 3},
                                        {"mean", "interval", Column::Kind::Number, 2},
                                        {"longest", "interval"},
                                        {"", "ended", Column::Kind::Number, 1},
                                        {"PCR", "jumps"},
                                        {"longest", "of PTSs"},
                                        {"", "ended", Column::Kind::Number, 1}};

std::string endOfLongest(const Spread& spread) {
    return spread.count() == 0 ? UNKNOWN : interval(spread.longestAt().seconds);
}

/// Nothing for a PID without time stamps.
std::optional<Row> clockRow(const PidStatistics& pid) {
    const PidTraffic& traffic = pid.traffic;
    const Spread& references = traffic.pcrIntervals;
    if (traffic.pcrs + traffic.ptsIntervals.count() == 0) {
        return std::nullopt;
    }
    return Row{{pidText(pid.pid), Ink::Name},
               std::to_string(traffic.pcrs),
               interval(references.mean()),
               interval(references.maximum()),
               endOfLongest(references),
               noticed(traffic.pcrJumps, Ink::Fault),
               interval(traffic.ptsIntervals.maximum()),
               endOfLongest(traffic.ptsIntervals)};
}

/// "2025-06-15T21:30:00.000Z to 2025-06-15T21:30:01.987Z by the TOT"; empty when it is not known.
std::string worldTimeText(const Summary& summary) {
    const std::optional<WallTime>& end = summary.last.time;
    return summary.first && end
               ? fmt::format("{} to {} by {}", rfc3339(*summary.first), rfc3339(*end),
                             end->source == WallTime::Source::Arrival ? "this machine's clock" : "the TOT")
               : "";
}

std::string clockText(const Summary& summary) {
    if (!summary.seconds) {
        return "no clock (PCR) in the stream: intervals and bit rates are unknown";
    }
    return fmt::format("{:.3f} s by the stream's clock, {} kbit/s", *summary.seconds, kilobits(summary.bitRate));
}

/// Appends a table, and an empty line behind it; nothing without rows.
void appendTable(Page& page, std::vector<Column> columns, std::vector<Row> rows) {
    if (!rows.empty()) {
        appendRows(page, std::move(columns), std::move(rows));
        page.lines.emplace_back();
    }
}

void appendTables(Page& page, const Summary& summary) {
    std::vector<Row> sections;
    std::vector<Row> intervals;
    for (const PidStatistics& pid : summary.statistics) {
        for (const TableStatistics& table : pid.tables) {
            sections.push_back(sectionRow(pid, table, page.style));
            if (summary.last.seconds) {
                intervals.push_back(intervalRow(pid, table, summary, page.style));
            }
        }
    }
    appendTable(page, SECTION_COLUMNS, std::move(sections));
    appendTable(page, INTERVAL_COLUMNS, std::move(intervals));
}

void appendPids(Page& page, const Summary& summary) {
    std::vector<Row> pids;
    std::vector<Row> damages;
    std::vector<Row> clocks;
    for (const PidStatistics& pid : summary.statistics) {
        pids.push_back(pidRow(pid));
        if (std::optional<Row> row = damageRow(pid)) {
            damages.push_back(std::move(*row));
        }
        if (std::optional<Row> row = clockRow(pid)) {
            clocks.push_back(std::move(*row));
        }
    }
    appendTable(page, pidColumns(summary), std::move(pids));
    appendTable(page, DAMAGE_COLUMNS, std::move(damages));
    appendTable(page, CLOCK_COLUMNS, std::move(clocks));
}

} // namespace

void appendStatistics(Page& page, const Summary& summary) {
    appendTables(page, summary);
    if (summary.packets != 0 && !summary.statistics.empty()) {
        appendPids(page, summary);
        appendLine(page, clockText(summary), INDENT);
        if (const std::string time = worldTimeText(summary); !time.empty()) {
            appendLine(page, time, INDENT);
        }
    }
    if (summary.transmission) {
        page.lines.emplace_back();
        appendTransmission(page, summary);
    }
}

} // namespace inspect
