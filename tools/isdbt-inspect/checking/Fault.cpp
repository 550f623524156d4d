#include "checking/Fault.h"

namespace inspect {

void Faults::add(const Subject& subject, Fault fault) {
    m_byPart.emplace(subject.part, m_all.size());
    fault.about = subject.title;
    m_all.push_back(std::move(fault));
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
