#include "rendering/DiffRenderer.h"

#include "comparing/Comparison.h"
#include "rendering/ChangeText.h"
#include "rendering/SectionText.h"
#include "rendering/SummaryText.h"
#include "sections/TableIds.h"

#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;

std::optional<std::uint8_t> versionOf(const SectionReport& report) {
    return report.header ? std::optional(report.header->version) : std::nullopt;
}

/// Other content under the same version of the same table: receivers may overlook it.
bool keepsVersion(const SectionReport& former, const SectionReport& report) {
    return former.header && report.header && report.header->current &&
           former.header->extension == report.header->extension && former.header->version == report.header->version;
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

void DiffRenderer::begin(const std::string& name) {
    m_known.beginInput();
    m_output.write(inputHeading(name, m_style));
}

void DiffRenderer::section(const SectionReport& report) {
    Page page{m_style, {}};
    if (report.rejection) {
        appendLine(page, m_style.paint(Ink::Fault, "!") + ' ' + changeTitle(report, m_style), 2 * INDENT);
        appendRejection(page, *report.rejection, 2 * INDENT);
        m_known.keep(report);
    } else {
        take(page, report);
    }
    m_output.write(page.text);
}

void DiffRenderer::take(Page& page, const SectionReport& report) {
    const KnownSections::Known* const same = m_known.at(report);
    const KnownSections::Known* const former = m_known.formerOf(report);
    if (same != nullptr && same->report.fingerprint == report.fingerprint) {
        if (m_known.isOfThisInput(*same)) {
            appendLine(page, "  " + changeTitle(report, m_style) + "  as it was", 2 * INDENT);
        }
    } else if (former == nullptr) {
        appendLine(page,
                   m_style.paint(Ink::Good, "+") + ' ' + changeTitle(report, m_style) + "  " +
                       m_style.paint(Ink::Good, "new"),
                   2 * INDENT);
    } else if (former->report.fingerprint != report.fingerprint || former->report.pid != report.pid) {
        appendChange(page, former->report, report);
    }
    m_known.put(report);
    for (const unsigned number : m_known.forgetBeyond(report)) {
        appendLine(page,
                   fmt::format("{:{}}{} section {} is no more", "", 2 * INDENT, m_style.paint(Ink::Fault, "-"), number),
                   2 * INDENT);
    }
}

void DiffRenderer::appendChange(Page& page, const SectionReport& former, SectionReport report) {
    const std::vector<Change> changes = compare(former.fields, report.fields);
    report.sameVersion = keepsVersion(former, report) && former.fingerprint != report.fingerprint;
    std::string title = m_style.paint(Ink::Remark, "~") + ' ' + changeTitle(report, m_style, versionOf(former));
    if (former.pid != report.pid && former.pid) {
        title += fmt::format("  was on PID 0x{:04X}", *former.pid);
    }
    const std::string passed = passedTime(report, changes);
    appendLine(page, title + passed, 2 * INDENT);
    if (!passed.empty()) {
        return;
    }
    if (changes.empty()) {
        appendLine(page, std::string(2 * INDENT, ' ') + "no field differs", 2 * INDENT);
    }
    appendChanges(page, changes, 2 * INDENT);
}

void DiffRenderer::end(const Summary& summary) {
    Page page{m_style, {}};
    for (const SectionReport* const report : m_known.missing()) {
        appendLine(page, m_style.paint(Ink::Fault, "-") + ' ' + sectionName(*report, m_style) + "  not in this input",
                   2 * INDENT);
    }
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.text);
}

} // namespace inspect
