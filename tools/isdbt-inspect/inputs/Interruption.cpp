#include "inputs/Interruption.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace inspect {

namespace {

constexpr std::array SIGNALS{SIGINT, SIGTERM, SIGHUP};

constexpr std::int64_t SECOND = 1'000'000'000;

/// The end of the pipe that the signal handler writes to.
std::atomic<int> writeEnd{-1};

/// When the first signal came, in nanoseconds; 0 while none has. Any thread may be given one.
std::atomic<std::int64_t> firstSignal{0};
static_assert(std::atomic<std::int64_t>::is_always_lock_free);

std::int64_t now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t{time.tv_sec} * SECOND + time.tv_nsec;
}

void writeTo(int pipe) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t count = write(pipe, &byte, 1);
}

extern "C" void takeSignal(int signal) {
    const int errorBefore = errno;
    std::int64_t first = 0;
    if (firstSignal.compare_exchange_strong(first, now())) {
        writeTo(writeEnd);
    } else if (now() - first >= SECOND) {
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
    errno = errorBefore;
}

} // namespace

Interruption::Interruption() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    m_readEnd = ends[0];
    m_writeEnd = writeEnd = ends[1];
    for (const int signal : SIGNALS) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        // Who started the program in the background may not want it to be interrupted.
        if (action.sa_handler != SIG_IGN) {
            action.sa_handler = takeSignal;
            action.sa_flags = SA_RESTART;
            sigaction(signal, &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    for (const int signal : SIGNALS) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == takeSignal) {
            std::signal(signal, SIG_DFL);
        }
    }
    close(m_readEnd);
    close(m_writeEnd);
}

void Interruption::interrupt() const {
    writeTo(m_writeEnd);
}

bool Interruption::happened() const {
    pollfd readable{m_readEnd, POLLIN, 0};
    return poll(&readable, 1, 0) > 0;
}

bool Interruption::wasSignalled() {
    return firstSignal != 0;
}

} // namespace inspect
