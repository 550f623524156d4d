#include "arranging/Components.h"

#include "arranging/FieldLookup.h"

#include <algorithm>

namespace inspect {

Components componentsOf(const Table& pmt) {
    Components components;
    for (const Fields* const stream : pmt.entries("elementary_streams")) {
        components.push_back({stream, static_cast<Pid>(numberIn(*stream, "elementary_pid").value_or(0)),
                              numberIn(*stream, "stream_type").value_or(0),
                              numberIn(inner(*stream, "stream_identifier_descriptor"), "component_tag")});
    }
    return components;
}

const Component* withTag(const Components& components, std::int64_t tag) {
    const auto found = std::find_if(components.begin(), components.end(),
                                    [tag](const Component& component) { return component.tag == tag; });
    return found == components.end() ? nullptr : &*found;
}

} // namespace inspect
