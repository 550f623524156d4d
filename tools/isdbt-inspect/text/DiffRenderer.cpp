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

} // namespace

/// Adds what time it was, where that is known and there is room for it.
Line DiffRenderer::timed(const Line& line, const Position& position) const {
    const Line time = position.time ? "  " + Line(rfc3339(*position.time)) : Line();
    return line.cells() + time.cells() <= m_style.width ? line + time : line;
}

void DiffRenderer::writeLine(const Line& line) const {
    Page page{m_style, {}};
    appendLine(page, line, 2 * INDENT);
    m_output.write(page.lines);
}

void DiffRenderer::tellInput(const std::string& name) {
    m_output.begin(inputHeading(name, m_style));
}

void DiffRenderer::tellNew(const SectionReport& report) {
    writeLine(timed(Line("+", Ink::Good) + " " + changeTitle(report) + "  " + Line("new", Ink::Good), report.position));
}

void DiffRenderer::tellReturn(const SectionReport& report) {
    writeLine(timed("  " + changeTitle(report) + "  as it was", report.position));
}

void DiffRenderer::tellChange(const SectionReport& former, const SectionReport& report,
                              const std::vector<Change>& changes) {
    Page page{m_style, {}};
    Line title = Line("~", Ink::Remark) + " " + changeTitle(report, versionOf(former));
    if (former.pid != report.pid && former.pid) {
        title += fmt::format("  was on PID 0x{:04X}", *former.pid);
    }
    const std::string passed = passedTime(report, changes);
    appendLine(page, passed.empty() ? timed(title, report.position) : title + passed, 2 * INDENT);
    if (passed.empty() && changes.empty()) {
        appendLine(page, blanks(2 * INDENT) + "no field differs");
    } else if (passed.empty()) {
        appendChanges(page, changes, 2 * INDENT);
    }
    m_output.write(page.lines);
}

void DiffRenderer::tellRejection(const SectionReport& report) {
    Page page{m_style, {}};
    appendLine(page, timed(Line("!", Ink::Fault) + " " + changeTitle(report), report.position), 2 * INDENT);
    appendRejection(page, *report.rejection, 2 * INDENT);
    m_output.write(page.lines);
}

void DiffRenderer::tellEnd(const SectionReport& /*last*/, unsigned number) {
    writeLine(blanks(2 * INDENT) + Line("-", Ink::Fault) + fmt::format(" section {} is no more", number));
}

void DiffRenderer::tellMissing(const SectionReport& report) {
    writeLine(Line("-", Ink::Fault) + " " + sectionName(report) + "  not in this input");
}

void DiffRenderer::tellOutcome(const Summary& summary, const Faults& faults) {
    Page page{m_style, {}};
    appendFaults(page, faults, Listed::NotOfSections);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.lines);
}

} // namespace inspect
