#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <mutex>
#include <optional>
#include <string>

namespace inspect {

/// "42 %  512.3 MB/s  0:12 left"
std::string progressText(std::uint64_t done, std::uint64_t total, double seconds);

/// "0:12  15.3 MB  10.2 Mbit/s", of what has no end
std::string progressText(std::uint64_t done, double seconds);

/// A line on a terminal that says how far the input is read. It is shown for what takes long only, and goes before
/// anything else is written. Threads may share it.
class ProgressLine {
public:
    /// @param descriptor where it is shown, if that is a terminal
    explicit ProgressLine(int descriptor);
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// Work of so many bytes begins; without their number nothing is shown.
    void expect(std::optional<std::uint64_t> bytes);

    /// Work without an end begins: what came so far is shown.
    void follow();

    /// So many of them are done.
    void advance(std::uint64_t bytes);

    /// @return nothing is shown while this is held.
    std::unique_lock<std::mutex> erase();

private:
    using Clock = std::chrono::steady_clock;

    void begin();
    void show(const std::string& text);

    int m_descriptor;
    bool m_isTerminal;
    std::mutex m_mutex;
    bool m_isEndless = false;
    std::optional<std::uint64_t> m_total;
    std::atomic<std::uint64_t> m_done = 0;
    Clock::time_point m_begin;
    Clock::time_point m_next; ///< when it may be shown again
    std::size_t m_width = 0;  ///< of what is shown
};

} // namespace inspect
