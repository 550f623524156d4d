#include "text/ApplicationsRenderer.h"

#include "multiplex/Titles.h"
#include "tables/TableKinds.h"
#include "text/FaultText.h"
#include "text/FieldText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"

#include <fmt/format.h>
#include <set>

namespace inspect {

namespace {

using Verdict = ApplicationReport::Verdict;

constexpr std::size_t RESULT_WIDTH = 8;

Line resultLine(Step::Result result) {
    switch (result) {
    case Step::Result::Passed:
        return {"passed", Ink::Good};
    case Step::Result::Failed:
        return {"failed", Ink::Fault};
    default:
        return {"not seen", Ink::Remark};
    }
}

Ink inkOf(Verdict verdict) {
    return verdict == Verdict::Starts ? Ink::Good : verdict == Verdict::DoesNotStart ? Ink::Fault : Ink::Remark;
}

std::string placeText(const Step& step) {
    return (step.place.pid ? fmt::format("  PID 0x{:04X}", *step.place.pid) : "") +
           (step.position ? positionText(*step.position) : "");
}

/// Appends the steps, a line each. What several in a row stand in is said of the first, and shown of the first of all.
void appendSteps(Page& page, const std::vector<Step>& steps) {
    const std::size_t margin = INDENT + RESULT_WIDTH + INDENT;
    std::string lastPlace;
    std::set<std::vector<std::uint8_t>> shown{{}};
    for (const Step& step : steps) {
        const std::string place = placeText(step);
        const Line where(place == lastPlace ? "" : place, Ink::Remark);
        appendLine(page, blanks(INDENT) + padded(resultLine(step.result), RESULT_WIDTH + INDENT) + step.text + where,
                   margin);
        lastPlace = place;
        if (shown.insert(step.bytes).second) {
            appendBytes(page, step.bytes, margin);
        }
    }
}

void appendApplication(Page& page, const ApplicationReport& report, const Multiplex& multiplex) {
    Line title =
        Line(fmt::format("Application 0x{:08X}/0x{:04X}", report.organisationId, report.applicationId), Ink::Heading);
    if (!report.name.empty()) {
        title += "  " + Line(fmt::format("\"{}\"", report.name), Ink::Name);
    }
    for (const Table* const ait : multiplex.tables().on(report.place.pid, AIT)) {
        title += ait->key.extension == report.place.extension ? "  " + titleOf(*ait) : "";
    }
    title += report.serviceId ? fmt::format("  service 0x{0:04X} ({0})", *report.serviceId) : "";
    appendLine(page, title, 2 * INDENT);
    appendSteps(page, report.steps);
    appendLine(page, blanks(INDENT) + Line(report.text, inkOf(report.verdict)), 2 * INDENT);
    page.lines.emplace_back();
}

} // namespace

void ApplicationsRenderer::end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) {
    Page page = emptyPage();
    std::size_t all = 0;
    for (const Table* const ait : multiplex.tables().of(AIT)) {
        all += ait->entries("applications").size();
    }
    for (const ApplicationReport& report : summary.applications) {
        appendApplication(page, report, multiplex);
    }
    if (summary.applications.empty()) {
        appendLine(page, multiplex.tables().of(AIT).empty() ? "no AIT came" : "no AIT has an application");
    } else if (all > summary.applications.size()) {
        appendLine(page, fmt::format("{} more applications were not looked at", all - summary.applications.size()));
    }
    appendFaults(page, faults);
    appendLine(page, summaryText(summary), INDENT);
    write(page);
}

} // namespace inspect
