#include "text/AlarmText.h"

#include "text/Columns.h"
#include "text/SectionText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

Line markOf(const Alarm& alarm) {
    if (alarm.stage == Alarm::Stage::Ended) {
        return {"=", Ink::Good};
    }
    switch (alarm.kind.severity) {
    case Severity::Error:
        return {"!", Ink::Fault};
    case Severity::Warning:
        return {"?", Ink::Remark};
    case Severity::Remark:
        break;
    }
    return {"*"};
}

Line resultOf(const CheckResult& check) {
    std::vector<std::string> parts;
    const auto add = [&parts](std::uint64_t count, std::string_view singular, std::string_view plural) {
        if (count != 0) {
            parts.push_back(counted(count, singular, plural));
        }
    };
    add(check.alarms, "alarm", "alarms");
    add(check.warnings, "warning", "warnings");
    add(check.remarks, "remark", "remarks");
    if (!parts.empty()) {
        const Ink ink = check.alarms != 0 ? Ink::Fault : check.warnings != 0 ? Ink::Remark : Ink::Plain;
        return {fmt::format("{}", fmt::join(parts, ", ")), ink};
    }
    return check.whyUnmeasured.empty() ? Line("ok", Ink::Good) : Line("not measured: " + check.whyUnmeasured);
}

const std::vector<Column> CHECK_COLUMNS{{"", "check", Column::Kind::Name},
                                        {"", "TR 101 290", Column::Kind::Name, 1},
                                        {"", "limit (s)", Column::Kind::Name, 2},
                                        {"", "result", Column::Kind::Rest}};

} // namespace

Line alarmText(const Alarm& alarm) {
    constexpr std::int64_t SECOND = 1000;
    return markOf(alarm) + " " + alarm.text + positionText(alarm.at) +
           (alarm.at.time ? "  " + utcText(alarm.at.time->milliseconds / SECOND) : "");
}

void writeAlarm(Output& output, const Style& style, const Alarm& alarm) {
    Page page{style, {}};
    appendLine(page, alarmText(alarm), 2 * INDENT);
    output.write(page.lines);
}

void appendChecks(Page& page, const Summary& summary) {
    if (summary.checks.empty()) {
        return;
    }
    std::vector<Row> rows;
    bool hasProposals = false;
    for (const CheckResult& check : summary.checks) {
        rows.push_back({std::string(check.check), std::string(check.indicator), check.limits, resultOf(check)});
        hasProposals = hasProposals || check.limits.find('*') != std::string::npos;
    }
    page.lines.emplace_back();
    appendRows(page, CHECK_COLUMNS, std::move(rows));
    page.lines.emplace_back();
    if (hasProposals) {
        appendLine(page, "* a proposal: no standard at hand sets this limit", INDENT);
        page.lines.emplace_back();
    }
}

} // namespace inspect
