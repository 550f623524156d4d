#include "text/SummaryText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

std::string counted(std::uint64_t count, std::string_view singular, std::string_view plural) {
    return fmt::format("{} {}", count, count == 1 ? singular : plural);
}

std::string damageText(const Finding& finding) {
    const std::string text = counted(finding.count, finding.singular, finding.plural);
    return finding.pids.empty() ? text : fmt::format("{} (PID 0x{:04X})", text, fmt::join(finding.pids, ", 0x"));
}

} // namespace

std::string summaryText(const Summary& summary) {
    std::string text = counted(summary.sections, "section", "sections");
    if (summary.packets != 0) {
        text = fmt::format("{} of {} bytes, {} on {}", counted(summary.packets, "packet", "packets"),
                           summary.packetSpacing, text, counted(summary.pids, "PID", "PIDs"));
    }
    text += fmt::format(": {} shown, {} rejected", summary.shown, summary.rejected);
    if (summary.notChosen != 0) {
        text += fmt::format(", {} not chosen", summary.notChosen);
    }
    if (summary.unknown != 0) {
        text += ", " + counted(summary.unknown, "of an unknown table", "of unknown tables");
    }
    for (const Finding& finding : summary.damages) {
        text += ", " + damageText(finding);
    }
    if (summary.skippedBytes != 0) {
        text += ", " + counted(summary.skippedBytes, "byte", "bytes") + " between packets skipped";
    }
    return text;
}

} // namespace inspect
