#pragma once

#include "terminal/ProgressLine.h"

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// The reader of the output went away.
struct OutputClosed : std::exception {};

/// Where all output goes: a file descriptor, that of a pipe perhaps, which is read as the stream comes in; or who else
/// takes it. Threads write to it a whole piece at a time.
class Sink {
public:
    /// Takes a piece. @return false when no more is wanted.
    using Taker = std::function<bool(std::string_view piece)>;

    /// @param name for when it cannot be written to
    /// @param progress gives way when the output is on a terminal, as it is on one; may be null
    explicit Sink(int descriptor, std::string name = "standard output", ProgressLine* progress = nullptr);

    explicit Sink(Taker taker) : m_taker(std::move(taker)) {}

    /// A signal often ends the reader of a pipe, too. What is written when @p ended says that one came goes to standard
    /// error when nobody reads it any more, so that no result is lost.
    void rescueOnce(std::function<bool()> ended) { m_ended = std::move(ended); }

    /// Whether something was not read by whom it was meant for.
    bool hasRescued() const { return m_hasRescued; }

    /// None, which is no terminal's, when the output goes elsewhere.
    int descriptor() const { return m_descriptor; }

    /// @param heading stands before pieces that have another one than those before; may be null
    /// @throws OutputClosed, or std::runtime_error when it cannot be written otherwise.
    void write(const std::shared_ptr<const std::string>& heading, std::string_view text);

private:
    std::unique_lock<std::mutex> clearTerminal() const;
    bool put(std::string_view text) const;
    bool isRead();
    void rescue(std::string_view text);

    std::mutex m_mutex;
    Taker m_taker;
    int m_descriptor = -1;
    std::string m_name;
    ProgressLine* m_progress = nullptr;
    std::shared_ptr<const std::string> m_heading;
    std::function<bool()> m_ended;
    std::optional<std::chrono::steady_clock::time_point> m_patience; ///< when it ends with a reader who does not read
    bool m_isClosed = false;
    bool m_hasRescued = false;
};

} // namespace inspect
