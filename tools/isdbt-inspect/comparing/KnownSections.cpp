#include "comparing/KnownSections.h"

#include "tables/TableKinds.h"

#include <limits>

namespace inspect {

const KnownSections::Known* KnownSections::at(const SectionReport& report) {
    return m_known.find(placeOf(report, isCurrent(report)));
}

const KnownSections::Known* KnownSections::formerOf(const SectionReport& report) {
    const Place place = placeOf(report, true);
    const Known* const known = m_known.find(place);
    return known != nullptr ? known : onAnotherPid(place);
}

std::vector<unsigned> KnownSections::forgetBeyond(const SectionReport& last) {
    std::vector<unsigned> forgotten;
    if (!last.header) {
        return forgotten;
    }
    Place place = placeOf(last, isCurrent(last));
    for (unsigned number = last.header->lastSectionNumber + 1U; number <= std::numeric_limits<std::uint8_t>::max();
         ++number) {
        std::get<3>(place) = static_cast<std::uint8_t>(number);
        if (m_known.find(place) != nullptr) {
            m_known.erase(place);
            forgotten.push_back(number);
        }
    }
    return forgotten;
}

void KnownSections::put(const SectionReport& report) {
    m_known.put(placeOf(report, isCurrent(report)), {report, m_input});
}

void KnownSections::keep(const SectionReport& report) {
    if (Known* const known = m_known.find(placeOf(report, isCurrent(report)))) {
        known->input = m_input;
    }
}

std::vector<const SectionReport*> KnownSections::missing() const {
    std::map<Place, const SectionReport*> byPlace;
    for (const auto& [place, known] : m_known.entries()) {
        if (known.input + 1 == m_input && isCurrent(known.report)) {
            byPlace.emplace(place, &known.report);
        }
    }
    std::vector<const SectionReport*> missing;
    missing.reserve(byPlace.size());
    for (const auto& [place, report] : byPlace) {
        missing.push_back(report);
    }
    return missing;
}

/// There is one PAT: another transport_stream_id takes the place of the former.
KnownSections::Place KnownSections::placeOf(const SectionReport& report, bool current) {
    if (!report.header) {
        return {report.pid, report.tableId, 0, 0, true};
    }
    const std::uint16_t extension = report.tableId == PAT ? std::uint16_t{0} : report.header->extension;
    return {report.pid, report.tableId, extension, report.header->sectionNumber, current};
}

/// The only one of its kind in earlier inputs that was not seen in this one. It is not missing any more.
const KnownSections::Known* KnownSections::onAnotherPid(Place place) {
    std::vector<Place> candidates;
    for (const auto& [other, known] : m_known.entries()) {
        std::get<0>(place) = std::get<0>(other);
        if (other == place && !isOfThisInput(known)) {
            candidates.push_back(other);
        }
    }
    if (candidates.size() != 1) {
        return nullptr;
    }
    Known* const found = m_known.find(candidates.front());
    found->input = m_input;
    return found;
}

} // namespace inspect
