#include "text/StatisticsRenderer.h"

#include "text/FaultText.h"
#include "text/SectionText.h"
#include "text/StatisticsText.h"
#include "text/SummaryText.h"

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;

} // namespace

void StatisticsRenderer::begin(const std::string& name) {
    m_output.write(inputHeading(name, m_style));
}

void StatisticsRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        Page page{m_style, {}};
        appendLine(page, sectionTitle(report, m_style), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT);
        m_output.write(page.text + '\n');
    }
}

void StatisticsRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    Page page{m_style, {}};
    appendStatistics(page, summary);
    appendFaults(page, faults);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.text);
}

} // namespace inspect
