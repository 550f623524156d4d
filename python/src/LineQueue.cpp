#include "LineQueue.h"

#include <utility>

namespace binding {

namespace {

/// Enough for none to wait for the other at each line.
constexpr std::size_t CAPACITY = std::size_t{1} << 20;

} // namespace

bool LineQueue::put(std::string_view lines) {
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_lines.size() < CAPACITY || m_closed; });
        if (m_closed) {
            return false;
        }
        m_lines += lines;
    }
    m_changed.notify_all();
    return true;
}

void LineQueue::end() {
    {
        const std::lock_guard lock(m_mutex);
        m_ended = true;
    }
    m_changed.notify_all();
}

void LineQueue::close() {
    {
        const std::lock_guard lock(m_mutex);
        m_closed = true;
        m_lines.clear();
    }
    m_changed.notify_all();
}

std::optional<std::string> LineQueue::take(std::chrono::milliseconds patience) {
    std::optional<std::string> taken;
    {
        std::unique_lock lock(m_mutex);
        m_changed.wait_for(lock, patience, [this] { return !m_lines.empty() || m_ended || m_closed; });
        if (!m_closed && !(m_ended && m_lines.empty())) {
            taken = std::exchange(m_lines, {});
        }
    }
    m_changed.notify_all();
    return taken;
}

} // namespace binding
