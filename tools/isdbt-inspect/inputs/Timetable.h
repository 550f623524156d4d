#pragma once

#include <algorithm>
#include <chrono>
#include <ctime>
#include <limits>
#include <optional>

namespace inspect {

/// What is to be done at some time of an input. In seconds since it began: of a live one those that pass here, of
/// another one those of the stream's clock.
struct Times {
    std::optional<double> every;    ///< interim results
    std::optional<double> length;   ///< it ends then
    std::optional<double> noData;   ///< nothing has come on a live one for so long: that is said
    bool moreAndMoreRarely = false; ///< interim results, though nobody asked: after a second, then in twice the time

    bool areOfStream() const { return every || length; }
};

/// When it is due.
class Timetable {
public:
    explicit Timetable(const Times& times)
        : m_times(times), m_next(times.every || !times.moreAndMoreRarely ? times.every : 1.0) {}

    /// Whether interim results are, once for each time.
    bool isInterimDue(double now);

    /// When those or the end are.
    double next() const {
        constexpr double NEVER = std::numeric_limits<double>::infinity();
        return std::min(m_next.value_or(NEVER), m_times.length.value_or(NEVER));
    }

    bool isOver(double now) const { return m_times.length && now >= *m_times.length; }

private:
    Times m_times;
    std::optional<double> m_next;
};

/// The time that passes here, in seconds.
class Stopwatch {
public:
    double seconds() const { return std::chrono::duration<double>(Clock::now() - m_begin).count(); }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_begin = Clock::now();
};

/// A time in which nothing came.
struct Silence {
    double seconds; ///< so far, or altogether
    bool isOver;
    std::time_t at; ///< when it has become too long, or is over, by this machine's clock
};

/// Notices when nothing comes for too long, and when something comes again.
class SilenceWatch {
public:
    /// @param limit in seconds
    explicit SilenceWatch(double limit) : m_limit(limit) {}

    /// @param came whether something did
    /// @return a silence that has just become too long, or has just ended
    std::optional<Silence> look(double now, bool came);

private:
    double m_limit;
    double m_last = 0; ///< when something came
    bool m_isSilent = false;
};

} // namespace inspect
