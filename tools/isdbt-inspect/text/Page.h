#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace inspect {

/// How text looks: a colour on a terminal that has them, and the same text without.
enum class Ink { Plain, Heading, Name, Remark, Good, Fault };

/// What text is written for.
struct Style {
    static constexpr std::size_t USUAL_WIDTH = 100;

    std::size_t width = USUAL_WIDTH; ///< lines longer than this are avoided
    bool wraps = false;              ///< those that are longer for all that are broken at blanks
    bool colour = false;
    bool namesInputs = false; ///< there are several
    bool full = false;        ///< with all that the tables say

    std::string paint(Ink ink, std::string_view text) const;
};

/// Text that is being written in a style.
struct Page {
    Style style;
    std::string text;
};

/// Appends a line, and a line feed.
/// @param indent where it goes on when it has to be broken
void appendLine(Page& page, std::string_view line, std::size_t indent);

/// What stands above the text of one of several inputs.
std::string inputHeading(const std::string& name, const Style& style);

/// The columns that a text takes on a terminal. Colours take none.
std::size_t columns(std::string_view text);

/// Fills up with blanks.
std::string padded(const std::string& text, std::size_t width);

} // namespace inspect
