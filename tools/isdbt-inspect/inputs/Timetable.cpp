#include "inputs/Timetable.h"

#include <cmath>

namespace inspect {

bool Timetable::isInterimDue(double now) {
    if (!m_next || now < *m_next) {
        return false;
    }
    constexpr double MINUTE = 60;
    // Those that a jump of the time left out are not made up for.
    m_next = m_times.every ? (std::floor(now / *m_times.every) + 1) * *m_times.every : now + std::min(now, MINUTE);
    return true;
}

std::optional<Silence> SilenceWatch::look(double now, bool came) {
    const double seconds = now - m_last;
    m_last = came ? now : m_last;
    const bool isNews = came ? m_isSilent : !m_isSilent && seconds >= m_limit;
    if (!isNews) {
        return std::nullopt;
    }
    m_isSilent = !came;
    return Silence{seconds, came, std::time(nullptr)};
}

} // namespace inspect
