#include "arranging/Arrangement.h"

#include "arranging/DownloadNodes.h"
#include "arranging/FieldLookup.h"
#include "arranging/TimeNodes.h"
#include "arranging/TransportStreams.h"
#include "sections/TableIds.h"

#include <fmt/format.h>

namespace inspect {

namespace {

void append(std::vector<Node>& nodes, std::vector<Node> others) {
    std::move(others.begin(), others.end(), std::back_inserter(nodes));
}

/// The PAT says where the NIT is. Receivers that believe it do not find another one.
void checkPid(Node& node, const Tables& tables, const Table& nit) {
    for (const Table* const pat : tables.of(PAT)) {
        const std::int64_t said = numberIn(pat->beside("programs"), "network_pid").value_or(0);
        if (nit.key.pid && said != 0 && said != *nit.key.pid) {
            node.fault(fmt::format("the NIT came on PID 0x{:04X}, but the PAT says 0x{:04X}", *nit.key.pid, said));
        }
    }
}

Node networkNode(const Tables& tables, const Table& nit, TransportStreams& streams) {
    Node node(fmt::format("Network 0x{0:04X} ({0})", nit.key.extension));
    Fields rest = nit.beside("transport_streams");
    take(rest, "network_id");
    if (std::optional<Field> name = take(rest, "network_name_descriptor", "network_name")) {
        node.names.push_back(std::move(*name));
    }
    node.say("", take(rest, "system_management_descriptor", "system_management_id"));
    nit.appendTo(node, "NIT");
    checkPid(node, tables, nit);
    node.tell("", std::move(rest));
    for (const Fields* const entry : nit.entries("transport_streams")) {
        node.children.push_back(streams.listedNode(*entry));
    }
    if (nit.complete() && node.children.empty()) {
        node.fault("the NIT has no transport stream");
    }
    return node;
}

} // namespace

std::vector<Node> arrange(const Tables& tables) {
    TransportStreams streams(tables);
    std::vector<Node> nodes;
    for (const Table* const nit : tables.of(NIT)) {
        nodes.push_back(networkNode(tables, *nit, streams));
    }
    append(nodes, streams.unlistedNodes());
    append(nodes, streams.unclaimed());
    for (const Table* const tot : tables.of(TOT)) {
        nodes.push_back(timeNode(*tot));
    }
    for (const Table* const sdtt : tables.of(SDTT)) {
        nodes.push_back(downloadNode(*sdtt));
    }
    return nodes;
}

} // namespace inspect
