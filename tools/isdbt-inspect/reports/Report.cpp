#include "reports/Report.h"

#include <fmt/format.h>

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

std::uint64_t countOf(const Summary& summary, Damage damage) {
    std::uint64_t count = 0;
    for (const Finding& finding : summary.damages) {
        count += finding.damage == damage ? finding.count : 0;
    }
    return count;
}

std::string counted(std::uint64_t count, std::string_view singular, std::string_view plural) {
    return fmt::format("{} {}", count, count == 1 ? singular : plural);
}

} // namespace inspect
