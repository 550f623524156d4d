#include "rendering/TextRenderer.h"

#include "rendering/DescriptorLines.h"
#include "rendering/FieldText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;

std::string counted(std::uint64_t count, std::string_view singular, std::string_view plural) {
    return fmt::format("{} {}", count, count == 1 ? singular : plural);
}

std::string title(const SectionReport& report) {
    std::string text = fmt::format("{}  PID 0x{:04X}", report.tableName, report.pid);
    if (report.place) {
        text += fmt::format("  version {}  section {}/{}", report.place->version, report.place->sectionNumber,
                            report.place->lastSectionNumber);
        text += report.place->current ? "  current" : "  not yet current";
    }
    text += fmt::format("  packet {}", report.packet);
    if (report.sameVersion) {
        text += "  CHANGED WITHOUT A NEW VERSION";
    }
    if (report.rejection) {
        text += "  REJECTED";
    }
    return text + '\n';
}

void appendRejection(std::string& text, const Rejection& rejection) {
    const std::string margin(INDENT, ' ');
    text += fmt::format("{}error  {} (0x{:04X})\n", margin, rejection.errorName, rejection.errorCode);
    for (const std::string& line : rejection.logLines) {
        text += fmt::format("{}log    {}\n", margin, line);
    }
    appendDescriptorLines(text, rejection.descriptors, INDENT);
    text += fmt::format("{}bytes ({})\n", margin, rejection.section.size());
    appendDump(text, rejection.section, 2 * INDENT);
}

std::string damageText(const Finding& finding) {
    const std::string text = counted(finding.count, finding.singular, finding.plural);
    return finding.pids.empty() ? text : fmt::format("{} (PID 0x{:04X})", text, fmt::join(finding.pids, ", 0x"));
}

} // namespace

void TextRenderer::section(const SectionReport& report) {
    std::string text = title(report);
    if (report.rejection) {
        appendRejection(text, *report.rejection);
    } else {
        appendFields(text, report.fields, INDENT);
    }
    m_output.write(text + '\n');
}

void TextRenderer::summary(const Summary& summary) {
    std::string text =
        fmt::format("{} of {} bytes, {} on {}: {} shown, {} rejected", counted(summary.packets, "packet", "packets"),
                    summary.packetSpacing, counted(summary.sections, "section", "sections"),
                    counted(summary.pids, "PID", "PIDs"), summary.shown, summary.rejected);
    for (const Finding& finding : summary.damages) {
        text += ", " + damageText(finding);
    }
    if (summary.skippedBytes != 0) {
        text += ", " + counted(summary.skippedBytes, "byte", "bytes") + " between packets skipped";
    }
    m_output.write(text + '\n');
}

} // namespace inspect
