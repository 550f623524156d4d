#include "arranging/Arrangement.h"

#include "arranging/TableNodes.h"
#include "describing/FieldLookup.h"
#include "multiplex/CarouselStreams.h"
#include "multiplex/Titles.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::string_view DELIVERY = "terrestrial_delivery_system_descriptor";
constexpr std::string_view INFORMATION = "ts_information_descriptor";

void appendEntry(Node& node, const Fields& entry) {
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
    node.say("area", take(rest, DELIVERY, "area_code"), Extent::Full);
    node.say("original network", take(rest, "original_network_id"), Extent::Full);
    node.tell("", std::move(rest));
}

void appendPrograms(Node& node, const Table& pat) {
    node.sayVersion(pat);
    Fields rest = pat.beside("programs");
    take(rest, "transport_stream_id");
    const std::optional<Field> networkPid = take(rest, "network_pid");
    if (networkPid && std::get<Number>(networkPid->value).value != 0) {
        node.say("network PID", networkPid, Extent::Full);
    }
    node.tell("PAT", std::move(rest));
}

void appendDescriptions(Node& node, const Table& sdt, const Fields* entry) {
    node.sayVersion(sdt);
    Fields rest = sdt.beside("services");
    take(rest, "transport_stream_id");
    const std::optional<Field> network = take(rest, "original_network_id");
    if (entry == nullptr || !numberIn(*entry, "original_network_id")) {
        node.say("original network", network, Extent::Full);
    }
    node.tell("SDT", std::move(rest));
}

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

/// "3 of 3 modules, 12 files"
void sayCarousel(Node& node, const CarouselPid& pid) {
    std::size_t modules = 0;
    std::size_t complete = 0;
    std::size_t files = 0;
    for (const CarouselReport& report : pid.carousels) {
        for (const dsmcc::Group& group : report.carousel.groups) {
            modules += group.modules.size();
            complete += static_cast<std::size_t>(
                std::count_if(group.modules.begin(), group.modules.end(), [](const dsmcc::Module* module) {
                    return module->state == dsmcc::ModuleState::Complete;
                }));
        }
        files += static_cast<std::size_t>(
            std::count_if(report.tree.entries.begin(), report.tree.entries.end(), [](const dsmcc::Entry& entry) {
                return entry.kind == dsmcc::ObjectKind::File && entry.state == dsmcc::EntryState::Complete;
            }));
    }
    node.say(fmt::format("{} of {} modules", complete, modules), Extent::Overview);
    if (files != 0) {
        node.say(fmt::format("{} {}", files, files == 1 ? "file" : "files"), Extent::Overview);
    }
    if (pid.crcErrors != 0) {
        node.say(fmt::format("{} sections with a wrong CRC_32", pid.crcErrors));
    }
}

/// Puts the nodes of a multiplex together.
class Arranger {
public:
    Arranger(const Multiplex& multiplex, const Faults& faults, const std::vector<ApplicationReport>& applications,
             const std::vector<CarouselPid>& carousels)
        : m_multiplex(multiplex), m_faults(faults), m_applications(applications), m_carousels(carousels) {}

    std::vector<Node> arrange() const;

private:
    Node networkNode(const Network& network) const;
    Node transportStreamNode(const TransportStream& stream) const;
    Node serviceNode(const Service& service) const;
    void appendProgramMap(Node& node, const ProgramMap& pmt) const;
    Node componentNode(const Component& component) const;
    void appendDeferredTags(Node& node, const Fields& programMap) const;
    void appendCarried(Node& node, const Component& component, const Multiplex::Claim& claim) const;
    void appendUnclaimed(std::vector<Node>& nodes, const Unclaimed& unclaimed) const;

    const Multiplex& m_multiplex;
    const Faults& m_faults;
    const std::vector<ApplicationReport>& m_applications;
    const std::vector<CarouselPid>& m_carousels;
};

std::vector<Node> Arranger::arrange() const {
    std::vector<Node> nodes;
    if (std::vector<std::string> texts = m_faults.of(&m_multiplex); !texts.empty()) {
        nodes.emplace_back(titleOf(m_multiplex));
        nodes.back().faults = std::move(texts);
    }
    for (const Network& network : m_multiplex.networks()) {
        nodes.push_back(networkNode(network));
    }
    for (const TransportStream& stream : m_multiplex.unlisted()) {
        nodes.push_back(transportStreamNode(stream));
    }
    for (const Unclaimed& unclaimed : m_multiplex.unclaimed()) {
        appendUnclaimed(nodes, unclaimed);
    }
    for (const Table* const tot : m_multiplex.tables().of(TOT)) {
        nodes.push_back(timeNode(*tot, m_faults));
    }
    for (const Table* const sdtt : m_multiplex.tables().of(SDTT)) {
        nodes.push_back(downloadNode(*sdtt, m_faults));
    }
    return nodes;
}

