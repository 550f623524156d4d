#include "arranging/TransportStreams.h"

#include "arranging/FieldLookup.h"
#include "sections/TableIds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view DELIVERY = "terrestrial_delivery_system_descriptor";
constexpr std::string_view INFORMATION = "ts_information_descriptor";
constexpr std::string_view PARTIAL_RECEPTION = "partial_reception_descriptor";

/// The PAT tells which transport stream this is. Where it is missing, an SDT or NIT does that speaks of one only.
std::optional<std::uint16_t> thisOne(const Tables& tables) {
    for (const std::uint8_t tableId : {PAT, SDT}) {
        const std::vector<const Table*> found = tables.of(tableId);
        if (found.size() == 1 || (tableId == PAT && !found.empty())) {
            return found.front()->key.extension;
        }
    }
    const std::vector<const Table*> networks = tables.of(NIT);
    const std::vector<const Fields*> streams =
        networks.size() == 1 ? networks.front()->entries("transport_streams") : std::vector<const Fields*>{};
    return streams.size() == 1 ? std::optional(static_cast<std::uint16_t>(
                                     numberIn(*streams.front(), "transport_stream_id").value_or(0)))
                               : std::nullopt;
}

/// The services that an entry of the NIT names, with the descriptors that do. service_list_descriptor is none of these:
/// receivers read its service_ids with eight bits only.
std::map<std::uint16_t, std::vector<std::string>> servicesListedIn(const Fields& entry) {
    std::map<std::uint16_t, std::vector<std::string>> listed;
    const auto add = [&listed](std::int64_t service, std::string_view descriptor) {
        std::vector<std::string>& descriptors = listed[static_cast<std::uint16_t>(service)];
        if (descriptors.empty() || descriptors.back() != descriptor) {
            descriptors.emplace_back(descriptor);
        }
    };
    for (const std::int64_t service : numbersIn(inner(entry, PARTIAL_RECEPTION), "service_ids")) {
        add(service, PARTIAL_RECEPTION);
    }
    for (const Field& layer : elements(inner(entry, INFORMATION), "transmission_types")) {
        for (const std::int64_t service : numbersIn(inner(layer), "services")) {
            add(service, INFORMATION);
        }
    }
    return listed;
}

/// Only tables that are known whole can contradict others.
bool areWhole(const std::vector<const Table*>& tables) {
    return !tables.empty() &&
           std::all_of(tables.begin(), tables.end(), [](const Table* table) { return table->complete(); });
}

bool has(const std::vector<std::string>& list, std::string_view text) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

} // namespace

TransportStreams::TransportStreams(const Tables& tables)
    : m_tables(tables), m_services(tables), m_thisOne(thisOne(tables)) {}

Node TransportStreams::listedNode(const Fields& entry) {
    const auto id = static_cast<std::uint16_t>(numberIn(entry, "transport_stream_id").value_or(0));
    Node node(fmt::format("Transport stream 0x{0:04X} ({0})", id));
    Fields rest = entry;
    take(rest, "transport_stream_id");
    if (std::optional<Field> name = take(rest, INFORMATION, "transport_stream_name")) {
        node.names.push_back(std::move(*name));
    }
    node.say("remote control key", take(rest, INFORMATION, "remote_control_key_id"));
    const std::optional<Field> frequencies = take(rest, DELIVERY, "frequencies");
    for (const Field& frequency : frequencies ? std::get<List>(frequencies->value).elements : Fields{}) {
        node.say("", frequency);
    }
    node.say("", take(rest, DELIVERY, "transmission_mode"));
    node.say("guard interval", take(rest, DELIVERY, "guard_interval"));
    node.say("area", take(rest, DELIVERY, "area_code"));
    node.say("original network", take(rest, "original_network_id"));
    node.tell("", std::move(rest));
    append(node, id, entry);
    return node;
}

std::vector<Node> TransportStreams::unlistedNodes() {
    std::set<std::uint16_t> ids;
    for (const std::uint8_t tableId : {PAT, SDT}) {
        for (const Table* const table : m_tables.of(tableId)) {
            ids.insert(table->key.extension);
        }
    }
    std::vector<Node> nodes;
    for (const std::uint16_t id : ids) {
        if (m_shown.count(id) == 0) {
            Node node(fmt::format("Transport stream 0x{0:04X} ({0})", id));
            if (m_tables.misses(NIT)) {
                node.fault("no NIT came");
            } else if (areWhole(m_tables.of(NIT))) {
                node.fault("not in the NIT");
            }
            append(node, id, {});
            nodes.push_back(std::move(node));
        }
    }
    if (!m_thisOne && !m_tables.of(PMT).empty()) {
        nodes.emplace_back("Transport stream");
        append(nodes.back(), std::nullopt, {});
    }
    return nodes;
}

