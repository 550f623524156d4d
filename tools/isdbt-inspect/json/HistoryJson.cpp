#include "json/HistoryJson.h"

#include "naming/Names.h"
#include "tables/TableKinds.h"
#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

const char* nameOf(EventKind kind) {
    switch (kind) {
    case EventKind::BytesSkipped:
        return "bytes_skipped";
    case EventKind::SyncByteError:
        return "sync_byte_error";
    case EventKind::SyncLost:
        return "sync_lost";
    case EventKind::Discontinuity:
        return "discontinuity";
    case EventKind::DiscontinuityKnown:
        return "announced_discontinuity";
    case EventKind::TransportError:
        return "transport_error";
    case EventKind::Scrambled:
        return "scrambled";
    case EventKind::PcrInterval:
        return "pcr_interval";
    case EventKind::PcrJump:
        return "pcr_jump";
    case EventKind::PcrSplice:
        return "pcr_splice";
    case EventKind::PcrFrozen:
        return "pcr_frozen";
    case EventKind::PcrCeased:
        return "pcr_ceased";
    case EventKind::PtsInterval:
        return "pts_interval";
    case EventKind::Loss:
        return "loss";
    case EventKind::Pause:
        return "pause";
    case EventKind::NewStream:
        return "new_stream";
    case EventKind::SlowClock:
        return "slow_clock";
    case EventKind::Looped:
        break;
    }
    return "looped";
}

/// A column of a course: a part of each of its cells.
template <class Cell, class Of> Json column(const History::Course<Cell>& course, const Of& of) {
    Json array = Json::array();
    for (const Cell& cell : course) {
        array.push_back(of(cell));
    }
    return array;
}

/// How many steps each cell is behind the one before, and the first behind the begin.
template <class Cell> Json gaps(const History::Course<Cell>& course) {
    std::uint32_t before = 0;
    return column(course, [&before](const Cell& cell) { return cell.step - std::exchange(before, cell.step); });
}

std::string pidLine(const std::string& source, std::size_t pid, const History::Course<History::Packets>& course) {
    Json object = lineObject("pid_history", source);
    object["pid"] = pid;
    object["gaps"] = gaps(course);
    object["packets"] = column(course, [](const auto& cell) { return cell.packets; });
    return jsonLine(object);
}

std::string tableLine(const std::string& source, const History::TableOfPid& table,
                      const History::Course<History::Sections>& course) {
    Json object = lineObject("table_history", source);
    object["pid"] = table.first;
    object["table"] = orNull(std::string(tableName(table.second)));
    object["table_id"] = table.second;
    object["table_id_name"] = orNull(std::string(names::TABLE_ID.of(table.second)));
    object["gaps"] = gaps(course);
    object["sections"] = column(course, [](const auto& cell) { return cell.sections; });
    object["distinct"] = column(course, [](const auto& cell) { return cell.distinct; });
    object["crc_errors"] = column(course, [](const auto& cell) { return cell.crcErrors; });
    object["rejected"] = column(course, [](const auto& cell) { return cell.rejected; });
    object["versions"] = column(course, [](const auto& cell) {
        return cell.version == History::Sections::NO_VERSION ? Json() : Json(cell.version);
    });
    return jsonLine(object);
}

std::string eventsLine(const std::string& source, const History::EventOfPid& event,
                       const History::Course<History::Happenings>& course) {
    Json object = lineObject("event_history", source);
    object["event"] = nameOf(event.first);
    object["pid"] = orNull(event.second);
    object["gaps"] = gaps(course);
    object["counts"] = column(course, [](const auto& cell) { return cell.count; });
    object["most"] = column(course, [](const auto& cell) { return measured(cell.most); });
    return jsonLine(object);
}

std::string eventLine(const std::string& source, const Event& event) {
    Json object = lineObject("event", source);
    object["event"] = nameOf(event.kind);
    object["pid"] = orNull(event.pid);
    addPosition(object, event.at);
    object["amount"] = measured(event.amount);
    object["from"] = measured(event.from);
    object["to"] = measured(event.to);
    return jsonLine(object);
}

} // namespace

std::string historyLines(const std::string& source, const History& history, std::uint64_t sectionsLeftOut) {
    Json object = lineObject("history", source);
    object["step"] = history.stepLength();
    object["sections_left_out"] = sectionsLeftOut;
    object["events_left_out"] = history.eventsLeftOut();
    std::string lines = jsonLine(object);
    for (std::size_t pid = 0; pid < history.packets().size(); ++pid) {
        if (!history.packets()[pid].empty()) {
            lines += pidLine(source, pid, history.packets()[pid]);
        }
    }
    for (const auto& [table, course] : history.tables()) {
        lines += tableLine(source, table, course);
    }
    for (const auto& [event, course] : history.happenings()) {
        lines += eventsLine(source, event, course);
    }
    for (const Event& event : history.events()) {
        lines += eventLine(source, event);
    }
    return lines;
}

} // namespace inspect
