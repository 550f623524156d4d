#include "multiplex/CurrentSections.h"

#include "multiplex/Pruning.h"
#include "tables/TableKinds.h"

#include <algorithm>

namespace inspect {

namespace {

/// The first line that gives up: those before it tell what was skipped, those behind it only where it was noticed.
std::string causeIn(const std::vector<std::string>& logLines) {
    const auto cause = std::find_if(logLines.begin(), logLines.end(), [](const std::string& line) {
        return line.find("Aborting!") != std::string::npos;
    });
    return cause == logLines.end() ? "" : *cause;
}

} // namespace

void CurrentSections::take(const SectionReport& report) {
    if (report.rejection) {
        m_refused.put(
            keyOf(report), numberOf(report),
            {report.header, report.position, report.rejection->errorName, causeIn(report.rejection->logLines)});
    } else if (!report.header || report.header->current) {
        keep(report);
    }
}

void CurrentSections::keep(const SectionReport& report) {
    const TableKey key = keyOf(report);
    if (key.tableId == PAT && key.pid) {
        m_taken.forgetOthers(key); // another transport_stream_id takes the place of the former
    }
    if (report.header) {
        m_taken.forgetBeyond(key, report.header->lastSectionNumber);
    }
    const TakenSection* const former = m_taken.find(key, numberOf(report));
    std::optional<Position> changedSilently = former == nullptr ? std::nullopt : former->changedSilently;
    if (report.sameVersion && !changedSilently) {
        changedSilently = report.position;
    }
    m_taken.put(key, numberOf(report),
                {report.header, report.position, changedSilently, report.damaged, pruned(report.fields)});
}

TableKey keyOf(const SectionReport& report) {
    return {report.pid, report.tableId, report.header ? report.header->extension : std::uint16_t{0}};
}

std::uint8_t numberOf(const SectionReport& report) {
    return report.header ? report.header->sectionNumber : std::uint8_t{0};
}

} // namespace inspect
