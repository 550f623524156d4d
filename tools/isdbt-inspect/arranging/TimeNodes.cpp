#include "arranging/TimeNodes.h"

#include "describing/FieldLookup.h"
#include "describing/StandardReadings.h"
#include "multiplex/Titles.h"

namespace inspect {

namespace {

/// Brazilian stations whose offsets count from UTC give three hours behind for most of the country.
bool countsFromUtc(const Fields& tot) {
    constexpr std::int64_t OF_BRASILIA = -180;
    for (const Field& region : elements(inner(inner(tot, "local_time_offset_descriptor"), STANDARD), "regions")) {
        const Field* const country = find(inner(region), "country_code");
        if (std::get<Text>(country->value).raw == "BRA" &&
            numberIn(inner(region), "local_time_offset") == OF_BRASILIA) {
            return true;
        }
    }
    return false;
}

} // namespace

Node timeNode(const Table& tot, const Faults& faults) {
    Node node(titleOf(tot));
    Fields rest = tot.beside({});
    node.say("", take(rest, "unix_time"));
    if (countsFromUtc(rest)) {
        node.say("by its offset of 03:00 behind rather UTC");
    }
    if (!tot.taken.empty() && !tot.taken.front()->otherZone.empty()) {
        node.say("by this machine's clock rather " + tot.taken.front()->otherZone);
    }
    node.sayVersion(tot);
    node.faults = faults.of(&tot);
    node.tell("", std::move(rest));
    return node;
}

} // namespace inspect
