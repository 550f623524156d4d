#include "arranging/TimeNodes.h"

#include "arranging/FieldLookup.h"

namespace inspect {

Node timeNode(const Table& tot) {
    Node node("Time");
    Fields rest = tot.beside({});
    node.say("", take(rest, "unix_time"));
    tot.appendTo(node, "TOT");
    node.tell("", std::move(rest));
    return node;
}

} // namespace inspect
