#include "arranging/TransportStreams.h"

#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"
#include "tables/TableKinds.h"

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

} // namespace

Node transportStreamNode(const TransportStream& stream, const Multiplex& multiplex, const Faults& faults) {
    Node node(titleOf(stream));
    if (stream.entry != nullptr) {
        appendEntry(node, *stream.entry);
    }
    node.faults = faults.of(&stream);
    if (stream.isRepeated) {
        node.say("its services are shown above");
        return node;
    }
    if (stream.id) {
        for (const Table* const pat : multiplex.tables().of(PAT, *stream.id)) {
            appendPrograms(node, *pat);
        }
        for (const Table* const sdt : multiplex.tables().of(SDT, *stream.id)) {
            appendDescriptions(node, *sdt, stream.entry);
        }
    }
    const ServiceNodes services(multiplex, faults);
    for (const Service& service : stream.services) {
        node.children.push_back(services.serviceNode(service));
    }
    return node;
}

} // namespace inspect
