#pragma once

#include "Options.h"

#include <memory>
#include <optional>
#include <pybind11/pybind11.h>
#include <stdexcept>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace binding {

/// The input could not be read to its end.
struct InspectionError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// An inspection in a thread of its own, which knows nothing of Python. It begins when its first line is asked for.
/// What has to do with Python's objects is called by who holds the interpreter's lock; where it waits, it lets go of
/// it.
class RunningInspection {
public:
    /// @param words of the command line
    /// @throws inspect::UsageError
    explicit RunningInspection(std::vector<std::string> words);

    /// Ends it, if it is not over yet.
    ~RunningInspection() { close(); }
    RunningInspection(const RunningInspection&) = delete;
    RunningInspection& operator=(const RunningInspection&) = delete;

    /// Waits for it.
    /// @throws pybind11::stop_iteration, InspectionError
    pybind11::str nextLine();

    /// Ends it, at once.
    void close();

    /// The exit status that the tool would have; nothing while it goes on, and when it was closed.
    std::optional<int> status() const { return m_status; }

private:
    struct Running;

    void begin();
    bool fetch();
    void tellHowItEnded();
    void join();

    const std::optional<inspect::Options> m_options; ///< nothing when help was asked for
    std::shared_ptr<Running> m_running;              ///< null before it begins, and when it has ended
    std::thread m_thread;
    pid_t m_process = 0; ///< that the thread is of
    bool m_hasEnded = false;
    std::string m_batch; ///< lines that are here
    std::size_t m_at = 0;
    std::optional<int> m_status;
};

} // namespace binding
