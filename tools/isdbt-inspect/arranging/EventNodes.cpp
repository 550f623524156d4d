#include "arranging/EventNodes.h"

#include "describing/FieldLookup.h"
#include "multiplex/Titles.h"

namespace inspect {

Node eventNode(const Table& section, const Faults& faults) {
    Node node(titleOf(section));
    Fields rest = section.beside({});
    node.say("data event", take(rest, "data_event_id"));
    node.say("event message group", take(rest, "event_msg_group_id"));
    node.sayVersionOnly(section);
    node.faults = faults.of(&section);
    node.tell("", std::move(rest));
    return node;
}

} // namespace inspect
