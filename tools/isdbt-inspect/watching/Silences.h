#pragma once

#include "packets/StreamClock.h"
#include "watching/Alarms.h"

#include <map>
#include <set>

namespace inspect {

/// Watches what has to come again and again: tables, packets, time stamps. An alarm does not wait until it comes.
class Silences {
public:
    /// @param clock of the stream, whose times between two references are estimates
    Silences(Alarms& alarms, const StreamClock& clock) : m_alarms(alarms), m_clock(clock) {}

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

    /// Packets were lost up to now: all are waited for from now on. How long they were away before still counts where
    /// one loss follows the other.
    /// @param before the last moment before the loss
    void resume(const Position& at, const Position& before);

    /// What follows is another stream: all are waited for from now on.
    void restart(const Position& at);

    /// Packets were lost, perhaps those that are waited for: each that was not excused since it came last is now.
    /// @param pid on which alone that was, if it was on one
    void excuse(const Position& at, std::optional<Pid> pid = {});

    /// Nothing is missed until then.
    void keepQuiet(double until) { m_quietUntil = until; }

    /// Whether a loss may yet explain what did not come.
    enum class Doubt {
        None,
        Some, ///< a counter is broken
        Great ///< several are
    };

    /// Time has passed: what should have come by now and did not?
    void tick(const Position& now, Doubt doubt);

    /// Decides on all that came late before a time, in seconds.
    void decide(double until);

    /// Which are waited for, that a check has.
    std::vector<Spot> of(std::string_view check) const;

    /// Whether an interval of a check was measured.
    bool measured(std::string_view check) const { return m_measured.count(check) != 0; }

private:
    /// No stream has as many. One that is broken must not fill the memory.
    static constexpr std::size_t CAPACITY = 1024;

    struct Timer {
        Position last;          ///< when it came, or from when it is waited for
        bool isAlarm = false;   ///< it is away for too long
        bool isExcused = false; ///< it has not come since packets were lost
        double missed = 0;      ///< how long it was away before that, in seconds, but for losses
    };

    /// It came too late, unless a loss of packets explains that.
    struct Delay {
        Spot spot;
        Position from;
        Position to;
        std::optional<double> measured;
    };

    void judge(const Spot& spot, Timer& timer, const Position& at, double silence);
    void tell(const Spot& spot, Timer& timer, const Position& at, double silence);
    bool isAwayDespiteLosses(const Spot& spot, double silence) const;
    void take(const Spot& spot, Timer& timer, const Position& at, std::optional<double> measured);
    void date(Position& position) const;
    void dateAll();

    Alarms& m_alarms;
    const StreamClock& m_clock;
    std::map<Spot, Timer> m_timers;
    std::vector<Delay> m_delays;    ///< that nothing is decided on yet
    std::uint64_t m_datedUntil = 0; ///< number of the packet up to which the times of all these are certain
    std::set<std::string_view> m_measured;
    double m_quietUntil = 0;
};

} // namespace inspect
