#include "text/DiffRenderer.h"

#include "packets/WallClock.h"
#include "tables/TableKinds.h"
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

/// Adds what time it was, where that is known and there is room for it.
Line timed(const Line& line, const Position& position, const Style& style) {
    const Line time = position.time ? "  " + Line(rfc3339(*position.time)) : Line();
    return line.cells() + time.cells() <= style.width ? line + time : line;
}

void appendChanged(Page& page, const Fate& fate) {
    const SectionReport& former = *fate.former;
    Line title = Line("~", Ink::Remark) + " " + changeTitle(fate.report, versionOf(former));
    if (former.pid != fate.report.pid && former.pid) {
        title += fmt::format("  was on PID 0x{:04X}", *former.pid);
    }
    const std::string passed = passedTime(fate.report, fate.changes);
    appendLine(page, passed.empty() ? timed(title, fate.report.position, page.style) : title + passed, 2 * INDENT);
    if (passed.empty() && fate.changes.empty()) {
        appendLine(page, blanks(2 * INDENT) + "no field differs");
    } else if (passed.empty()) {
        appendChanges(page, fate.changes, 2 * INDENT);
    }
}

/// What is to be said of a section in one line.
Line titleOf(const Fate& fate, const Style& style) {
    const auto timed = [&](const Line& line) { return inspect::timed(line, fate.report.position, style); };
    switch (fate.kind) {
    case Fate::New:
        return timed(Line("+", Ink::Good) + " " + changeTitle(fate.report) + "  " + Line("new", Ink::Good));
    case Fate::Returned:
        return timed("  " + changeTitle(fate.report) + "  as it was");
    case Fate::Rejected:
        return timed(Line("!", Ink::Fault) + " " + changeTitle(fate.report));
    case Fate::Ended:
        return blanks(2 * INDENT) + Line("-", Ink::Fault) + fmt::format(" section {} is no more", fate.ended);
    default:
        return Line("-", Ink::Fault) + " " + sectionName(fate.report) + "  not in this input";
    }
}

} // namespace

void DiffRenderer::tell(const Fate& fate) {
    Page page = emptyPage();
    if (fate.kind == Fate::Changed) {
        appendChanged(page, fate);
    } else {
        appendLine(page, titleOf(fate, style()), 2 * INDENT);
    }
    if (fate.kind == Fate::Rejected) {
        appendRejection(page, *fate.report.rejection, 2 * INDENT);
    }
    write(page);
}

void DiffRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    Page page = emptyPage();
    appendFaults(page, faults, Listed::NotOfSections);
    appendLine(page, summaryText(summary), INDENT);
    write(page);
}

} // namespace inspect
