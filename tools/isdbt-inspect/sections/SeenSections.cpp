#include "sections/SeenSections.h"

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
    const auto [entry, isFirst] = m_last.try_emplace(place, now);
    const Last before = entry->second;
    entry->second = now;
    if (isFirst) {
        return News::New;
    }
    if (before.fingerprint == now.fingerprint) {
        return News::Repetition;
    }
    return before.version == now.version && now.version != NO_VERSION ? News::SameVersion : News::New;
}

} // namespace inspect
