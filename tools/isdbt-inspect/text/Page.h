#pragma once

#include "terminal/Line.h"
#include "terminal/Output.h"

#include <vector>

namespace inspect {

/// How much further right stands what belongs to a line.
constexpr std::size_t INDENT = 2;

/// Text that is being written in a style.
struct Page {
    Style style;
    std::vector<Line> lines;
};

/// What leaves enough of a line.
std::size_t widestMargin(const Style& style);

/// Appends a line. Where it has to be broken, it is broken between words if possible.
/// @param indent where it goes on
void appendLine(Page& page, const Line& line, std::size_t indent = 0);

/// Pieces of text in one line: set apart by two blanks, or by one behind a comma or colon.
Line joined(const std::vector<Line>& pieces);

/// Appends such a line. Where it has to be broken, it is broken between them if possible.
/// @param first what stands left of the line
/// @param rest what stands left of the lines on which it goes on
void appendPieces(Page& page, const Line& first, const Line& rest, const std::vector<Line>& pieces);

/// An empty page for what stands right of something.
Page pageBehind(std::size_t cells, const Style& style);

/// Appends such a page.
/// @param first what stands left of its first line
/// @param rest what stands left of all others
void appendPage(Page& page, const Line& first, const Line& rest, const Page& right);

/// What stands above the text of one of several inputs.
std::vector<Line> inputHeading(const std::string& name, const Style& style);

} // namespace inspect
