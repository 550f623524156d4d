#include "text/TreeRenderer.h"

#include "arranging/Arrangement.h"
#include "arranging/Pruning.h"
#include "checking/Checking.h"
#include "tables/TableKinds.h"
#include "text/OutlineText.h"
#include "text/SectionText.h"
#include "text/SummaryText.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;

TableKey keyOf(const SectionReport& report) {
    return {report.pid, report.tableId, report.header ? report.header->extension : std::uint16_t{0}};
}

std::uint8_t numberOf(const SectionReport& report) {
    return report.header ? report.header->sectionNumber : std::uint8_t{0};
}

/// The first line that gives up: those before it tell what was skipped, those behind it only where it was noticed.
std::string causeIn(const std::vector<std::string>& logLines) {
    const auto cause = std::find_if(logLines.begin(), logLines.end(), [](const std::string& line) {
        return line.find("Aborting!") != std::string::npos;
    });
    return cause == logLines.end() ? "" : *cause;
}

} // namespace

TreeRenderer::TreeRenderer(Output& output, const Style& style, std::set<std::uint8_t> tables)
    : m_output(output), m_style(style), m_shown(std::move(tables)) {}

void TreeRenderer::begin(const std::string& name) {
    m_taken = {};
    m_refused = {};
    m_rejections = {};
    m_output.write(inputHeading(name, m_style));
}

void TreeRenderer::section(const SectionReport& report) {
    if (report.rejection) {
        keepRejected(report);
    } else if (!report.header || report.header->current) {
        keep(report);
    }
}

void TreeRenderer::keep(const SectionReport& report) {
    const TableKey key = keyOf(report);
    if (key.tableId == PAT && key.pid) {
        m_taken.forgetOthers(key); // another transport_stream_id takes the place of the former
    }
    if (report.header) {
        m_taken.forgetBeyond(key, report.header->lastSectionNumber);
    }
    m_taken.put(key, numberOf(report),
                {report.header, report.position, report.sameVersion, report.damaged, pruned(report.fields)});
}

void TreeRenderer::keepRejected(const SectionReport& report) {
    m_refused.put(keyOf(report), numberOf(report),
                  {report.header, report.position, report.rejection->errorName, causeIn(report.rejection->logLines)});
    m_rejections.put(keyOf(report), numberOf(report), report);
}

void TreeRenderer::end(const Summary& summary) {
    Page page{m_style, {}};
    const std::size_t faults = appendOutlineOf(page, summary.packets != 0);
    appendRejections(page);
    appendRemarks(page, faults);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.text);
}

/// Sections that come without packets are single ones: nobody misses the others.
std::size_t TreeRenderer::appendOutlineOf(Page& page, bool packets) const {
    std::set<std::uint8_t> expected;
    for (const TableKind& kind : TABLE_KINDS) {
        if (kind.ofEveryMultiplex && packets && (m_shown.empty() || m_shown.count(kind.id) != 0)) {
            expected.insert(kind.id);
        }
    }
    const Tables tables(m_taken, m_refused, std::move(expected));
    const Multiplex multiplex(tables);
    return appendOutline(page, arrange(multiplex, check(multiplex)));
}

void TreeRenderer::appendRejections(Page& page) const {
    m_rejections.forEach([&page](const TableKey& /*table*/, const SectionReport& report) {
        appendLine(page, sectionTitle(report, page.style), 2 * INDENT);
        appendRejection(page, *report.rejection, INDENT);
        page.text += '\n';
    });
}

void TreeRenderer::appendRemarks(Page& page, std::size_t faults) const {
    if (faults != 0) {
        const std::string are = faults == 1 ? "1 fault is" : fmt::format("{} faults are", faults);
        appendLine(page, m_style.paint(Ink::Fault, are + " marked with ! above"), INDENT);
    }
    if (m_taken.forgotten() != 0) {
        appendLine(page, fmt::format("{} older sections are not in the outline", m_taken.forgotten()), INDENT);
    }
    if (m_rejections.forgotten() != 0) {
        appendLine(page, fmt::format("{} older rejected sections are not shown", m_rejections.forgotten()), INDENT);
    }
}

} // namespace inspect
