#pragma once

#include "terminal/ProgressLine.h"

#include <stdexcept>
#include <string_view>

namespace inspect {

/// The reader of the output went away.
struct OutputClosed : std::exception {};

/// Writes to a file descriptor, at once: the output may be a pipe that is read as the stream comes in.
class Output {
public:
    /// @param progress gives way when the output is on a terminal
    explicit Output(int descriptor, ProgressLine* progress = nullptr);

    /// @throws OutputClosed, or std::runtime_error when it cannot be written otherwise.
    void write(std::string_view text) const;

private:
    int m_descriptor;
    ProgressLine* m_progress; ///< null when it is not in the way
};

} // namespace inspect
