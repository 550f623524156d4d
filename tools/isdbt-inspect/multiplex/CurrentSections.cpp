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

void CurrentSections::take(const SectionReport& report, const std::vector<std::uint8_t>& bytes) {
    if (report.sameVersion && m_silentChanges.find(placeOf(report)) == nullptr) {
        m_silentChanges.put(placeOf(report), report.position);
    }
    if (report.rejection) {
        m_refused.put(placeOf(report), {report.header, report.position, report.rejection->errorName,
                                        causeIn(report.rejection->logLines)});
    } else if (!report.header || report.header->current) {
        keep(report, bytes);
    }
}

void CurrentSections::keep(const SectionReport& report, const std::vector<std::uint8_t>& bytes) {
    const Place place = placeOf(report);
    if (report.tableId == PAT && report.pid) {
        m_taken.forgetOthers(place.table); // another transport_stream_id takes the place of the former
    }
    if (report.header) {
        m_taken.forgetBeyond({place.table, report.header->lastSectionNumber});
    }
    const bool leadsToApplications = report.tableId == PMT || report.tableId == AIT;
    m_taken.put(place, {report.header, report.position, report.damaged, pruned(report.fields), report.otherZone,
                        leadsToApplications ? bytes : std::vector<std::uint8_t>{}});
}

} // namespace inspect
