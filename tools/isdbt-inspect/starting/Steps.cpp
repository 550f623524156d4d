#include "starting/Steps.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

void Steps::add(std::string_view name, Outcome outcome, Evidence evidence, Need need) {
    if (need == Need::Start) {
        m_completed = std::max(m_completed, outcome.completed);
    }
    m_steps.push_back({name, outcome.result, std::move(outcome.text), evidence.place, evidence.position,
                       std::move(evidence.bytes), need == Need::Start, outcome.fault});
}

bool Steps::hasRoomFor(std::string_view name) {
    constexpr std::ptrdiff_t MOST = 16;
    const auto count =
        std::count_if(m_steps.begin(), m_steps.end(), [name](const Step& each) { return each.name == name; });
    if (count == MOST) {
        add(name, notSeen(fmt::format("{}: there are more, which are not looked at", name)), {}, Need::Use);
    }
    return count < MOST;
}

const Step* Steps::first(Step::Result result, Need need) const {
    const auto found = std::find_if(m_steps.begin(), m_steps.end(), [&](const Step& each) {
        return each.result == result && each.needed == (need == Need::Start);
    });
    return found == m_steps.end() ? nullptr : &*found;
}

Outcome Steps::dependent(std::string_view name) const {
    return notSeen(fmt::format("{}: not tried, for want of the {}", name, m_broken));
}

} // namespace inspect
