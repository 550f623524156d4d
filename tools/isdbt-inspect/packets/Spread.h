#pragma once

#include "packets/Position.h"

#include <array>
#include <cstdint>
#include <optional>

namespace inspect {

/// How long something took, each time that it was measured. Two of them merge to that of all measurements,
/// in whatever order.
class Spread {
public:
    /// Upper bounds, in seconds, of the buckets; behind them is one for all that took longer.
    static constexpr std::array<double, 16> BOUNDS{0.01, 0.025, 0.05, 0.1, 0.2, 0.25, 0.4, 0.5,
                                                   0.7,  1,     2,    3,   5,   10,   30,  60};
    using Buckets = std::array<std::uint64_t, BOUNDS.size() + 1>;

    void take(double exact, const Position& at);
    void merge(const Spread& other);

    std::uint64_t count() const { return m_count; }
    double sum() const { return static_cast<double>(m_sum) / STEPS; }
    const Buckets& buckets() const { return m_buckets; } ///< how many fell into each one

    /// Nothing when nothing was measured.
    std::optional<double> mean() const;
    std::optional<double> minimum() const;
    std::optional<double> maximum() const;

    /// Where the longest one ended; of several, the first in the stream.
    const Position& longestAt() const { return m_longestAt; }

private:
    static constexpr double STEPS = 1e6; ///< what is less than a microsecond comes of the arithmetic

    std::uint64_t m_count = 0;
    std::int64_t m_sum = 0; ///< in these steps, so that sums of parts make up that of the whole
    double m_minimum = 0;
    double m_maximum = 0;
    Position m_longestAt;
    Buckets m_buckets{};
};

} // namespace inspect
