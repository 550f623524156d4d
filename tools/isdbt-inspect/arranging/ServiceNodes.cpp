#include "arranging/ServiceNodes.h"

#include "arranging/ApplicationNodes.h"
#include "arranging/EventNodes.h"
#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"
#include "tables/TableKinds.h"

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

bool isSet(const std::optional<Field>& flag) {
    return flag && std::get<bool>(flag->value);
}

constexpr std::int64_t UNDEFINED = 0;
constexpr std::int64_t RUNNING = 4;

/// "H.264 video"
std::string kindOf(const Component& component) {
    const Field* const data = find(inner(*component.fields, "data_component_descriptor"), "data_component_id");
    const Field* const type = find(*component.fields, "stream_type");
    const std::string& kind = data == nullptr || data->codeName.empty() ? type->codeName : data->codeName;
    return kind.empty() ? fmt::format("stream type 0x{:02X}", component.streamType) : kind;
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

/// Adds what the SDT says.
void appendDescription(Node& node, const Fields& description) {
    Fields rest = description;
    take(rest, "service_id");
    if (std::optional<Field> name = take(rest, "service_descriptor", "service_name")) {
        node.names.push_back(std::move(*name));
    }
    node.say("", take(rest, "service_descriptor", "service_type"));
    const std::int64_t status = numberIn(rest, "running_status").value_or(UNDEFINED);
    const bool running = status == RUNNING || status == UNDEFINED;
    node.say("", take(rest, "running_status"), running ? Extent::Full : Extent::Brief);
    const bool scrambled = numberIn(rest, "free_ca_mode") != 0;
    node.say("", take(rest, "free_ca_mode"), scrambled ? Extent::Brief : Extent::Full);
    node.say("provider", take(rest, "service_descriptor", "service_provider_name"), Extent::Full);
    node.say(eventsOf(rest), Extent::Full);
    node.tell("SDT", std::move(rest));
}

} // namespace

Node ServiceNodes::serviceNode(const Service& service) const {
    Node node(titleOf(service));
    if (service.description != nullptr) {
        appendDescription(node, *service.description);
    }
    for (const std::string& list : service.listedIn) {
        if (list == "partial_reception_descriptor") {
            node.say("partial reception");
        }
    }
    if (service.programMapPid && service.programMaps.empty()) {
        node.say("PMT PID", identifier("", *service.programMapPid, 4), Extent::Overview);
    }
    for (const ProgramMap& pmt : service.programMaps) {
        appendProgramMap(node, pmt);
    }
    node.faults = m_faults.of(&service);
    return node;
}

void ServiceNodes::appendProgramMap(Node& node, const ProgramMap& pmt) const {
    Fields rest = pmt.table->beside("elementary_streams");
    take(rest, "program_number");
    node.sayVersion(*pmt.table, Extent::Overview);
    if (numberIn(rest, "pcr_pid") == NULL_PID) {
        take(rest, "pcr_pid");
        node.say("no PCR");
    }
    node.say("PCR PID", take(rest, "pcr_pid"), Extent::Full);
    node.tell("PMT", std::move(rest));
    for (const Component& component : pmt.components) {
        node.children.push_back(componentNode(component));
    }
}

Node ServiceNodes::componentNode(const Component& component) const {
    Fields rest = *component.fields;
    Node node(titleOf(component));
    node.kind = kindOf(component);
    node.isComponent = true;
    node.mark = fmt::format("0x{:04X}", component.pid);
    take(rest, "elementary_pid");
    node.say("", take(rest, "stream_type"));
    node.say("tag", take(rest, "stream_identifier_descriptor", "component_tag"));
    for (const Essential& each : OF_COMPONENTS) {
        node.say(each.label, take(rest, each.descriptor, each.field));
    }
    if (m_multiplex.tables().isSilent(component.pid)) {
        node.say("no packets");
        node.kind += " (no packets)";
    }
    node.tell("", std::move(rest));
    node.faults = m_faults.of(&component);
    if (const Multiplex::Claim* const claim = m_multiplex.claimOf(component.pid)) {
        appendCarried(node, component, *claim);
    }
    return node;
}

void ServiceNodes::appendCarried(Node& node, const Component& component, const Multiplex::Claim& claim) const {
    if (claim.component != &component) {
        node.say("carries what is shown at " + titleOf(*claim.service));
        return;
    }
    for (const std::uint8_t tableId : {AIT, DSMCC_STREAM_DESCRIPTORS}) {
        for (const Table* const table : m_multiplex.tables().on(component.pid, tableId)) {
            node.children.push_back(carriedNode(*table, claim.components, m_faults));
        }
    }
}

Node carriedNode(const Table& table, const Components* components, const Faults& faults) {
    return table.key.tableId == AIT ? applicationTableNode(table, components, faults) : eventNode(table, faults);
}

} // namespace inspect
