#include "text/TablesRenderer.h"

#include "text/FaultText.h"
#include "text/FieldText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"

namespace inspect {

void TablesRenderer::begin(const std::string& name) {
    m_output.begin(inputHeading(name, m_style));
}

void TablesRenderer::section(const SectionReport& report) {
    Page page{m_style, {}};
    appendLine(page, sectionTitle(report), 2 * INDENT);
    if (report.rejection) {
        appendRejection(page, *report.rejection, INDENT);
    } else {
        appendFields(page, report.fields, INDENT);
    }
    if (!report.bytes.empty()) {
        appendSectionBytes(page, report.bytes, INDENT);
    }
    page.lines.emplace_back();
    m_output.write(page.lines);
}

void TablesRenderer::descriptor(const DescriptorReport& report) {
    Page page{m_style, {}};
    if (report.rejection) {
        appendLine(page, descriptorTitle(report), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT);
    } else if (report.taken) {
        appendFields(page, {*report.taken}, 0);
    } else {
        appendDescriptorLine(page, report.onWire, 0);
    }
    m_output.write(page.lines);
}

void TablesRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    Page page{m_style, {}};
    appendFaults(page, faults, Listed::NotOfSections);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.lines);
}

} // namespace inspect
