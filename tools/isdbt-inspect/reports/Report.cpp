#include "reports/Report.h"

namespace inspect {

std::optional<LongestInterval> longestOf(const Intervals& intervals, std::optional<double> end) {
    std::optional<LongestInterval> longest;
    const auto consider = [&longest](LongestInterval each) {
        longest = !longest || each.seconds > longest->seconds ? each : longest;
    };
    const Spread& between = intervals.between;
    if (const std::optional<double> seconds = between.maximum()) {
        const double to = between.longestAt().seconds.value_or(*seconds);
        consider({*seconds, to - *seconds, to});
    }
    if (intervals.before) {
        consider({*intervals.before, std::nullopt, *intervals.before});
    }
    if (intervals.after && end) {
        consider({*intervals.after, *end - *intervals.after, std::nullopt});
    }
    return longest;
}

} // namespace inspect
