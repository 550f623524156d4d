#include "sections/SeenSections.h"

#include <utility>

namespace inspect {

namespace {

constexpr int NO_VERSION = -1;

} // namespace

SeenSections::News SeenSections::look(const Section& section) {
    Place place{section.pid(), section.tableId(), 0, 0, true};
    Last now{NO_VERSION, section.fingerprint()};
    if (const std::optional<LongHeader> header = section.longHeader()) {
        place = {section.pid(), section.tableId(), header->extension, header->sectionNumber, header->current};
        now.version = header->version;
    }
    const auto found = m_byPlace.find(place);
    if (found == m_byPlace.end()) {
        remember(place, now);
        return News::New;
    }
    m_entries.splice(m_entries.begin(), m_entries, found->second);
    const Last before = std::exchange(m_entries.front().last, now);
    if (before.fingerprint == now.fingerprint) {
        return News::Repetition;
    }
    return before.version == now.version && now.version != NO_VERSION ? News::SameVersion : News::New;
}

void SeenSections::remember(const Place& place, Last last) {
    if (m_entries.size() == CAPACITY) {
        m_byPlace.erase(m_entries.back().place);
        m_entries.pop_back();
    }
    m_entries.push_front({place, last});
    m_byPlace.emplace(place, m_entries.begin());
}

} // namespace inspect