void TransportStreams::append(Node& node, std::optional<std::uint16_t> id, const Fields& entry) {
    if (!m_shown.insert(id).second) {
        node.say("its services are shown above");
        return;
    }
    Sources sources;
    for (auto& [service, descriptors] : servicesListedIn(entry)) {
        sources[service].listedIn = descriptors;
    }
    if (isThisOne(id)) {
        addProgramMaps(node, sources);
    }
    if (id) {
        addPrograms(node, *id, sources);
        addDescriptions(node, *id, entry, sources);
    }
    for (auto& [service, ofService] : sources) {
        ofService.id = service;
        Node child = m_services.serviceNode(ofService);
        checkService(child, ofService, id, entry);
        node.children.push_back(std::move(child));
    }
}

/// PMTs do not say which transport stream they belong to: it is the one that is read.
void TransportStreams::addProgramMaps(Node& node, Sources& sources) const {
    if (m_tables.misses(PAT)) {
        node.fault("no PAT came");
    }
    for (const Table* const pmt : m_tables.of(PMT)) {
        sources[pmt->key.extension].programMaps.push_back(pmt);
    }
}

void TransportStreams::addPrograms(Node& node, std::uint16_t id, Sources& sources) const {
    for (const Table* const pat : m_tables.of(PAT, id)) {
        pat->appendTo(node, "PAT");
        Fields rest = pat->beside("programs");
        take(rest, "transport_stream_id");
        const std::optional<Field> networkPid = take(rest, "network_pid");
        if (networkPid && std::get<Number>(networkPid->value).value != 0) {
            node.say("network PID", networkPid);
        }
        node.tell("PAT", std::move(rest));
        for (const Fields* const program : pat->entries("programs")) {
            sources[static_cast<std::uint16_t>(numberIn(*program, "program_number").value_or(0))].programMapPid =
                static_cast<Pid>(numberIn(*program, "program_map_pid").value_or(0));
        }
        if (pat->complete() && pat->entries("programs").empty()) {
            node.fault("the PAT has no program");
        }
    }
}

void TransportStreams::addDescriptions(Node& node, std::uint16_t id, const Fields& entry, Sources& sources) const {
    const std::vector<const Table*> descriptions = m_tables.of(SDT, id);
    for (const Table* const sdt : descriptions) {
        sdt->appendTo(node, "SDT");
        Fields rest = sdt->beside("services");
        take(rest, "transport_stream_id");
        std::optional<Field> network = take(rest, "original_network_id");
        const std::optional<std::int64_t> listed = numberIn(entry, "original_network_id");
        if (!listed) {
            node.say("original network", network);
        } else if (network && std::get<Number>(network->value).value != *listed) {
            node.fault(fmt::format("the SDT says original network 0x{:04X}, the NIT 0x{:04X}",
                                   std::get<Number>(network->value).value, *listed));
        }
        node.tell("SDT", std::move(rest));
        for (const Fields* const service : sdt->entries("services")) {
            sources[static_cast<std::uint16_t>(numberIn(*service, "service_id").value_or(0))].description = service;
        }
    }
    if (isThisOne(id) && descriptions.empty() && m_tables.expects(SDT)) {
        node.fault("no SDT came");
    }
}

/// Compares what the tables say of a service.
void TransportStreams::checkService(Node& node, const ServiceNodes::Sources& service, std::optional<std::uint16_t> id,
                                    const Fields& entry) const {
    if (!isThisOne(id) || !areWhole(m_tables.of(PAT))) {
        return;
    }
    if (!service.programMapPid) {
        if (service.description != nullptr) {
            node.fault("the SDT has it, but not the PAT");
        }
        for (const std::string& descriptor : service.listedIn) {
            node.fault(fmt::format("the NIT has it in its {}, but not the PAT", descriptor));
        }
        if (!service.programMaps.empty()) {
            node.fault("it has a PMT, but the PAT does not name it, or no longer");
        }
        return;
    }
    if (service.description == nullptr && areWhole(m_tables.of(SDT, *id))) {
        node.fault("the PAT has it, but not the SDT");
    }
    if (find(entry, INFORMATION) != nullptr && !has(service.listedIn, INFORMATION)) {
        node.fault(fmt::format("the PAT has it, but not the {} of the NIT", INFORMATION));
    }
}

} // namespace inspect
