#include "Running.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

/// Far more than anything takes, on a machine that is busy.
constexpr auto PATIENCE = 30s;

struct Ends {
    int readEnd;
    int writeEnd;
};

Ends makePipe() {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    return {ends[0], ends[1]};
}

/// A terminal of 80 columns. The end on which a program reads and writes comes second.
Ends makeTerminal() {
    const winsize size{24, 80, 0, 0};
    Ends ends{};
    if (openpty(&ends.readEnd, &ends.writeEnd, nullptr, nullptr, &size) != 0) {
        throw std::runtime_error("no terminal");
    }
    fcntl(ends.readEnd, F_SETFD, FD_CLOEXEC);
    fcntl(ends.writeEnd, F_SETFD, FD_CLOEXEC);
    return ends;
}

} // namespace

Running::Running(const std::vector<std::string>& arguments, On on) {
    std::signal(SIGPIPE, SIG_IGN);
    const Ends input = makePipe();
    const Ends output = on == On::Terminal ? makeTerminal() : makePipe();
    const int errors =
        on == On::Terminal ? dup(output.writeEnd) : open(m_errors.path().c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
    std::vector<std::string> words = commandOf(INSPECT_PROGRAM, arguments);
    std::vector<char*> argv;
    std::transform(words.begin(), words.end(), std::back_inserter(argv), [](std::string& word) { return word.data(); });
    argv.push_back(nullptr);

    m_child = fork();
    if (m_child == 0) {
        dup2(input.readEnd, STDIN_FILENO);
        dup2(output.writeEnd, STDOUT_FILENO);
        dup2(errors, STDERR_FILENO);
        execvp(argv.front(), argv.data());
        _exit(127);
    }
    close(input.readEnd);
    close(output.writeEnd);
    close(errors);
    m_input = input.writeEnd;
    m_outputEnd = output.readEnd;
}

Running::~Running() {
    if (m_child != 0) {
        kill(m_child, SIGKILL);
        finish();
    }
    endInput();
    closeOutput();
}

void Running::closeOutput() {
    if (m_outputEnd >= 0) {
        close(m_outputEnd);
        m_outputEnd = -1;
    }
}

void Running::write(const ByteVector& bytes) const {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t count = ::write(m_input, bytes.data() + at, bytes.size() - at);
        if (count < 0) {
            return;
        }
        at += static_cast<std::size_t>(count);
    }
}

void Running::endInput() {
    if (m_input >= 0) {
        close(m_input);
        m_input = -1;
    }
}

bool Running::waitFor(const std::string& text) {
    while (m_output.find(text) == std::string::npos) {
        if (!readOutput(PATIENCE)) {
            return false;
        }
    }
    return true;
}

/// @return false at the end, and when nothing comes.
bool Running::readOutput(std::chrono::milliseconds patience) {
    pollfd readable{m_outputEnd, POLLIN, 0};
    std::array<char, 65536> buffer{};
    if (m_outputEnd < 0 || poll(&readable, 1, static_cast<int>(patience.count())) <= 0) {
        return false;
    }
    const ssize_t count = read(m_outputEnd, buffer.data(), buffer.size());
    m_output.append(buffer.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    return count > 0;
}

bool Running::waitUntilBlocked() const {
    const std::string process = "/proc/" + std::to_string(m_child);
    pollfd output{open((process + "/fd/1").c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC), POLLOUT, 0};
    bool blocked = false;
    for (auto waited = 0ms; !blocked && waited < PATIENCE; waited += 1ms) {
        std::this_thread::sleep_for(1ms);
        blocked = poll(&output, 1, 0) == 0 && readText(process + "/stat").find(") S ") != std::string::npos;
    }
    close(output.fd);
    return blocked;
}

bool Running::waitUntilCatching(int number) const {
    const std::string status = "/proc/" + std::to_string(m_child) + "/status";
    const std::string label = "SigCgt:\t";
    bool catches = false;
    for (auto waited = 0ms; !catches && waited < PATIENCE; waited += 1ms) {
        std::this_thread::sleep_for(1ms);
        const std::string text = readText(status);
        const std::size_t at = text.find(label);
        const std::string caught = at == std::string::npos ? "0" : text.substr(at + label.size(), 16);
        catches = (std::stoull(caught, nullptr, 16) >> static_cast<unsigned>(number - 1) & 1U) != 0;
    }
    return catches;
}

void Running::signal(int number) const {
    kill(m_child, number);
}

Finished Running::finish() {
    while (readOutput(PATIENCE)) {
    }
    int status = 0;
    rusage usage{};
    // Its output has ended, so it is about to end itself, or never will.
    for (int round = 0; wait4(m_child, &status, WNOHANG, &usage) == 0; ++round) {
        std::this_thread::sleep_for(1ms);
        if (round == 10000) {
            kill(m_child, SIGKILL);
        }
    }
    m_child = 0;
    m_memory = static_cast<std::size_t>(usage.ru_maxrss) * 1024;
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, m_output, readText(m_errors.path())};
}
