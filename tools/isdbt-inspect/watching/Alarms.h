#pragma once

#include "reports/Alarm.h"
#include "sections/BoundedMap.h"
#include "watching/Profile.h"
#include "watching/Spot.h"

#include <map>
#include <string>
#include <vector>

namespace inspect {

/// Makes one alarm of all that breaks a limit at a spot, until it has held for a while.
class Alarms {
public:
    explicit Alarms(const Profile& profile) : m_profile(profile) {}

    /// The stream itself says how often a table comes.
    void declareCycle(std::string_view check, double seconds);
    void forgetCycles() { m_declared.clear(); }

    /// What a check is held to; null when it is to nothing.
    const Limit* limitOf(std::string_view check) const;

    /// Something happened that should not.
    /// @param worst how bad it was, if that has a measure
    void happened(const Spot& spot, const Position& at, const std::string& text, std::optional<double> worst = {});

    /// It still is as it should not be.
    void goesOn(const Spot& spot, const Position& at);

    bool breaksLimit(const Spot& spot, double value) const;

    /// Something lasts, or lasted, longer than its limit.
    /// @param isNew whether it was not told before: it may also go on
    void lasted(const Spot& spot, const Position& at, const std::string& text, double seconds, bool isNew);

    /// What broke the limit is over.
    void recover(const Spot& spot, const Position& at, double silence);

    /// Time has passed.
    void tick(const Position& now);

    /// Those that began, became worse or ended since the last call.
    std::vector<Alarm> news();
    bool hasNews() const { return !m_news.empty(); }

    /// All of them, those of a spot as one.
    std::vector<Alarm> all() const;

    /// How many there were of a check that became as bad, and no worse.
    std::uint64_t countOf(std::string_view check, Severity severity) const;

private:
    /// More than all of one stream. One with new spots all the time must not fill the memory.
    static constexpr std::size_t CAPACITY = 1024;
    static constexpr std::size_t MOST_NEWS = 4096;

    struct State {
        Alarm current;
        Alarm whole;        ///< with all before
        Position last;      ///< where it happened last, or was over
        std::string ending; ///< what is said when it ends
    };

    struct Occurrence {
        const std::string& text;
        const Bound& bound;
        std::optional<double> worst;
        bool isNew;
    };

    static void apply(Alarm& alarm, const Occurrence& occurrence);
    static void add(Alarm& alarm, const Occurrence& occurrence);
    void raise(const Spot& spot, const Position& at, const Occurrence& occurrence);
    void begin(const Spot& spot, const Position& at, const Occurrence& occurrence, State* state);
    void tell(const Alarm& alarm);
    void end(State& state);

    const Profile& m_profile;
    std::map<std::string_view, Limit> m_declared;
    BoundedMap<Spot, State> m_states{CAPACITY};
    std::map<std::pair<std::string_view, Severity>, std::uint64_t> m_counts;
    std::vector<Alarm> m_news;
};

} // namespace inspect
