#include "terminal/Sink.h"

#include <cerrno>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace inspect {

namespace {

using namespace std::chrono_literals;

/// A pager may not read on.
constexpr auto PATIENCE = 1s;

constexpr int INTERVAL = 10; // milliseconds

constexpr std::string_view RESCUED =
    "isdbt-inspect: nobody reads the output any more; what is left of it follows here\n";

bool isPipe(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

Sink::Sink(int descriptor, std::string name, ProgressLine* progress)
    : m_descriptor(descriptor), m_name(std::move(name)), m_progress(progress) {}

void Sink::write(const std::shared_ptr<const std::string>& heading, std::string_view text) {
    const std::lock_guard lock(m_mutex);
    std::string headed;
    if (heading != nullptr && heading != m_heading) {
        m_heading = heading;
        text = headed = *heading + std::string(text);
    }
    if (m_isClosed) {
        throw OutputClosed();
    }
    const auto cleared = clearTerminal();
    const bool wasPut = m_taker ? m_taker(text) : put(text);
    const bool hasEnded = m_ended && m_ended();
    if (wasPut && (!hasEnded || isRead())) {
        return;
    }
    if (!hasEnded || m_hasRescued) {
        m_isClosed = true;
        throw OutputClosed();
    }
    rescue(text);
}

/// Has the progress make room while the lock is held.
std::unique_lock<std::mutex> Sink::clearTerminal() const {
    return m_progress != nullptr && isatty(m_descriptor) == 1 ? m_progress->erase() : std::unique_lock<std::mutex>();
}

/// @return false when the reader went away.
bool Sink::put(std::string_view text) const {
    while (!text.empty()) {
        const ssize_t count = ::write(m_descriptor, text.data(), text.size());
        if (count >= 0) {
            text.remove_prefix(static_cast<std::size_t>(count));
        } else if (errno == EPIPE) {
            return false;
        } else if (errno != EINTR) {
            throw std::runtime_error(m_name + ": " + std::strerror(errno));
        }
    }
    return true;
}

/// Whether the reader of a pipe takes all. One that the same signal ends may go before.
bool Sink::isRead() {
    if (!isPipe(m_descriptor)) {
        return true;
    }
    const auto now = [] { return std::chrono::steady_clock::now(); };
    m_patience = m_patience.value_or(now() + PATIENCE);
    int left = 0;
    while (ioctl(m_descriptor, FIONREAD, &left) == 0 && left != 0 && now() < *m_patience) {
        pollfd reader{m_descriptor, 0, 0};
        if (poll(&reader, 1, INTERVAL) > 0) {
            return false;
        }
    }
    return true;
}

void Sink::rescue(std::string_view text) {
    m_hasRescued = true;
    m_descriptor = STDERR_FILENO;
    const auto cleared = clearTerminal();
    put(RESCUED);
    put(text);
}

} // namespace inspect
