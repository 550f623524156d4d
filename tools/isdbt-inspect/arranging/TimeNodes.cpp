#include "arranging/TimeNodes.h"

#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"

namespace inspect {

Node timeNode(const Table& tot, const Faults& faults) {
    Node node(titleOf(tot));
    Fields rest = tot.beside({});
    node.say("", take(rest, "unix_time"));
    node.sayVersion(tot);
    node.faults = faults.of(&tot);
    node.tell("", std::move(rest));
    return node;
}

} // namespace inspect
