#include "text/TreeRenderer.h"

#include "arranging/Arrangement.h"
#include "text/FaultText.h"
#include "text/OutlineText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"
#include "text/TransmissionText.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

void TreeRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        m_rejections.put(placeOf(report), report);
    }
}

void TreeRenderer::end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) {
    constexpr std::size_t SCREEN = 50; // lines
    const std::vector<Node> nodes = arrange(multiplex, faults, summary.applications, summary.carousels);
    Page page = draw(nodes, summary, faults, style().full ? Extent::Full : Extent::Overview);
    for (const Joining joining : {Joining::ByKind, Joining::ByCount}) {
        if (!style().full && page.lines.size() > SCREEN) {
            std::vector<Node> joined = nodes;
            std::for_each(joined.begin(), joined.end(), [joining](Node& node) { node.join(joining); });
            page = draw(joined, summary, faults, Extent::Brief);
        }
    }
    write(page);
}

Page TreeRenderer::draw(const std::vector<Node>& nodes, const Summary& summary, const Faults& faults,
                        Extent extent) const {
    constexpr std::size_t FEW = 4;
    Page page = emptyPage();
    appendOutline(page, nodes, extent);
    appendTransmission(page, summary);
    appendRejections(page, extent);
    appendFaults(page, faults, Listed::All, extent == Extent::Brief ? FEW : SIZE_MAX);
    appendRemarks(page, summary.forgotten);
    appendLine(page, summaryText(summary), INDENT);
    return page;
}

void TreeRenderer::appendRejections(Page& page, Extent extent) const {
    m_rejections.forEach([&page, extent](const TableKey& /*table*/, const SectionReport& report) {
        appendLine(page, sectionTitle(report), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT, extent);
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
