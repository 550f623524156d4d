#include "RunningInspection.h"

#include "Inspection.h"
#include "LineQueue.h"

#include <csignal>
#include <unistd.h>
#include <utility>

namespace binding {

namespace py = pybind11;

namespace {

/// How long Ctrl-C may wait.
constexpr std::chrono::milliseconds PATIENCE(100);

constexpr int NO_TERMINAL = -1;

std::optional<inspect::Options> readWords(std::vector<std::string> words) {
    std::optional<inspect::Options> options = inspect::readOptions(std::move(words));
    if (options && options->log) {
        throw inspect::UsageError("--log: what is found goes to the program");
    }
    return options;
}

/// Threads that begin while it lives take no signals: those are for Python's own, which wait for them.
class SignalsKeptAway {
public:
    SignalsKeptAway() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsKeptAway() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsKeptAway(const SignalsKeptAway&) = delete;
    SignalsKeptAway& operator=(const SignalsKeptAway&) = delete;

private:
    sigset_t m_before{};
};

/// Waits without the interpreter's lock. No object gives it back, as a thread that waits may be ended there when the
/// interpreter is, and no destructor may be left so.
template <class Work> auto unlocked(Work work) {
    PyThreadState* const state = PyEval_SaveThread();
    auto result = work();
    PyEval_RestoreThread(state);
    return result;
}

} // namespace

/// What the thread has in hand. When that has ended, it is who waited for lines that forgets it.
struct RunningInspection::Running {
    void run(const inspect::Options& options);

    const inspect::Interruption interruption;
    LineQueue lines;
    int found = inspect::AllWell;
    std::vector<std::string> complaints;
};

void RunningInspection::Running::run(const inspect::Options& options) {
    try {
        const auto sink = std::make_shared<inspect::Sink>([this](std::string_view piece) { return lines.put(piece); });
        inspect::ProgressLine progress(NO_TERMINAL);
        inspect::Inspection inspection(options, interruption, sink, progress,
                                       [this](const std::string& message) { complaints.push_back(message); });
        found = inspection.run();
    } catch (const inspect::OutputClosed&) {
        complaints.clear(); // whoever closed it wants to hear no more
    } catch (const std::exception& error) {
        complaints.emplace_back(error.what());
        found = inspect::InputUnreadable;
    }
    lines.end();
}

RunningInspection::RunningInspection(std::vector<std::string> words) : m_options(readWords(std::move(words))) {}

void RunningInspection::begin() {
    m_running = std::make_shared<Running>();
    m_process = getpid();
    const SignalsKeptAway keptAway;
    m_thread = std::thread([this, running = m_running.get()] { running->run(*m_options); });
}

/// @return false when there are no more lines.
bool RunningInspection::fetch() {
    if (m_hasEnded || !m_options) {
        return false;
    }
    if (!m_running) {
        begin();
    }
    const std::optional<std::string> lines = unlocked([running = m_running] { return running->lines.take(PATIENCE); });
    m_batch = m_batch.substr(m_at) + lines.value_or("");
    m_at = 0;
    if (PyErr_CheckSignals() != 0) {
        const py::error_already_set error;
        close();
        throw py::error_already_set(error);
    }
    return lines.has_value();
}

py::str RunningInspection::nextLine() {
    std::size_t end = m_batch.find('\n', m_at);
    while (end == std::string::npos) {
        if (!fetch()) {
            tellHowItEnded();
            throw py::stop_iteration();
        }
        end = m_batch.find('\n', m_at);
    }
    const char* const line = m_batch.data() + std::exchange(m_at, end + 1);
    PyObject* const text = PyUnicode_DecodeUTF8(line, static_cast<Py_ssize_t>(m_batch.data() + end - line), "replace");
    if (text == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::str>(text);
}

void RunningInspection::tellHowItEnded() {
    if (std::exchange(m_hasEnded, true) || !m_options) {
        return;
    }
    const std::shared_ptr<const Running> running = std::exchange(m_running, nullptr);
    join();
    m_status = running->found;
    std::string complaints;
    for (const std::string& complaint : running->complaints) {
        complaints += (complaints.empty() ? "" : "\n") + complaint;
    }
    if (m_status == inspect::InputUnreadable) {
        throw InspectionError(complaints);
    }
    if (!complaints.empty() && PyErr_WarnEx(nullptr, complaints.c_str(), 1) != 0) {
        throw py::error_already_set();
    }
}

void RunningInspection::close() {
    m_hasEnded = true;
    m_batch.clear();
    m_at = 0;
    if (m_thread.joinable() && m_process != getpid()) {
        m_thread.detach(); // a process that was forked off has none of the threads
    } else if (const std::shared_ptr<Running> running = std::exchange(m_running, nullptr)) {
        running->lines.close();
        running->interruption.interrupt();
        join();
    }
}

/// Another thread may be doing it.
void RunningInspection::join() {
    if (m_thread.joinable()) {
        std::thread thread = std::move(m_thread);
        unlocked([&thread] {
            thread.join();
            return true;
        });
    }
}

} // namespace binding
