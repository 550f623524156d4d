#include "arranging/ServiceNodes.h"

#include "arranging/ApplicationNodes.h"
#include "arranging/EventNodes.h"
#include "arranging/FieldLookup.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "sections/TableIds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

struct Essential {
    std::string_view label;
    std::string_view descriptor;
    std::string_view field;
};

/// What a person wants to know of a component at once.
constexpr Essential OF_COMPONENTS[] = {
    {"", "data_component_descriptor", "data_component_id"},
    {"", "avc_video_descriptor", "profile_idc"},
    {"", "avc_video_descriptor", "level_idc"},
    {"", "aac_descriptor", "profile_and_level"},
    {"", "video_decode_control_descriptor", "video_encode_format"},
    {"", "component_descriptor", "component_type"},
    {"", "component_descriptor", "language_code"},
    {"", "component_descriptor", "text"},
    {"carousel", "carousel_identifier_descriptor", "carousel_id"},
};

constexpr auto APPLICATIONS = Quor::TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE;
constexpr auto APPLICATION_INFORMATION = Quor::TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE;

bool carries(const Component& component, std::int64_t dataComponent) {
    return numberIn(inner(*component.fields, "data_component_descriptor"), "data_component_id") == dataComponent;
}

bool isSet(const std::optional<Field>& flag) {
    return flag && std::get<bool>(flag->value);
}

/// Takes out which event information the SDT promises.
std::string_view eventsOf(Fields& description) {
    const bool presentFollowing = isSet(take(description, "eit_present_following"));
    const bool schedule = isSet(take(description, "eit_schedule"));
    if (presentFollowing) {
        return schedule ? "EIT present/following and schedule" : "EIT present/following";
    }
    return schedule ? "EIT schedule" : "no EIT";
}

/// Receivers find a component by its tag, and a stream by its PID.
void checkUnique(Node& node, const Component& component, const Components& components) {
    const Component* const ofTag = component.tag ? withTag(components, *component.tag) : &component;
    if (ofTag != &component) {
        node.fault(fmt::format("component tag 0x{:02X} is that of PID 0x{:04X}, too", *component.tag, ofTag->pid));
    }
    const auto ofPid = std::find_if(components.begin(), components.end(),
                                    [&component](const Component& other) { return other.pid == component.pid; });
    if (&*ofPid != &component) {
        node.fault("another component has this PID, too");
    }
}

/// Adds what the SDT says.
void appendDescription(Node& node, const Fields& description) {
    Fields rest = description;
    take(rest, "service_id");
    if (std::optional<Field> name = take(rest, "service_descriptor", "service_name")) {
        node.names.push_back(std::move(*name));
    }
    node.say("", take(rest, "service_descriptor", "service_type"));
    node.say("", take(rest, "running_status"));
    node.say("", take(rest, "free_ca_mode"));
    node.say("provider", take(rest, "service_descriptor", "service_provider_name"));
    node.say(eventsOf(rest));
    node.tell("SDT", std::move(rest));
}

} // namespace

Node ServiceNodes::serviceNode(const Sources& sources) {
    Node node(fmt::format("Service 0x{0:04X} ({0})", sources.id));
    if (sources.description != nullptr) {
        appendDescription(node, *sources.description);
    }
    for (const std::string& list : sources.listedIn) {
        if (list == "partial_reception_descriptor") {
            node.say("partial reception");
        }
    }
    if (sources.programMapPid && sources.programMaps.empty()) {
        node.say("PMT PID", identifier("", *sources.programMapPid, 4));
        if (m_tables.expects(PMT)) {
            node.fault("no PMT came");
        }
    }
    for (const Table* const pmt : sources.programMaps) {
        if (sources.programMapPid && pmt->key.pid && pmt->key.pid != sources.programMapPid) {
            node.fault(fmt::format("a PMT came on PID 0x{:04X}, but the PAT says 0x{:04X}", *pmt->key.pid,
                                   *sources.programMapPid));
        }
        appendProgramMap(node, *pmt);
    }
    return node;
}

