#include "checking/TimeChecks.h"

#include "checking/SectionChecks.h"
#include "describing/FieldLookup.h"

#include <fmt/format.h>

namespace inspect {

void checkTime(Faults& faults, const Table& tot, const PresentEvents& events) {
    constexpr std::int64_t THREE_HOURS = std::int64_t{3} * 60 * 60;
    const std::optional<std::int64_t> time = numberIn(tot.beside({}), "unix_time");
    const std::optional<Position> position = sinceOf(tot);
    if (!time || !position) {
        return;
    }
    const std::int64_t now = static_cast<std::uint32_t>(*time); // negative from 2038 on
    const bool isAhead = events.have(now - THREE_HOURS, *position);
    const bool isBehind = events.have(now + THREE_HOURS, *position);
    // Events of several services that would fit to both tell nothing.
    if (isAhead != isBehind && !events.have(now, *position)) {
        faults.add(subject(tot), {faults::CLOCKS_DIFFER, placeOf(tot),
                                  fmt::format("the clock of the TOT is three hours {} that of the EIT",
                                              isAhead ? "ahead of" : "behind"),
                                  position});
    }
}

} // namespace inspect
