#include "pages/KeptSections.h"

#include <algorithm>
#include <vector>

namespace inspect {

namespace {

/// What a text takes beside its characters, about.
constexpr std::size_t OVERHEAD = 256;

} // namespace

void KeptSections::take(const Place& place, std::string text) {
    if (const auto before = m_byPlace.find(place); before != m_byPlace.end()) {
        m_former.splice(m_former.end(), m_current, before->second);
        m_byPlace.erase(before);
    }
    m_size += text.size() + OVERHEAD;
    m_current.push_back({m_count++, place, std::move(text)});
    m_byPlace[place] = std::prev(m_current.end());
    while (m_size > m_room) {
        dropOne();
    }
}

void KeptSections::dropOne() {
    std::list<Kept>& from = m_former.empty() ? m_current : m_former;
    if (m_former.empty()) {
        m_byPlace.erase(from.front().place);
    }
    m_size -= from.front().text.size() + OVERHEAD;
    from.pop_front();
    ++m_leftOut;
}

std::string KeptSections::text() const {
    std::vector<const Kept*> all;
    all.reserve(m_former.size() + m_current.size());
    for (const std::list<Kept>* const each : {&m_former, &m_current}) {
        for (const Kept& kept : *each) {
            all.push_back(&kept);
        }
    }
    std::sort(all.begin(), all.end(), [](const Kept* one, const Kept* other) { return one->number < other->number; });
    std::string text;
    text.reserve(m_size);
    for (const Kept* const kept : all) {
        text += kept->text;
    }
    return text;
}

} // namespace inspect
