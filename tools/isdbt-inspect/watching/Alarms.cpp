#include "watching/Alarms.h"

#include "watching/Check.h"

#include <fmt/format.h>
#include <utility>

namespace inspect {

namespace {

constexpr std::string_view DECLARED = "declared_cycle";

bool isWorse(Severity severity, Severity than) {
    return severity < than; // the worst is the first of them
}

} // namespace

void Alarms::declareCycle(std::string_view check, double seconds) {
    const Limit* const factors = m_profile.of(DECLARED);
    if (factors == nullptr) {
        return;
    }
    Limit limit;
    for (const Bound& factor : factors->bounds) {
        limit.bounds.push_back(
            {factor.severity, *factor.value * seconds,
             fmt::format("{:g} times the {:g} s that the BIT declares: {}", *factor.value, seconds, factor.source)});
    }
    m_declared[check] = std::move(limit);
}

const Limit* Alarms::limitOf(std::string_view check) const {
    const auto declared = m_declared.find(check);
    return declared != m_declared.end() ? &declared->second : m_profile.of(check);
}

void Alarms::happened(const Spot& spot, const Position& at, const std::string& text, std::optional<double> worst) {
    if (const Limit* const limit = limitOf(spot.check)) {
        raise(spot, at, {text, limit->bounds.front(), worst, true});
    }
}

void Alarms::goesOn(const Spot& spot, const Position& at) {
    State* const state = m_states.find(spot);
    if (state != nullptr && !state->current.until) {
        state->last = at;
    }
}

bool Alarms::breaksLimit(const Spot& spot, double value) const {
    const Limit* const limit = limitOf(spot.check);
    return limit != nullptr && limit->brokenBy(value) != nullptr;
}

void Alarms::lasted(const Spot& spot, const Position& at, const std::string& text, double seconds, bool isNew) {
    raise(spot, at, {text, *limitOf(spot.check)->brokenBy(seconds), seconds, isNew});
}

void Alarms::apply(Alarm& alarm, const Occurrence& occurrence) {
    const Bound& bound = occurrence.bound;
    alarm.kind.severity = bound.severity;
    alarm.limit = bound.value;
    alarm.limitSource = bound.source;
    alarm.isProposal = bound.isProposal();
    alarm.text = fmt::format("{} ({})", occurrence.text, bound.text());
}

/// Takes the next one into an alarm.
void Alarms::add(Alarm& alarm, const Occurrence& occurrence) {
    alarm.count += occurrence.isNew ? 1U : 0U;
    const bool isWorst = occurrence.worst && (!alarm.worst || *occurrence.worst > *alarm.worst);
    alarm.worst = isWorst ? occurrence.worst : alarm.worst;
    const Severity severity = occurrence.bound.severity;
    if (isWorse(severity, alarm.kind.severity) || (isWorst && severity == alarm.kind.severity)) {
        apply(alarm, occurrence);
    }
}

void Alarms::raise(const Spot& spot, const Position& at, const Occurrence& occurrence) {
    State* const state = m_states.find(spot);
    if (state == nullptr || state->current.until) {
        begin(spot, at, occurrence, state);
        return;
    }
    const Severity before = state->current.kind.severity;
    add(state->current, occurrence);
    add(state->whole, occurrence);
    state->last = at;
    state->ending.clear();
    if (isWorse(state->current.kind.severity, before)) {
        --m_counts[{state->current.kind.name, before}];
        ++m_counts[{state->current.kind.name, state->current.kind.severity}];
        state->current.stage = Alarm::Stage::Worse;
        state->current.at = at;
        tell(state->current);
    }
}

/// @param state of the alarms that the spot had before; null when it had none
void Alarms::begin(const Spot& spot, const Position& at, const Occurrence& occurrence, State* state) {
    const Check& check = *checkNamed(spot.check);
    Alarm alarm{};
    alarm.kind = {check.name, Severity::Error, FaultKind::ShownBy::Alarm};
    alarm.indicator = check.indicator;
    alarm.place = spot.place;
    alarm.since = at;
    alarm.at = at;
    alarm.worst = occurrence.worst;
    apply(alarm, occurrence);
    ++m_counts[{check.name, alarm.kind.severity}];
    tell(alarm);
    if (state == nullptr) {
        m_states.put(spot, {alarm, alarm, at, {}});
        return;
    }
    Alarm whole = std::move(state->whole);
    add(whole, {occurrence.text, occurrence.bound, occurrence.worst, true});
    ++whole.alarms;
    whole.until.reset();
    *state = {std::move(alarm), std::move(whole), at, {}};
}

void Alarms::recover(const Spot& spot, const Position& at, double silence) {
    State* const state = m_states.find(spot);
    if (state == nullptr || state->current.until) {
        return;
    }
    const std::string what = textOf(spot);
    const std::uint64_t count = state->current.count;
    state->last = at;
    state->ending = count == 1 ? fmt::format("{} came again after {}", what, lengthText(silence))
                               : fmt::format("{} came too late {} times, by then after {}", what, count,
                                             lengthText(state->current.worst.value_or(silence)));
}

void Alarms::end(State& state) {
    Alarm& alarm = state.current;
    alarm.until = state.last;
    alarm.at = state.last;
    state.whole.until = state.last;
    alarm.stage = Alarm::Stage::Ended;
    alarm.text = !state.ending.empty() ? state.ending
                                       : fmt::format("over: {}{}", alarm.text,
                                                     alarm.count == 1 ? "" : fmt::format(", {} times", alarm.count));
    tell(alarm);
}

void Alarms::tick(const Position& now) {
    std::vector<Spot> over;
    for (const auto& [spot, state] : m_states.entries()) {
        const std::optional<double>& last = state.last.seconds;
        if (!state.current.until && now.seconds && last && *now.seconds - *last >= m_profile.hold()) {
            over.push_back(spot);
        }
    }
    for (const Spot& spot : over) {
        end(*m_states.find(spot));
    }
}

void Alarms::tell(const Alarm& alarm) {
    if (m_news.size() < MOST_NEWS) {
        m_news.push_back(alarm);
    }
}

std::vector<Alarm> Alarms::news() {
    return std::exchange(m_news, {});
}

std::vector<Alarm> Alarms::all() const {
    std::vector<Alarm> alarms;
    for (const auto& [spot, state] : m_states.entries()) {
        Alarm alarm = state.whole;
        if (alarm.count > 1) {
            alarm.text += fmt::format(", {} times", alarm.count);
        }
        alarms.push_back(std::move(alarm));
    }
    std::sort(alarms.begin(), alarms.end(), [](const Alarm& one, const Alarm& other) {
        return std::tie(one.since.packet, one.kind.name) < std::tie(other.since.packet, other.kind.name);
    });
    return alarms;
}

std::uint64_t Alarms::countOf(std::string_view check, Severity severity) const {
    const auto found = m_counts.find({check, severity});
    return found == m_counts.end() ? 0 : found->second;
}

} // namespace inspect
