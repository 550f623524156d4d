#include "comparing/KnownSections.h"

#include <map>

namespace inspect {

namespace {

Place placeIn(const SectionReport& report) {
    return placeOf(report).inTheOnlyPat();
}

} // namespace

const KnownSections::Known* KnownSections::at(const SectionReport& report) {
    return m_known.find(placeIn(report));
}

const KnownSections::Known* KnownSections::formerOf(const SectionReport& report) {
    Place place = placeIn(report);
    place.current = true;
    const Known* const known = m_known.find(place);
    return known != nullptr ? known : onAnotherPid(place);
}

std::vector<unsigned> KnownSections::forgetBeyond(const SectionReport& last) {
    std::vector<unsigned> forgotten;
    Place place = placeIn(last);
    place.sectionNumber = last.header ? last.header->lastSectionNumber : place.sectionNumber;
    for (const Place& each : m_known.keysBehind(place)) {
        m_known.erase(each);
        forgotten.push_back(each.sectionNumber);
    }
    return forgotten;
}

void KnownSections::put(const SectionReport& report) {
    m_known.put(placeIn(report), {report, m_input});
}

void KnownSections::keep(const SectionReport& report) {
    if (Known* const known = m_known.find(placeIn(report))) {
        known->input = m_input;
    }
}

std::vector<const SectionReport*> KnownSections::missing() const {
    std::map<Place, const SectionReport*> byPlace;
    for (const auto& [place, known] : m_known.entries()) {
        if (known.input + 1 == m_input && place.current) {
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

/// The only one of its kind in earlier inputs that was not seen in this one. It is not missing any more.
const KnownSections::Known* KnownSections::onAnotherPid(Place place) {
    std::vector<Place> candidates;
    for (const auto& [other, known] : m_known.entries()) {
        place.table.pid = other.table.pid;
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
