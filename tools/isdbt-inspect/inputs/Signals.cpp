#include "inputs/Signals.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>

namespace inspect {

namespace {

constexpr std::array TAKEN{SIGINT, SIGTERM, SIGHUP};

constexpr std::int64_t SECOND = 1'000'000'000;

std::atomic<const Interruption*> interrupted{nullptr};
static_assert(std::atomic<const Interruption*>::is_always_lock_free);

/// When the first signal came, in nanoseconds; 0 while none has. Any thread may be given one.
std::atomic<std::int64_t> firstSignal{0};
static_assert(std::atomic<std::int64_t>::is_always_lock_free);

std::int64_t now() {
    timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return std::int64_t{time.tv_sec} * SECOND + time.tv_nsec;
}

extern "C" void takeSignal(int signal) {
    const int errorBefore = errno;
    std::int64_t first = 0;
    if (firstSignal.compare_exchange_strong(first, now())) {
        interrupted.load()->interrupt();
    } else if (now() - first >= SECOND) {
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
    errno = errorBefore;
}

} // namespace

Signals::Signals(const Interruption& interruption) {
    interrupted = &interruption;
    for (const int signal : TAKEN) {
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

Signals::~Signals() {
    for (const int signal : TAKEN) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == takeSignal) {
            std::signal(signal, SIG_DFL);
        }
    }
}

bool Signals::came() {
    return firstSignal != 0;
}

} // namespace inspect
