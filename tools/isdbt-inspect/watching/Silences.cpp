#include "watching/Silences.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

namespace inspect {

namespace {

/// What is uncertain may take so many times its limit.
constexpr double DOUBT = 2;

/// Losses may take a table with them again and again, but not for so many times its limit.
constexpr double MANY_LOSSES = 5;

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
    // What follows a loss may not be whole, and what is measured began before.
    const bool isOfLoss = timer.isExcused && (measured || !m_alarms.breaksLimit(spot, silence / DOUBT));
    m_measured.insert(spot.check);
    if (timer.isAlarm) {
        judge(spot, timer, at, timer.missed + silence);
        m_alarms.recover(spot, at, timer.missed + silence);
    } else if (!isOfLoss && *at.seconds >= m_quietUntil && m_delays.size() < CAPACITY &&
               m_alarms.breaksLimit(spot, silence)) {
        m_delays.push_back({spot, timer.last, at, measured});
    }
    timer = {at};
}

void Silences::decide(double until) {
    const auto undecided = std::stable_partition(m_delays.begin(), m_delays.end(),
                                                 [until](const Delay& delay) { return *delay.to.seconds <= until; });
    for (auto delay = m_delays.begin(); delay != undecided; ++delay) {
        const double silence = delay->measured.value_or(*delay->to.seconds - *delay->from.seconds);
        Timer timer{delay->from};
        judge(delay->spot, timer, delay->to, silence);
        if (timer.isAlarm) {
            m_alarms.recover(delay->spot, delay->to, silence);
        }
    }
    m_delays.erase(m_delays.begin(), undecided);
}

/// Once a reference has come, times of packets before it are known better.
void Silences::date(Position& position) const {
    if (position.packet > m_datedUntil && position.packet < m_clock.lastCertain()) {
        position.seconds = m_clock.seconds(position.packet);
    }
}

void Silences::dateAll() {
    for (auto& [spot, timer] : m_timers) {
        date(timer.last);
    }
    for (Delay& delay : m_delays) {
        date(delay.from);
        date(delay.to);
    }
    m_datedUntil = m_clock.lastCertain();
}

void Silences::judge(const Spot& spot, Timer& timer, const Position& at, double silence) {
    if (*at.seconds >= m_quietUntil && m_alarms.breaksLimit(spot, silence)) {
        tell(spot, timer, at, silence);
    }
}

void Silences::tell(const Spot& spot, Timer& timer, const Position& at, double silence) {
    m_alarms.lasted(spot, at, fmt::format("no {} for {}", textOf(spot), lengthText(silence)), silence, !timer.isAlarm);
    timer.isAlarm = true;
    m_measured.insert(spot.check);
}

bool Silences::isAwayDespiteLosses(const Spot& spot, double silence) const {
    return m_alarms.breaksLimit(spot, silence / MANY_LOSSES);
}

void Silences::forgetBeyond(const Spot& table, std::uint8_t lastSection) {
    Spot last = table;
    last.section = lastSection;
    Spot end = table;
    end.section = UINT8_MAX;
    m_timers.erase(m_timers.upper_bound(last), m_timers.upper_bound(end));
}

void Silences::resume(const Position& at, const Position& before) {
    for (auto& [spot, timer] : m_timers) {
        const double away = std::max(before.seconds.value_or(0) - *timer.last.seconds, 0.0);
        const double missed = timer.missed + away;
        timer = {at, timer.isAlarm && isAwayDespiteLosses(spot, missed), true, missed};
    }
    m_delays.clear();
    m_datedUntil = at.packet;
}

void Silences::restart(const Position& at) {
    for (auto& [spot, timer] : m_timers) {
        timer = {at, false, true};
    }
    m_delays.clear();
    m_datedUntil = at.packet;
}

void Silences::excuse(const Position& at, std::optional<Pid> pid) {
    const auto isMeant = [pid](const Spot& spot) { return !pid || spot.place.pid == pid; };
    for (auto& [spot, timer] : m_timers) {
        if (isMeant(spot) && !timer.isAlarm && !timer.isExcused) {
            timer = {at, false, true, timer.missed};
        }
    }
    m_delays.erase(std::remove_if(m_delays.begin(), m_delays.end(),
                                  [&isMeant](const Delay& delay) { return isMeant(delay.spot); }),
                   m_delays.end());
}

void Silences::tick(const Position& now, Doubt doubt) {
    dateAll();
    Position certain = now;
    certain.seconds = std::min(*now.seconds, m_clock.certainSeconds(now.packet).value_or(*now.seconds));
    for (auto& [spot, timer] : m_timers) {
        const Position& until = isOnlyEstimated(spot) ? now : certain;
        const double silence = *until.seconds - *timer.last.seconds;
        const bool isInDoubt = doubt != Doubt::None || timer.missed != 0;
        if (isInDoubt && isAwayDespiteLosses(spot, timer.missed + silence)) {
            tell(spot, timer, until, timer.missed + silence);
            continue;
        }
        if (doubt == Doubt::Great) {
            continue;
        }
        const bool isCertain = !isOnlyEstimated(spot) && !timer.isExcused && (doubt == Doubt::None || timer.isAlarm);
        if (isCertain || m_alarms.breaksLimit(spot, silence / DOUBT)) {
            judge(spot, timer, until, silence);
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
