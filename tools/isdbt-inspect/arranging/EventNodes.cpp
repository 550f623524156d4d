#include "arranging/EventNodes.h"

#include "arranging/FieldLookup.h"

namespace inspect {

Node eventNode(const Table& section) {
    Node node("DSM-CC stream descriptors");
    Fields rest = section.beside({});
    node.say("data event", take(rest, "data_event_id"));
    node.say("event message group", take(rest, "event_msg_group_id"));
    section.appendVersionTo(node, "DSM-CC");
    node.tell("", std::move(rest));
    return node;
}

} // namespace inspect
