#pragma once

#include "watching/Alarms.h"

#include <map>
#include <set>

namespace inspect {

/// Watches what has to come again and again: tables, packets, time stamps. An alarm does not wait until it comes.
class Silences {
public:
    explicit Silences(Alarms& alarms) : m_alarms(alarms) {}

    /// Exactly these are waited for, whether or not they ever came; others not before they come again.
    void expect(const std::set<Spot>& spots, const Position& at);

    /// One more is, if it has a limit.
    void expectToo(const Spot& spot, const Position& at);

    /// It came, and is waited for from now on.
    /// @param measured how long it was away, where that is known better than from positions
    void came(const Spot& spot, const Position& at, std::optional<double> measured = {});

    /// The same if it is waited for.
    void cameIfExpected(const Spot& spot, const Position& at, std::optional<double> measured = {});

    /// It is waited for no more.
    void forget(const Spot& spot) { m_timers.erase(spot); }

    /// The same for sections that a table has no more.
    void forgetBeyond(const Spot& table, std::uint8_t lastSection);

    /// All are waited for from now on.
    void restart(const Position& at);

    /// Nothing is missed until then.
    void keepQuiet(double until) { m_quietUntil = until; }

    /// Time has passed: what should have come by now and did not?
    void tick(const Position& now);

    /// Which are waited for, that a check has.
    std::vector<Spot> of(std::string_view check) const;

    /// Whether an interval of a check was measured.
    bool measured(std::string_view check) const { return m_measured.count(check) != 0; }

private:
    /// No stream has as many. One that is broken must not fill the memory.
    static constexpr std::size_t CAPACITY = 1024;

    struct Timer {
        Position last;        ///< when it came, or from when it is waited for
        bool isAlarm = false; ///< it is away for too long
    };

    void judge(const Spot& spot, Timer& timer, const Position& at, double silence);
    void take(const Spot& spot, Timer& timer, const Position& at, std::optional<double> measured);

    Alarms& m_alarms;
    std::map<Spot, Timer> m_timers;
    std::set<std::string_view> m_measured;
    double m_quietUntil = 0;
};

} // namespace inspect