Node Arranger::networkNode(const Network& network) const {
    const Table& nit = *network.nit;
    Node node(titleOf(network));
    Fields rest = nit.beside("transport_streams");
    take(rest, "network_id");
    if (std::optional<Field> name = take(rest, "network_name_descriptor", "network_name")) {
        node.names.push_back(std::move(*name));
    }
    node.say("", take(rest, "system_management_descriptor", "system_management_id"), Extent::Full);
    node.sayVersion(nit);
    node.faults = m_faults.of(&network);
    node.tell("", std::move(rest));
    for (const TransportStream& stream : network.streams) {
        node.children.push_back(transportStreamNode(stream));
    }
    return node;
}

Node Arranger::transportStreamNode(const TransportStream& stream) const {
    Node node(titleOf(stream));
    if (stream.entry != nullptr) {
        appendEntry(node, *stream.entry);
    }
    node.faults = m_faults.of(&stream);
    if (stream.isRepeated) {
        node.say("its services are shown above");
        return node;
    }
    if (stream.id) {
        for (const Table* const pat : m_multiplex.tables().of(PAT, *stream.id)) {
            appendPrograms(node, *pat);
        }
        for (const Table* const sdt : m_multiplex.tables().of(SDT, *stream.id)) {
            appendDescriptions(node, *sdt, stream.entry);
        }
    }
    for (const Service& service : stream.services) {
        node.children.push_back(serviceNode(service));
    }
    return node;
}

Node Arranger::serviceNode(const Service& service) const {
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

void Arranger::appendProgramMap(Node& node, const ProgramMap& pmt) const {
    Fields rest = pmt.table->beside("elementary_streams");
    take(rest, "program_number");
    node.sayVersion(*pmt.table, Extent::Overview);
    if (numberIn(rest, "pcr_pid") == NULL_PID) {
        take(rest, "pcr_pid");
        node.say("no PCR");
    }
    node.say("PCR PID", take(rest, "pcr_pid"), Extent::Full);
    appendDeferredTags(node, rest);
    node.tell("PMT", std::move(rest));
    for (const Component& component : pmt.components) {
        node.children.push_back(componentNode(component));
    }
}

/// Components of other services that carousels of this one refer to.
void Arranger::appendDeferredTags(Node& node, const Fields& programMap) const {
    for (const DeferredTags& deferred : deferredTagsOf(programMap)) {
        for (const std::uint16_t tag : deferred.tags) {
            const Component* const component = associated(m_multiplex, deferred, tag);
            const std::string where = component == nullptr ? "" : fmt::format("PID 0x{:04X} of ", component->pid);
            node.say(fmt::format("association tag 0x{:04X} is {}service 0x{:04X}", tag, where, deferred.service),
                     Extent::Overview);
        }
    }
}

Node Arranger::componentNode(const Component& component) const {
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
    for (const CarouselPid& carousel : m_carousels) {
        if (carousel.pid == component.pid) {
            sayCarousel(node, carousel);
        }
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

void Arranger::appendCarried(Node& node, const Component& component, const Multiplex::Claim& claim) const {
    if (claim.component != &component) {
        node.say("carries what is shown at " + titleOf(*claim.service));
        return;
    }
    for (const std::uint8_t tableId : {AIT, DSMCC_STREAM_DESCRIPTORS}) {
        for (const Table* const table : m_multiplex.tables().on(component.pid, tableId)) {
            node.children.push_back(carriedNode(*table, claim.components, m_faults, m_applications));
        }
    }
}

/// What did not come in packets has no node around it.
void Arranger::appendUnclaimed(std::vector<Node>& nodes, const Unclaimed& unclaimed) const {
    std::vector<Node> carried;
    for (const Table* const table : unclaimed.tables) {
        carried.push_back(carriedNode(*table, nullptr, m_faults, m_applications));
    }
    if (!unclaimed.pid) {
        std::move(carried.begin(), carried.end(), std::back_inserter(nodes));
        return;
    }
    nodes.emplace_back(titleOf(unclaimed));
    nodes.back().faults = m_faults.of(&unclaimed);
    nodes.back().children = std::move(carried);
}

} // namespace

std::vector<Node> arrange(const Multiplex& multiplex, const Faults& faults,
                          const std::vector<ApplicationReport>& applications,
                          const std::vector<CarouselPid>& carousels) {
    return Arranger(multiplex, faults, applications, carousels).arrange();
}

} // namespace inspect
