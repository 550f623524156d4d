#pragma once

#include "text/Page.h"

#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// A column of a table of text.
struct Column {
    enum class Kind {
        Number, ///< stands to the right
        Name,   ///< stands to the left
        Rest    ///< stands to the left; cut where the line ends
    };

    std::string_view qualifier; ///< before the heading, or above it where the line is short: "version"
    std::string_view heading;   ///< "changes"
    Kind kind = Kind::Number;
    bool dispensable = false; ///< left out where the line is too short even so
};

struct Cell {
    std::string text;
    Ink ink = Ink::Plain;
};

using Row = std::vector<Cell>;

/// Appends rows below the headings of their columns, as far apart as the page is wide.
void appendRows(Page& page, std::vector<Column> columns, std::vector<Row> rows);

} // namespace inspect
