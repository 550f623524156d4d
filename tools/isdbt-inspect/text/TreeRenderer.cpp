#include "text/TreeRenderer.h"

#include "arranging/Arrangement.h"
#include "text/FaultText.h"
#include "text/OutlineText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"
#include "text/TransmissionText.h"

#include <fmt/format.h>

namespace inspect {

void TreeRenderer::begin(const std::string& name) {
    m_rejections = {};
    m_output.begin(inputHeading(name, m_style));
}

void TreeRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        m_rejections.put(placeOf(report), report);
    }
}

void TreeRenderer::end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) {
    Page page{m_style, {}};
    appendOutline(page, arrange(multiplex, faults));
    appendTransmission(page, summary);
    appendRejections(page);
    appendFaults(page, faults);
    appendRemarks(page, summary.forgotten);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.lines);
}

void TreeRenderer::appendRejections(Page& page) const {
    const auto append = m_style.full ? appendRejection : appendRejectionInBrief;
    m_rejections.forEach([&page, append](const TableKey& /*table*/, const SectionReport& report) {
        appendLine(page, sectionTitle(report), 2 * INDENT);
        append(page, *report.rejection, INDENT);
        page.lines.emplace_back();
    });
}

void TreeRenderer::appendRemarks(Page& page, std::uint64_t forgotten) const {
    if (forgotten != 0) {
        appendLine(page, fmt::format("{} older sections are not in the outline", forgotten), INDENT);
    }
    if (m_rejections.forgotten() != 0) {
        appendLine(page, fmt::format("{} older rejected sections are not shown", m_rejections.forgotten()), INDENT);
    }
}

} // namespace inspect
