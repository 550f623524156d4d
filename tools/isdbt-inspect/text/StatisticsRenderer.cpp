#include "text/StatisticsRenderer.h"

#include "text/FaultText.h"
#include "text/SectionText.h"
#include "text/StatisticsText.h"
#include "text/SummaryText.h"

#include <fmt/format.h>

namespace inspect {

void StatisticsRenderer::begin(const std::string& name) {
    m_output.begin(inputHeading(name, m_style));
}

void StatisticsRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        Page page{m_style, {}};
        appendLine(page, sectionTitle(report), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT);
        page.lines.emplace_back();
        m_output.write(page.lines);
    }
}

void StatisticsRenderer::interim(const Summary& summary, double seconds) {
    Page page{m_style, {}};
    appendLine(page, {fmt::format("-- {:.1f} s --", seconds), Ink::Heading});
    appendStatistics(page, summary);
    appendLine(page, summaryText(summary), INDENT);
    page.lines.emplace_back();
    m_output.write(page.lines);
}

void StatisticsRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    Page page{m_style, {}};
    appendStatistics(page, summary);
    appendChecks(page, summary);
    appendFaults(page, faults);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.lines);
}

} // namespace inspect
