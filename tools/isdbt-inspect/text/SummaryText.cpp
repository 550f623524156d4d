#include "text/SummaryText.h"

#include "tables/TableKinds.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

std::string damageText(const Finding& finding) {
    const std::string text = counted(finding.count, finding.singular, finding.plural);
    return finding.pids.empty() ? text : fmt::format("{} (PID 0x{:04X})", text, fmt::join(finding.pids, ", 0x"));
}

/// The labels of the first of them.
std::string labelsOf(const std::set<std::uint8_t>& tables) {
    constexpr std::size_t MANY = 6;
    std::vector<std::string> labels;
    for (const std::uint8_t table : tables) {
        if (labels.size() < MANY) {
            labels.push_back(tableLabel(table));
        }
    }
    return fmt::format("{}{}", fmt::join(labels, ", "), tables.size() > MANY ? ", ..." : "");
}

/// Each rejected section is shown once, but counted in the tables each time that it comes.
std::string rejectionsText(const Summary& summary) {
    std::uint64_t times = 0;
    std::uint64_t distinct = 0;
    for (const PidStatistics& pid : summary.statistics) {
        for (const TableStatistics& table : pid.tables) {
            times += table.rejected;
            distinct += table.rejectedDistinct;
        }
    }
    return distinct == summary.rejected && times > distinct ? fmt::format(" ({} times)", times) : "";
}

} // namespace

std::string summaryText(const Summary& summary) {
    std::string text = counted(summary.sections, "section", "sections");
    if (summary.packets != 0) {
        text = fmt::format("{} of {} bytes, {} on {}", counted(summary.packets, "packet", "packets"),
                           summary.packetSpacing, text, counted(summary.pids, "PID", "PIDs"));
    }
    text += fmt::format(": {} shown, {} rejected{}", summary.shown, summary.rejected, rejectionsText(summary));
    if (summary.notChosen != 0) {
        text += fmt::format(", {} not chosen", summary.notChosen);
    }
    if (summary.unknown != 0) {
        text += fmt::format(", {} ({})", counted(summary.unknown, "of an unknown table", "of unknown tables"),
                            labelsOf(summary.unknownTables));
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
