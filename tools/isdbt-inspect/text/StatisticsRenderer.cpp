#include "text/StatisticsRenderer.h"

#include "text/FaultText.h"
#include "text/SectionText.h"
#include "text/StatisticsText.h"
#include "text/SummaryText.h"

#include <fmt/format.h>

namespace inspect {

void StatisticsRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        Page page = emptyPage();
        appendLine(page, sectionTitle(report), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT);
        page.lines.emplace_back();
        write(page);
    }
}

void StatisticsRenderer::interim(const Summary& summary, double seconds) {
    Page page = emptyPage();
    appendLine(page, {fmt::format("-- {:.1f} s --", seconds), Ink::Heading});
    appendStatistics(page, summary);
    appendLine(page, summaryText(summary), INDENT);
    page.lines.emplace_back();
    write(page);
}

void StatisticsRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    Page page = emptyPage();
    appendStatistics(page, summary);
    appendChecks(page, summary);
    appendFaults(page, faults);
    appendLine(page, summaryText(summary), INDENT);
    write(page);
}

} // namespace inspect
