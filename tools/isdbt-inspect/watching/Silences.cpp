#include "watching/Silences.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// Until the next PCR comes time is told by the packets before, which may come at another rate now. How long it was
/// away is measured when it comes.
bool isOnlyEstimated(const Spot& spot) {
    constexpr std::string_view OF_CLOCK = "pcr_";
    return spot.check.substr(0, OF_CLOCK.size()) == OF_CLOCK;
}

} // namespace

void Silences::expect(const std::set<Spot>& spots, const Position& at) {
    for (auto timer = m_timers.begin(); timer != m_timers.end();) {
        timer = spots.count(timer->first) == 0 ? m_timers.erase(timer) : std::next(timer);
    }
    for (const Spot& spot : spots) {
        expectToo(spot, at);
    }
}

void Silences::expectToo(const Spot& spot, const Position& at) {
    if (at.seconds && m_timers.size() < CAPACITY && m_alarms.limitOf(spot.check) != nullptr) {
        m_timers.emplace(spot, Timer{at});
    }
}

void Silences::came(const Spot& spot, const Position& at, std::optional<double> measured) {
    if (const auto found = m_timers.find(spot); found != m_timers.end()) {
        take(spot, found->second, at, measured);
    } else {
        expectToo(spot, at);
    }
}

void Silences::cameIfExpected(const Spot& spot, const Position& at, std::optional<double> measured) {
    if (const auto found = m_timers.find(spot); found != m_timers.end()) {
        take(spot, found->second, at, measured);
    }
}

void Silences::take(const Spot& spot, Timer& timer, const Position& at, std::optional<double> measured) {
    if (!at.seconds || *at.seconds <= *timer.last.seconds) {
        return;
    }
    const double silence = measured.value_or(*at.seconds - *timer.last.seconds);
    judge(spot, timer, at, silence);
    m_measured.insert(spot.check);
    if (timer.isAlarm) {
        m_alarms.recover(spot, at, silence);
    }
    timer = {at};
}

void Silences::judge(const Spot& spot, Timer& timer, const Position& at, double silence) {
    if (*at.seconds >= m_quietUntil && m_alarms.breaksLimit(spot, silence)) {
        m_alarms.lasted(spot, at, fmt::format("no {} for {}", textOf(spot), lengthText(silence)), silence,
                        !timer.isAlarm);
        timer.isAlarm = true;
        m_measured.insert(spot.check);
    }
}

void Silences::forgetBeyond(const Spot& table, std::uint8_t lastSection) {
    Spot last = table;
    last.section = lastSection;
    Spot end = table;
    end.section = UINT8_MAX;
    m_timers.erase(m_timers.upper_bound(last), m_timers.upper_bound(end));
}

void Silences::restart(const Position& at) {
    for (auto& [spot, timer] : m_timers) {
        timer = {at};
    }
}

void Silences::tick(const Position& now) {
    constexpr double DOUBT = 2;
    for (auto& [spot, timer] : m_timers) {
        const double silence = *now.seconds - *timer.last.seconds;
        if (!isOnlyEstimated(spot) || m_alarms.breaksLimit(spot, silence / DOUBT)) {
            judge(spot, timer, now, silence);
        }
    }
}

std::vector<Spot> Silences::of(std::string_view check) const {
    std::vector<Spot> spots;
    for (auto timer = m_timers.lower_bound({check}); timer != m_timers.end() && timer->first.check == check; ++timer) {
        spots.push_back(timer->first);
    }
    return spots;
}

} // namespace inspect
