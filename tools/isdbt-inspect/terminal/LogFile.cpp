#include "terminal/LogFile.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <string_view>
#include <unistd.h>

namespace inspect {

namespace {

constexpr std::string_view KEPT = "isdbt-inspect: the log cannot be opened anew; the old file is written on\n";

std::string logPath;
volatile std::sig_atomic_t logDescriptor = -1;

int openLog() {
    constexpr mode_t MODE = 0666; // less what the user's mask takes away
    return open(logPath.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, MODE);
}

/// The new file takes the place of the old one at once, so that whoever writes notices nothing.
extern "C" void reopenLog(int /*signal*/) {
    const int errorBefore = errno;
    const int fresh = openLog();
    if (fresh < 0 || dup3(fresh, logDescriptor, O_CLOEXEC) < 0) {
        [[maybe_unused]] const ssize_t count = write(STDERR_FILENO, KEPT.data(), KEPT.size());
    }
    close(fresh);
    errno = errorBefore;
}

} // namespace

LogFile::LogFile(const std::string& path) {
    logPath = path;
    m_descriptor = openLog();
    if (m_descriptor < 0) {
        throw std::runtime_error(path + ": " + std::strerror(errno));
    }
    logDescriptor = m_descriptor;
    struct sigaction action {};
    action.sa_handler = reopenLog;
    action.sa_flags = SA_RESTART;
    sigaction(SIGUSR1, &action, nullptr);
}

LogFile::~LogFile() {
    std::signal(SIGUSR1, SIG_IGN);
    close(m_descriptor);
}

} // namespace inspect
