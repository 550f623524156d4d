#include "arranging/Arrangement.h"

#include "arranging/DownloadNodes.h"
#include "arranging/TimeNodes.h"
#include "arranging/TransportStreams.h"
#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"
#include "tables/TableKinds.h"

namespace inspect {

namespace {

Node networkNode(const Network& network, const Multiplex& multiplex, const Faults& faults) {
    const Table& nit = *network.nit;
    Node node(titleOf(network));
    Fields rest = nit.beside("transport_streams");
    take(rest, "network_id");
    if (std::optional<Field> name = take(rest, "network_name_descriptor", "network_name")) {
        node.names.push_back(std::move(*name));
    }
    node.say("", take(rest, "system_management_descriptor", "system_management_id"), Extent::Full);
    node.sayVersion(nit);
    node.faults = faults.of(&network);
    node.tell("", std::move(rest));
    for (const TransportStream& stream : network.streams) {
        node.children.push_back(transportStreamNode(stream, multiplex, faults));
    }
    return node;
}

/// What did not come in packets has no node around it.
void appendUnclaimed(std::vector<Node>& nodes, const Unclaimed& unclaimed, const Faults& faults) {
    std::vector<Node> carried;
    for (const Table* const table : unclaimed.tables) {
        carried.push_back(carriedNode(*table, nullptr, faults));
    }
    if (!unclaimed.pid) {
        std::move(carried.begin(), carried.end(), std::back_inserter(nodes));
        return;
    }
    nodes.emplace_back(titleOf(unclaimed));
    nodes.back().faults = faults.of(&unclaimed);
    nodes.back().children = std::move(carried);
}

} // namespace

std::vector<Node> arrange(const Multiplex& multiplex, const Faults& faults) {
    std::vector<Node> nodes;
    if (std::vector<std::string> texts = faults.of(&multiplex); !texts.empty()) {
        nodes.emplace_back(titleOf(multiplex));
        nodes.back().faults = std::move(texts);
    }
    for (const Network& network : multiplex.networks()) {
        nodes.push_back(networkNode(network, multiplex, faults));
    }
    for (const TransportStream& stream : multiplex.unlisted()) {
        nodes.push_back(transportStreamNode(stream, multiplex, faults));
    }
    for (const Unclaimed& unclaimed : multiplex.unclaimed()) {
        appendUnclaimed(nodes, unclaimed, faults);
    }
    for (const Table* const tot : multiplex.tables().of(TOT)) {
        nodes.push_back(timeNode(*tot, faults));
    }
    for (const Table* const sdtt : multiplex.tables().of(SDTT)) {
        nodes.push_back(downloadNode(*sdtt, faults));
    }
    return nodes;
}

} // namespace inspect
