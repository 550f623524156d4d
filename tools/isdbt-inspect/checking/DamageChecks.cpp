#include "checking/DamageChecks.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

struct Damage {
    std::string_view found; ///< as a finding calls more than one
    FaultKind kind;
};

constexpr Damage DAMAGES[] = {
    {"CRC errors", faults::CRC_ERRORS},
    {"discontinuities", faults::DISCONTINUITIES},
    {"sections cut short", faults::SECTIONS_CUT_SHORT},
    {"malformed packets", faults::MALFORMED_PACKETS},
    {"packets marked as damaged", faults::TRANSPORT_ERRORS},
};

/// What an input loses has a name of its own, which depends on the input.
FaultKind kindOf(const Finding& finding) {
    for (const Damage& each : DAMAGES) {
        if (each.found == finding.plural) {
            return each.kind;
        }
    }
    return faults::INPUT_LOSSES;
}

std::string textOf(const Finding& finding) {
    std::string text = fmt::format("{} {}", finding.count, finding.count == 1 ? finding.singular : finding.plural);
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
            faults.add(stream, {kindOf(finding), {pid, std::nullopt, std::nullopt}, textOf(finding), {}});
        }
    }
    if (summary.skippedBytes != 0) {
        faults.add(stream, {faults::BYTES_SKIPPED, {}, fmt::format("{} bytes skipped", summary.skippedBytes), {}});
    }
}

} // namespace inspect
