#pragma once

#include "terminal/Line.h"
#include "terminal/Sink.h"

#include <memory>
#include <optional>
#include <string_view>
#include <vector>

namespace inspect {

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

/// Whether the reader of what is written there may end before it comes: who sits at a terminal ends all of a pipe with
/// Ctrl-C.
bool mayEndBefore(int descriptor);

/// Writes what is shown of an input, at once.
class Output {
public:
    /// @param sink which other inputs may be written to, too, at the same time
    explicit Output(std::shared_ptr<Sink> sink, Colour colour = Colour::Auto);
    explicit Output(int descriptor, Colour colour = Colour::Auto)
        : Output(std::make_shared<Sink>(descriptor), colour) {}

    /// An input begins.
    /// @param heading stands above the first that is written of it, and wherever it goes on behind another one
    void begin(const std::vector<Line>& heading);

    /// @throws OutputClosed, or std::runtime_error when it cannot be written otherwise.
    void write(std::string_view text) const { m_sink->write(m_heading, text); }
    void write(const std::vector<Line>& lines) const { write(textOf(lines)); }

    /// What was made of Colour::Auto.
    Colour colour() const { return m_hasColours ? Colour::Always : Colour::Never; }

private:
    std::string textOf(const std::vector<Line>& lines) const;

    std::shared_ptr<Sink> m_sink;
    bool m_hasColours;
    std::shared_ptr<const std::string> m_heading;
};

} // namespace inspect
