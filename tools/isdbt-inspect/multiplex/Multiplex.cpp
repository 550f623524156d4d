#include "multiplex/Multiplex.h"

#include "describing/FieldLookup.h"
#include "describing/StandardReadings.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <iterator>

namespace inspect {

namespace {

constexpr std::string_view INFORMATION = "ts_information_descriptor";
constexpr std::string_view PARTIAL_RECEPTION = "partial_reception_descriptor";

std::uint16_t idIn(const Fields& fields, std::string_view name) {
    return static_cast<std::uint16_t>(numberIn(fields, name).value_or(0));
}

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

/// The services that an entry of the NIT names, with the descriptors that do.
std::map<std::uint16_t, std::vector<std::string>> servicesListedIn(const Fields& entry, bool isThisOne) {
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
    // A list of other streams' services would be longer than all else of a satellite's network.
    for (const Field& service : isThisOne ? standardServiceList(entry) : Fields{}) {
        add(numberIn(inner(service), "service_id").value_or(0), SERVICE_LIST);
    }
    return listed;
}

bool carries(const Component& component, std::int64_t dataComponent) {
    return numberIn(inner(*component.fields, "data_component_descriptor"), "data_component_id") == dataComponent;
}

Components componentsOf(const Table& pmt) {
    Components components;
    for (const Fields* const stream : pmt.entries("elementary_streams")) {
        components.push_back({stream, static_cast<Pid>(numberIn(*stream, "elementary_pid").value_or(0)),
                              numberIn(*stream, "stream_type").value_or(0),
                              numberIn(inner(*stream, "stream_identifier_descriptor"), "component_tag")});
    }
    return components;
}

} // namespace

const Component* withTag(const Components& components, std::int64_t tag) {
    const auto found = std::find_if(components.begin(), components.end(),
                                    [tag](const Component& component) { return component.tag == tag; });
    return found == components.end() ? nullptr : &*found;
}

bool carriesApplications(const Component& component) {
    return carries(component, Quor::TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_EXECUTING_ENGINE);
}

bool carriesApplicationInformation(const Component& component) {
    return carries(component, Quor::TDataComponentDescriptor::COMPONENT_ID_GINGA_APP_INFORMATION_TABLE);
}

std::optional<std::int64_t> carouselTag(const Fields& application) {
    const Fields& transport = inner(application, "transport_protocol_descriptor");
    const Field* const remote = find(transport, "remote_connection");
    return remote == nullptr || std::get<bool>(remote->value) ? std::nullopt : numberIn(transport, "component_tag");
}

const Fields& standardServiceList(const Fields& entry) {
    return elements(inner(inner(entry, SERVICE_LIST), STANDARD), "services");
}

Multiplex::Multiplex(const Tables& tables) : m_tables(tables), m_thisOne(thisOne(tables)) {
    for (const Table* const nit : tables.of(NIT)) {
        m_networks.push_back({nit, {}});
        for (const Fields* const entry : nit->entries("transport_streams")) {
            m_networks.back().streams.push_back(makeStream(idIn(*entry, "transport_stream_id"), entry));
        }
    }
    std::set<std::uint16_t> ids;
    for (const std::uint8_t tableId : {PAT, SDT}) {
        for (const Table* const table : tables.of(tableId)) {
            ids.insert(table->key.extension);
        }
    }
    for (const std::uint16_t id : ids) {
        if (m_known.count(id) == 0) {
            m_unlisted.push_back(makeStream(id, nullptr));
        }
    }
    if (!m_thisOne && !tables.of(PMT).empty()) {
        m_unlisted.push_back(makeStream(std::nullopt, nullptr));
    }
    for (const Network& network : m_networks) {
        claim(network.streams);
    }
    claim(m_unlisted);
    gatherUnclaimed();
}

/// PMTs do not say which transport stream they belong to: it is the one that is read.
TransportStream Multiplex::makeStream(std::optional<std::uint16_t> id, const Fields* entry) {
    TransportStream stream{id, entry, id == m_thisOne, !m_known.insert(id).second, {}};
    if (stream.isRepeated) {
        return stream;
    }
    Services services;
    if (entry != nullptr) {
        for (auto& [service, descriptors] : servicesListedIn(*entry, stream.isThisOne)) {
            services[service].listedIn = std::move(descriptors);
        }
    }
    if (stream.isThisOne) {
        for (const Table* const pmt : m_tables.of(PMT)) {
            services[pmt->key.extension].programMaps.push_back({pmt, componentsOf(*pmt)});
        }
    }
    if (id) {
        addPrograms(services, *id);
    }
    for (auto& [service, ofService] : services) {
        ofService.id = service;
        stream.services.push_back(std::move(ofService));
    }
    return stream;
}

void Multiplex::addPrograms(Services& services, std::uint16_t id) const {
    for (const Table* const pat : m_tables.of(PAT, id)) {
        for (const Fields* const program : pat->entries("programs")) {
            services[idIn(*program, "program_number")].programMapPid = idIn(*program, "program_map_pid");
        }
    }
    for (const Table* const sdt : m_tables.of(SDT, id)) {
        for (const Fields* const service : sdt->entries("services")) {
            services[idIn(*service, "service_id")].description = service;
        }
    }
}

void Multiplex::claim(const std::vector<TransportStream>& streams) {
    for (const TransportStream& stream : streams) {
        for (const Service& service : stream.services) {
            for (const ProgramMap& pmt : service.programMaps) {
                for (const Component& component : pmt.components) {
                    if (!m_tables.on(component.pid, AIT).empty() ||
                        !m_tables.on(component.pid, DSMCC_STREAM_DESCRIPTORS).empty()) {
                        m_claims.emplace(component.pid, Claim{&service, &pmt.components, &component});
                    }
                }
            }
        }
    }
}

void Multiplex::gatherUnclaimed() {
    std::map<std::optional<Pid>, Unclaimed> byPid;
    for (const std::uint8_t tableId : {AIT, DSMCC_STREAM_DESCRIPTORS}) {
        for (const Table* const table : m_tables.of(tableId)) {
            const std::optional<Pid> pid = table->key.pid;
            if (!pid || m_claims.count(*pid) == 0) {
                byPid[pid].pid = pid;
                byPid[pid].tables.push_back(table);
            }
        }
    }
    for (auto& [pid, unclaimed] : byPid) {
        m_unclaimed.push_back(std::move(unclaimed));
    }
}

const Multiplex::Claim* Multiplex::claimOf(Pid pid) const {
    const auto found = m_claims.find(pid);
    return found == m_claims.end() ? nullptr : &found->second;
}

} // namespace inspect
