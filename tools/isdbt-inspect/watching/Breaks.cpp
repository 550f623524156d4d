#include "watching/Breaks.h"

#include <algorithm>
#include <numeric>
#include <set>
#include <utility>

namespace inspect {

namespace {

/// References come so often that by then the clock has told of a gap.
constexpr double UNTIL_CLOCK = 1.5;

double secondsBetween(const Position& one, const Position& other) {
    return other.seconds.value_or(0) - one.seconds.value_or(0);
}

} // namespace

bool Breaks::Break::isLoss() const {
    return isOfClock || std::count_if(counters.begin(), counters.end(),
                                      [](const Event& counter) { return counter.amount != 0; }) > 1;
}

std::size_t Breaks::Break::pids() const {
    std::set<Pid> pids;
    for (const Event& counter : counters) {
        pids.insert(counter.pid.value_or(NULL_PID));
    }
    return pids.size();
}

double Breaks::Break::lost() const {
    return std::accumulate(counters.begin(), counters.end(), 0.0,
                           [](double sum, const Event& counter) { return sum + counter.amount; });
}

bool Breaks::take(const Event& discontinuity) {
    if (m_last && discontinuity.before < m_last->packet) {
        return false; // its packets are rare
    }
    const auto known = std::find_if(m_waiting.rbegin(), m_waiting.rend(), [&discontinuity](const Break& each) {
        return discontinuity.before < each.begin.packet;
    });
    Break& own = known == m_waiting.rend() ? m_waiting.emplace_back(Break{discontinuity.at}) : *known;
    const bool wasLoss = own.isLoss();
    own.counters.push_back(discontinuity);
    ++m_count;
    return own.isLoss() && !wasLoss;
}

void Breaks::takeLoss(const Event& loss) {
    Break own{loss.at, loss.amount, true};
    for (const Break& each : m_waiting) { // it took the clock a while to see it
        own.counters.insert(own.counters.end(), each.counters.begin(), each.counters.end());
    }
    m_waiting.clear();
    m_waiting.push_back(std::move(own));
}

void Breaks::takeGap(const Position& end) {
    m_waiting.clear();
    m_count = 0;
    m_last = end;
    m_isGap = true;
}

bool Breaks::explainsAsGap(const Event& event) const {
    return m_isGap && m_last && secondsBetween(*m_last, event.at) < UNTIL_CLOCK;
}

void Breaks::clear() {
    m_waiting.clear();
    m_count = 0;
    m_last.reset();
}

std::vector<Breaks::Break> Breaks::decided(double until) {
    std::vector<Break> decided;
    while (!m_waiting.empty() && m_waiting.front().begin.seconds.value_or(0) <= until) {
        m_count -= m_waiting.front().counters.size();
        decided.push_back(std::move(m_waiting.front()));
        m_waiting.pop_front();
        if (decided.back().isLoss()) {
            m_last = decided.back().begin;
            m_isGap = false;
        }
    }
    return decided;
}

} // namespace inspect
