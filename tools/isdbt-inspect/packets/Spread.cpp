#include "packets/Spread.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace inspect {

void Spread::take(double exact, const Position& at) {
    Spread one;
    one.m_count = 1;
    one.m_sum = std::llround(exact * STEPS);
    const double seconds = one.sum();
    one.m_minimum = one.m_maximum = seconds;
    one.m_longestAt = at;
    const auto* const bucket = std::lower_bound(BOUNDS.begin(), BOUNDS.end(), seconds);
    one.m_buckets[static_cast<std::size_t>(bucket - BOUNDS.begin())] = 1;
    merge(one);
}

void Spread::merge(const Spread& other) {
    if (other.m_count == 0) {
        return;
    }
    const bool isBefore = other.m_maximum == m_maximum && other.m_longestAt.packet < m_longestAt.packet;
    if (m_count == 0 || other.m_maximum > m_maximum || isBefore) {
        m_longestAt = other.m_longestAt;
    }
    m_minimum = m_count == 0 ? other.m_minimum : std::min(m_minimum, other.m_minimum);
    m_maximum = m_count == 0 ? other.m_maximum : std::max(m_maximum, other.m_maximum);
    m_count += other.m_count;
    m_sum += other.m_sum;
    std::transform(m_buckets.begin(), m_buckets.end(), other.m_buckets.begin(), m_buckets.begin(), std::plus<>());
}

std::optional<double> Spread::mean() const {
    return m_count == 0 ? std::nullopt : std::optional(sum() / static_cast<double>(m_count));
}

std::optional<double> Spread::minimum() const {
    return m_count == 0 ? std::nullopt : std::optional(m_minimum);
}

std::optional<double> Spread::maximum() const {
    return m_count == 0 ? std::nullopt : std::optional(m_maximum);
}

} // namespace inspect
