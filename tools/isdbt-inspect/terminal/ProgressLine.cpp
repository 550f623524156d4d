#include "terminal/ProgressLine.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <unistd.h>

namespace inspect {

namespace {

using namespace std::chrono_literals;

/// Nobody waits for what is done by then.
constexpr auto PATIENCE = 500ms;

constexpr auto INTERVAL = 200ms;

/// "0:07", "1:02:03"
std::string durationText(long long seconds) {
    const long long minutes = seconds / 60;
    return minutes < 60 ? fmt::format("{}:{:02}", minutes, seconds % 60)
                        : fmt::format("{}:{:02}:{:02}", minutes / 60, minutes % 60, seconds % 60);
}

} // namespace

std::string progressText(std::uint64_t done, std::uint64_t total, double seconds) {
    done = std::min(done, total); // a file may grow while it is read
    const std::uint64_t part = total == 0 ? 100 : done * 100 / total;
    const double left = done == 0 ? 0 : seconds * static_cast<double>(total - done) / static_cast<double>(done);
    return fmt::format("{} %  {:.1f} MB/s  {} left", part, static_cast<double>(done) / 1e6 / seconds,
                       durationText(std::llround(left)));
}

std::string progressText(std::uint64_t done, double seconds) {
    constexpr double BITS = 8;
    const double megabytes = static_cast<double>(done) / 1e6;
    return fmt::format("{}  {:.1f} MB  {:.1f} Mbit/s", durationText(std::llround(seconds)), megabytes,
                       megabytes * BITS / seconds);
}

ProgressLine::ProgressLine(int descriptor) : m_descriptor(descriptor), m_isTerminal(isatty(descriptor) == 1) {}

ProgressLine::~ProgressLine() {
    erase();
}

void ProgressLine::expect(std::optional<std::uint64_t> bytes) {
    m_total = bytes;
    begin();
}

void ProgressLine::follow() {
    m_isEndless = true;
    begin();
}

void ProgressLine::begin() {
    m_done = 0;
    m_begin = Clock::now();
    m_next = m_begin + PATIENCE;
}

void ProgressLine::advance(std::uint64_t bytes) {
    m_done += bytes;
    const std::unique_lock lock(m_mutex, std::try_to_lock);
    if (!m_isTerminal || (!m_total && !m_isEndless) || !lock) {
        return;
    }
    const Clock::time_point now = Clock::now();
    if (now >= m_next) {
        m_next = now + INTERVAL;
        const double seconds = std::chrono::duration<double>(now - m_begin).count();
        show(m_isEndless ? progressText(m_done, seconds) : progressText(m_done, *m_total, seconds));
    }
}

// Blanks erase on any terminal.
void ProgressLine::show(const std::string& text) {
    const std::string line = '\r' + text + std::string(m_width - std::min(m_width, text.size()), ' ');
    m_width = text.size();
    [[maybe_unused]] const ssize_t count = write(m_descriptor, line.data(), line.size());
}

std::unique_lock<std::mutex> ProgressLine::erase() {
    std::unique_lock lock(m_mutex);
    if (m_width != 0) {
        const std::string line = '\r' + std::string(m_width, ' ') + '\r';
        m_width = 0;
        [[maybe_unused]] const ssize_t count = write(m_descriptor, line.data(), line.size());
    }
    return lock;
}

} // namespace inspect
