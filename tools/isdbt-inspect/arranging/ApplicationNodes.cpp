#include "arranging/ApplicationNodes.h"

#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view APPLICATION = "application_descriptor";
constexpr std::string_view NAMES = "application_name_descriptor";
constexpr std::string_view TRANSPORT = "transport_protocol_descriptor";
constexpr std::string_view REMOTE = "remote_connection";

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

Node applicationNode(const Fields& described, const Components* components, const Faults& faults) {
    Fields rest = described;
    Node node(titleOfApplication(described));
    sayNames(node, rest);
    for (const std::string_view said : {"hash_id", "application_identifier", "application_type"}) {
        take(rest, said);
    }
    node.mark = node.title.substr(node.title.find(' ') + 1);
    const std::optional<Field> control = take(rest, "control_code");
    node.kind = control && !control->codeName.empty() ? control->codeName : "Application";
    for (const Field& name : node.names) {
        node.kind += fmt::format(" \"{}\"", std::get<Text>(name.value).decoded);
    }
    node.say("", control);
    node.say("priority", take(rest, APPLICATION, "application_priority"), Extent::Full);
    node.say("visible", take(rest, APPLICATION, "visibility"), Extent::Full);
    node.say("service-bound", take(rest, APPLICATION, "service_bound"), Extent::Full);
    for (const Field& profile : takeElements(rest, APPLICATION, "profiles")) {
        node.say("profile", inner(profile).front(), Extent::Full);
    }
    for (const std::string_view said : {"visibile_for_users", "visibile_for_applications"}) {
        take(rest, APPLICATION, said);
    }
    const std::optional<std::int64_t> tag = carouselTag(described);
    const Component* const carousel = components == nullptr || !tag ? nullptr : withTag(*components, *tag);
    if (carousel != nullptr) {
        node.say("carousel PID", identifier("", carousel->pid, 4));
    }
    node.faults = faults.of(&described);
    removeInherited(rest);
    takeUnsent(rest);
    node.tell("", std::move(rest));
    return node;
}

} // namespace

Node applicationTableNode(const Table& ait, const Components* components, const Faults& faults) {
    Fields rest = ait.beside("applications");
    take(rest, "application_type");
    Node node(titleOf(ait));
    takeUnsent(rest);
    node.sayVersionOnly(ait);
    node.faults = faults.of(&ait);
    node.tell("", std::move(rest));
    for (const Fields* const application : ait.entries("applications")) {
        node.children.push_back(applicationNode(*application, components, faults));
    }
    return node;
}

} // namespace inspect
