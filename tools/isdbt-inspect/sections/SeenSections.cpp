#include "sections/SeenSections.h"

#include <utility>

namespace inspect {

namespace {

constexpr int NO_VERSION = -1;

} // namespace

SeenSections::Sight SeenSections::look(const Section& section) {
    Place place{section.pid(), section.tableId(), 0, 0, true};
    Last now{NO_VERSION, section.fingerprint(), section.position().seconds};
    if (const std::optional<LongHeader> header = section.longHeader()) {
        place = {section.pid(), section.tableId(), header->extension, header->sectionNumber, header->current};
        now.version = header->version;
    }
    Last* const last = m_byPlace.find(place);
    if (last == nullptr) {
        m_byPlace.put(place, now);
        return {News::New, std::nullopt};
    }
    const Last before = std::exchange(*last, now);
    if (before.fingerprint == now.fingerprint) {
        return {News::Repetition, before.seconds};
    }
    const bool sameVersion = before.version == now.version && now.version != NO_VERSION;
    return {sameVersion ? News::SameVersion : News::New, before.seconds};
}

} // namespace inspect
