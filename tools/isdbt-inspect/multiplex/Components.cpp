#include "multiplex/Components.h"

#include "describing/FieldLookup.h"
#include "descriptors/TDataComponentDescriptor.h"

#include <algorithm>

namespace inspect {

namespace {

using Quor::TDataComponentDescriptor;

bool carries(const Component& component, std::int64_t dataComponent) {
    return numberIn(inner(*component.fields, "data_component_descriptor"), "data_component_id") == dataComponent;
}

} // namespace

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

bool carriesApplications(const Component& component) {
    return carries(component, TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE);
}

bool carriesApplicationInformation(const Component& component) {
    return carries(component, TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE);
}

std::optional<std::int64_t> carouselTag(const Fields& application) {
    const Fields& transport = inner(application, "transport_protocol_descriptor");
    const Field* const remote = find(transport, "remote_connection");
    return remote == nullptr || std::get<bool>(remote->value) ? std::nullopt : numberIn(transport, "component_tag");
}

} // namespace inspect
