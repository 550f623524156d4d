#include "checking/Fault.h"

#include <algorithm>
#include <utility>

namespace inspect {

void Faults::add(const Subject& subject, Fault fault) {
    m_byPart.emplace(subject.part, m_all.size());
    fault.about = subject.title;
    m_all.push_back(std::move(fault));
}

void Faults::addInPlaceOf(std::string_view name, const Subject& subject, Fault alarm) {
    const auto known = std::find_if(m_all.begin(), m_all.end(), [&](const Fault& each) {
        return each.kind.name == name && each.place.pid == alarm.place.pid &&
               each.place.tableId == alarm.place.tableId && each.place.extension == alarm.place.extension;
    });
    if (known == m_all.end()) {
        add(subject, std::move(alarm));
        return;
    }
    alarm.about = known->about;
    *known = std::move(alarm);
}

std::vector<std::string> Faults::of(const void* part) const {
    std::vector<std::string> texts;
    const auto [begin, end] = m_byPart.equal_range(part);
    for (auto each = begin; each != end; ++each) {
        texts.push_back(m_all[each->second].text);
    }
    return texts;
}

} // namespace inspect
