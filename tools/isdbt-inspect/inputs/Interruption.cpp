#include "inputs/Interruption.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <system_error>
#include <unistd.h>

namespace inspect {

namespace {

constexpr std::array SIGNALS{SIGINT, SIGTERM};

/// The end of the pipe that the signal handler writes to.
volatile std::sig_atomic_t writeEnd = -1;

extern "C" void writeToPipe(int /*signal*/) {
    const int errorBefore = errno;
    const char byte = 0;
    [[maybe_unused]] const ssize_t count = write(writeEnd, &byte, 1);
    errno = errorBefore;
}

} // namespace

Interruption::Interruption() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        throw std::system_error(errno, std::generic_category(), "pipe");
    }
    m_readEnd = ends[0];
    writeEnd = ends[1];
    for (const int signal : SIGNALS) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        // Who started the program in the background may not want it to be interrupted.
        if (action.sa_handler != SIG_IGN) {
            action.sa_handler = writeToPipe;
            action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
            sigaction(signal, &action, nullptr);
        }
    }
}

Interruption::~Interruption() {
    for (const int signal : SIGNALS) {
        struct sigaction action {};
        sigaction(signal, nullptr, &action);
        if (action.sa_handler == writeToPipe) {
            std::signal(signal, SIG_DFL);
        }
    }
    close(m_readEnd);
    close(writeEnd);
}

bool Interruption::happened() const {
    pollfd readable{m_readEnd, POLLIN, 0};
    return poll(&readable, 1, 0) > 0;
}

} // namespace inspect
