#include "checking/Checks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

/// By Damage.
constexpr FaultKind KINDS[] = {faults::CRC_ERRORS,
                               faults::DISCONTINUITIES,
                               faults::SECTIONS_CUT_SHORT,
                               faults::MALFORMED_PACKETS,
                               faults::TRANSPORT_ERRORS,
                               faults::INPUT_LOSSES,
                               faults::NO_DATA};

std::string textOf(const Finding& finding) {
    std::string text = counted(finding.count, finding.singular, finding.plural);
    if (!finding.pids.empty()) {
        text += fmt::format(" on PID 0x{:04X}", fmt::join(finding.pids, ", 0x"));
    }
    return text;
}

} // namespace

void checkDamages(Faults& faults, const std::string& about, const Summary& summary) {
    const Subject stream{nullptr, about}; // the summary says it; no part of the multiplex does
    for (const Finding& finding : summary.damages) {
        if (finding.count != 0) {
            const std::optional<Pid> pid =
                finding.pids.size() == 1 ? std::optional(finding.pids.front()) : std::nullopt;
            faults.add(stream, {KINDS[static_cast<std::size_t>(finding.damage)],
                                {pid, std::nullopt, std::nullopt},
                                textOf(finding),
                                finding.first});
        }
    }
    if (summary.skippedBytes != 0) {
        faults.add(stream, {faults::BYTES_SKIPPED,
                            {},
                            counted(summary.skippedBytes, "byte", "bytes") + " skipped",
                            summary.firstSkipped});
    }
}

} // namespace inspect
