#include "sections/SeenSections.h"

#include <utility>

namespace inspect {

namespace {

constexpr int NO_VERSION = -1;

} // namespace

SeenSections::News SeenSections::look(const Section& section) {
    const std::optional<LongHeader> header = section.longHeader();
    const Place place = Place::of(section.pid(), section.tableId(), header);
    const Last now{header ? header->version : NO_VERSION, section.fingerprint()};
    Last* const last = m_byPlace.find(place);
    if (last == nullptr) {
        m_byPlace.put(place, now);
        return News::New;
    }
    const Last before = std::exchange(*last, now);
    if (before.fingerprint == now.fingerprint) {
        return News::Repetition;
    }
    const bool sameVersion = before.version == now.version && now.version != NO_VERSION;
    return sameVersion ? News::SameVersion : News::New;
}

} // namespace inspect
