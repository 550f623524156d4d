#include "arranging/ApplicationNodes.h"

#include "arranging/FieldLookup.h"
#include "pmt/TProgramMap.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view APPLICATION = "application_descriptor";
constexpr std::string_view NAMES = "application_name_descriptor";
constexpr std::string_view TRANSPORT = "transport_protocol_descriptor";
constexpr std::string_view REMOTE = "remote_connection";
constexpr std::string_view LOCATION = "ginga_application_location_descriptor";
constexpr std::string_view LABEL = "transport_protocol_label";

/// Without these a receiver does not know what to start, or where it comes from.
constexpr std::string_view NECESSARY[] = {APPLICATION, TRANSPORT, LOCATION};

std::string titleOf(const Fields& application) {
    const Fields& id = inner(application, "application_identifier");
    return fmt::format("Application 0x{:08X}/0x{:04X}", numberIn(id, "organization_id").value_or(0),
                       numberIn(id, "application_id").value_or(0));
}

bool carriesCarousel(const Component& component) {
    using Quor::TProgramMap;
    return component.streamType >= TProgramMap::STREAM_TYPE_0X0A &&
           component.streamType <= TProgramMap::STREAM_TYPE_0X0D;
}

/// Finds the carousel of an application among the components of its service.
void followCarousel(Node& node, const Fields& transport, const Components& components) {
    const std::optional<std::int64_t> tag = numberIn(transport, "component_tag");
    const Field* const remote = find(transport, REMOTE);
    if (!tag || remote == nullptr || std::get<bool>(remote->value)) {
        return; // no carousel, or one of another service
    }
    const Component* const component = withTag(components, *tag);
    if (component == nullptr) {
        node.fault(fmt::format("its carousel has component tag 0x{:02X}, which the PMT does not have", *tag));
        return;
    }
    node.say("carousel PID", identifier("", component->pid, 4));
    if (!carriesCarousel(*component)) {
        node.fault(fmt::format("the component 0x{:02X} of its carousel is no DSM-CC (stream type 0x{:02X})", *tag,
                               component->streamType));
    }
}

/// Descriptors refer to the protocol by its label.
void checkLabels(Node& node, const Fields& application) {
    const std::optional<std::int64_t> label = numberIn(inner(application, TRANSPORT), LABEL);
    std::vector<std::pair<std::string_view, std::int64_t>> uses;
    for (const std::int64_t each : numbersIn(inner(application, APPLICATION), "transport_protocols")) {
        uses.emplace_back(APPLICATION, each);
    }
    for (const std::string_view name : {"prefetch_descriptor", "dii_location_descriptor"}) {
        if (const std::optional<std::int64_t> each = numberIn(inner(application, name), LABEL)) {
            uses.emplace_back(name, *each);
        }
    }
    for (const auto& [name, each] : uses) {
        if (label && each != *label) {
            node.fault(fmt::format("{} names transport protocol label 0x{:02X}, but the receiver has 0x{:02X}", name,
                                   each, *label));
        }
    }
}

void checkNecessary(Node& node, const Fields& application) {
    for (const std::string_view name : NECESSARY) {
        if (find(application, name) == nullptr) {
            node.fault(fmt::format("no {}", name));
        }
    }
}

/// Takes what the node's line says out of the list of an object, unless there is a remark on the list.
Fields takeElements(Fields& application, std::string_view descriptor, std::string_view list) {
    const Field* const field = find(inner(application, descriptor), list);
    if (field == nullptr || !field->reading.empty()) {
        return field == nullptr ? Fields{} : std::get<List>(field->value).elements;
    }
    return std::get<List>(take(application, descriptor, list)->value).elements;
}

void sayNames(Node& node, Fields& application) {
    for (const Field& item : takeElements(application, NAMES, "items")) {
        if (const Field* const name = find(inner(item), "name")) {
            node.names.push_back(*name);
            const Field* const language = find(inner(item), "language_code");
            node.names.back().unit = language == nullptr ? "" : std::get<Text>(language->value).decoded;
        }
    }
}

/// What is said above of all applications of the AIT is not told again.
void removeInherited(Fields& application) {
    application.erase(std::remove_if(application.begin(), application.end(),
                                     [](const Field& each) { return find(inner(each), "inherited") != nullptr; }),
                      application.end());
}

/// Takes out what a transport_protocol_descriptor has on the wire only if it leads to another service.
void takeUnsent(Fields& fields) {
    const Field* const remote = find(inner(fields, TRANSPORT), REMOTE);
    if (remote != nullptr && !std::get<bool>(remote->value)) {
        for (const std::string_view name : {"original_network_id", "transport_stream_id", "service_id"}) {
            take(fields, TRANSPORT, name);
        }
    }
}

Node applicationNode(const Fields& described, const Components* components) {
    Fields rest = described;
    Node node(titleOf(described));
    sayNames(node, rest);
    for (const std::string_view said : {"hash_id", "application_identifier", "application_type"}) {
        take(rest, said);
    }
    node.say("", take(rest, "control_code"));
    node.say("priority", take(rest, APPLICATION, "application_priority"));
    node.say("visible", take(rest, APPLICATION, "visibility"));
    node.say("service-bound", take(rest, APPLICATION, "service_bound"));
    for (const Field& profile : takeElements(rest, APPLICATION, "profiles")) {
        node.say("profile", inner(profile).front());
    }
    for (const std::string_view said : {"visibile_for_users", "visibile_for_applications"}) {
        take(rest, APPLICATION, said);
    }
    checkNecessary(node, described);
    checkLabels(node, described);
    if (components != nullptr) {
        followCarousel(node, inner(described, TRANSPORT), *components);
    }
    removeInherited(rest);
    takeUnsent(rest);
    node.tell("", std::move(rest));
    return node;
}

} // namespace

Node applicationTableNode(const Table& ait, const Components* components) {
    Fields rest = ait.beside("applications");
    const std::optional<Field> type = take(rest, "application_type");
    Node node(type && !type->codeName.empty() ? fmt::format("AIT of {} (0x{:04X})", type->codeName, ait.key.extension)
                                              : fmt::format("AIT of type 0x{:04X}", ait.key.extension));
    takeUnsent(rest);
    ait.appendVersionTo(node, "AIT");
    node.tell("", std::move(rest));
    for (const Fields* const application : ait.entries("applications")) {
        node.children.push_back(applicationNode(*application, components));
    }
    if (!ait.taken.empty() && node.children.empty()) {
        node.fault("it names no application");
    }
    return node;
}

} // namespace inspect
