#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace binding {

/// Lines on their way from the thread that inspects to who reads them, which may be slower: it waits then.
class LineQueue {
public:
    /// Waits for room. @return false when no more are wanted.
    bool put(std::string_view lines);

    /// No more come.
    void end();

    /// No more are wanted.
    void close();

    /// Waits for lines, but no longer than that.
    /// @return all that wait; nothing when none will come any more
    std::optional<std::string> take(std::chrono::milliseconds patience);

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_lines;
    bool m_ended = false;
    bool m_closed = false;
};

} // namespace binding
