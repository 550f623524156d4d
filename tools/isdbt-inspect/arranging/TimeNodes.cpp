#include "arranging/TimeNodes.h"

#include "describing/FieldLookup.h"
#include "describing/StandardReadings.h"
#include "multiplex/Titles.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::int64_t OF_BRASILIA = -180; // minutes

/// Brazilian stations whose offsets count from UTC give three hours behind for most of the country.
bool countsFromUtc(const Fields& tot) {
    const Fields& regions = elements(inner(inner(tot, "local_time_offset_descriptor"), STANDARD), "regions");
    return std::any_of(regions.begin(), regions.end(), [](const Field& region) {
        const Field* const country = find(inner(region), "country_code");
        return std::get<Text>(country->value).raw == "BRA" &&
               numberIn(inner(region), "local_time_offset") == OF_BRASILIA;
    });
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