void ServiceNodes::appendProgramMap(Node& node, const Table& pmt) {
    Fields rest = pmt.beside("elementary_streams");
    take(rest, "program_number");
    pmt.appendTo(node, "PMT");
    node.say("PCR PID", take(rest, "pcr_pid"));
    node.tell("PMT", std::move(rest));
    const Components components = componentsOf(pmt);
    for (const Component& component : components) {
        node.children.push_back(componentNode(component, components, node.title));
    }
    if (pmt.complete() && components.empty()) {
        node.fault("its PMT has no component");
    }
    checkApplications(node, components);
}

/// Without an AIT, a receiver starts nothing of what the carousels bring.
void ServiceNodes::checkApplications(Node& node, const Components& components) const {
    const bool announced = std::any_of(components.begin(), components.end(), [this](const Component& component) {
        return carries(component, APPLICATION_INFORMATION) || !m_tables.on(component.pid, AIT).empty();
    });
    for (const Component& component : components) {
        if (!announced && carries(component, APPLICATIONS)) {
            node.fault(
                fmt::format("PID 0x{:04X} is for applications, but no component carries their AIT", component.pid));
        }
    }
}

Node ServiceNodes::componentNode(const Component& component, const Components& components, const std::string& service) {
    Fields rest = *component.fields;
    Node node(fmt::format("Component PID 0x{:04X}", component.pid));
    take(rest, "elementary_pid");
    node.say("", take(rest, "stream_type"));
    node.say("tag", take(rest, "stream_identifier_descriptor", "component_tag"));
    for (const Essential& each : OF_COMPONENTS) {
        node.say(each.label, take(rest, each.descriptor, each.field));
    }
    node.tell("", std::move(rest));
    checkUnique(node, component, components);
    appendCarried(node, component, components, service);
    return node;
}

void ServiceNodes::appendCarried(Node& node, const Component& component, const Components& components,
                                 const std::string& service) {
    const std::vector<const Table*> applications = m_tables.on(component.pid, AIT);
    const std::vector<const Table*> events = m_tables.on(component.pid, DSMCC_STREAM_DESCRIPTORS);
    if (applications.empty() && carries(component, APPLICATION_INFORMATION) && m_tables.expects(AIT)) {
        node.fault("no AIT came");
    }
    if (applications.empty() && events.empty()) {
        return;
    }
    const auto [shown, first] = m_shown.emplace(component.pid, service);
    if (!first) {
        node.say("carries what is shown at " + shown->second);
        return;
    }
    for (const Table* const ait : applications) {
        node.children.push_back(applicationTableNode(*ait, &components));
    }
    for (const Table* const section : events) {
        node.children.push_back(eventNode(*section));
    }
}

std::vector<Node> ServiceNodes::unclaimed() const {
    std::map<std::optional<Pid>, Node> byPid;
    for (const std::uint8_t tableId : {AIT, DSMCC_STREAM_DESCRIPTORS}) {
        for (const Table* const table : m_tables.of(tableId)) {
            const std::optional<Pid> pid = table->key.pid;
            if (!pid || m_shown.count(*pid) == 0) {
                Node& node = byPid[pid];
                node.title = pid ? fmt::format("PID 0x{:04X}", *pid) : "";
                node.children.push_back(tableId == AIT ? applicationTableNode(*table, nullptr) : eventNode(*table));
            }
        }
    }
    std::vector<Node> nodes;
    for (auto& [pid, node] : byPid) {
        if (!pid) {
            std::move(node.children.begin(), node.children.end(), std::back_inserter(nodes));
            continue;
        }
        if (m_tables.expects(PMT)) {
            node.fault("no PMT names this PID");
        }
        nodes.push_back(std::move(node));
    }
    return nodes;
}

} // namespace inspect
