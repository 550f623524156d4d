#include "text/TablesRenderer.h"

#include "text/FaultText.h"
#include "text/FieldText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"

namespace inspect {

void TablesRenderer::section(const SectionReport& report) {
    Page page = emptyPage();
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
    write(page);
}

void TablesRenderer::descriptor(const DescriptorReport& report) {
    Page page = emptyPage();
    if (report.rejection) {
        appendLine(page, descriptorTitle(report), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT);
    } else if (report.taken) {
        appendFields(page, {*report.taken}, 0);
    } else {
        appendDescriptorLine(page, report.onWire, 0);
    }
    write(page);
}

void TablesRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    Page page = emptyPage();
    appendFaults(page, faults, Listed::NotOfSections);
    appendLine(page, summaryText(summary), INDENT);
    write(page);
}

} // namespace inspect
