#pragma once

#include "terminal/Line.h"
#include "terminal/ProgressLine.h"

#include <optional>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace inspect {

/// The reader of the output went away.
struct OutputClosed : std::exception {};

/// What the user says of colours. Auto leaves it to the terminal: there are colours on one, unless NO_COLOR is set or
/// it is a dumb one.
enum class Colour { Auto, Always, Never };

/// What text is written for.
struct Style {
    static constexpr std::size_t USUAL_WIDTH = 100;

    std::size_t width = USUAL_WIDTH; ///< lines longer than this are avoided
    bool wraps = false;              ///< those that are longer for all that are broken
    bool namesInputs = false;        ///< there are several
    bool full = false;               ///< with all that the tables say
};

/// How text looks best on a file descriptor. A terminal has its width.
/// @param width what the user says of it, if anything
Style styleFor(int descriptor, std::optional<std::size_t> width);

/// Writes to a file descriptor, at once: the output may be a pipe that is read as the stream comes in.
class Output {
public:
    /// @param progress gives way when the output is on a terminal
    explicit Output(int descriptor, Colour colour = Colour::Auto, ProgressLine* progress = nullptr);

    /// @throws OutputClosed, or std::runtime_error when it cannot be written otherwise.
    void write(std::string_view text) const;
    void write(const std::vector<Line>& lines) const;

private:
    int m_descriptor;
    bool m_hasColours;
    ProgressLine* m_progress; ///< null when it is not in the way
};

} // namespace inspect
