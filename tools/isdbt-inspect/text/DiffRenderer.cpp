#include "text/DiffRenderer.h"

#include "tables/TableKinds.h"
#include "text/AlarmText.h"
#include "text/ChangeText.h"
#include "text/FaultText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"

#include <fmt/format.h>

namespace inspect {

namespace {

std::optional<std::uint8_t> versionOf(const SectionReport& report) {
    return report.header ? std::optional(report.header->version) : std::nullopt;
}

/// The time goes on in each TOT: "2025-06-15T21:30:00Z -> 2025-06-15T21:30:01Z (+1 s)". Empty when more changes.
std::string passedTime(const SectionReport& report, const std::vector<Change>& changes) {
    if (report.tableId != TOT || changes.size() != 1 || changes.front().path != "unix_time") {
        return {};
    }
    const Change& change = changes.front();
    const std::int64_t passed =
        std::get<Number>(change.after->value).value - std::get<Number>(change.before->value).value;
    return fmt::format("  {} ({:+} s)", change.after->reading, passed);
}

void appendChanged(Page& page, const Event& event) {
    const SectionReport& former = *event.former;
    Line title = Line("~", Ink::Remark) + " " + changeTitle(event.report, versionOf(former));
    if (former.pid != event.report.pid && former.pid) {
        title += fmt::format("  was on PID 0x{:04X}", *former.pid);
    }
    const std::string passed = passedTime(event.report, event.changes);
    appendLine(page, title + passed, 2 * INDENT);
    if (passed.empty() && event.changes.empty()) {
        appendLine(page, blanks(2 * INDENT) + "no field differs");
    } else if (passed.empty()) {
        appendChanges(page, event.changes, 2 * INDENT);
    }
}

/// What is to be said of an event in one line.
Line titleOf(const Event& event) {
    switch (event.kind) {
    case Event::New:
        return Line("+", Ink::Good) + " " + changeTitle(event.report) + "  " + Line("new", Ink::Good);
    case Event::Returned:
        return "  " + changeTitle(event.report) + "  as it was";
    case Event::Rejected:
        return Line("!", Ink::Fault) + " " + changeTitle(event.report);
    case Event::Ended:
        return blanks(2 * INDENT) + Line("-", Ink::Fault) + fmt::format(" section {} is no more", event.ended);
    default:
        return Line("-", Ink::Fault) + " " + sectionName(event.report) + "  not in this input";
    }
}

} // namespace

void DiffRenderer::tellInput(const std::string& name) {
    m_output.begin(inputHeading(name, m_style));
}

void DiffRenderer::tell(const Event& event) {
    Page page{m_style, {}};
    if (event.kind == Event::Changed) {
        appendChanged(page, event);
    } else {
        appendLine(page, titleOf(event), 2 * INDENT);
    }
    if (event.kind == Event::Rejected) {
        appendRejection(page, *event.report.rejection, 2 * INDENT);
    }
    m_output.write(page.lines);
}

void DiffRenderer::tellAlarm(const Alarm& alarm) {
    writeAlarm(m_output, m_style, alarm);
}

void DiffRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    Page page{m_style, {}};
    appendFaults(page, faults, Listed::NotOfSections);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.lines);
}

} // namespace inspect
