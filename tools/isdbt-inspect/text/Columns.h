#pragma once

#include "text/Page.h"

#include <limits>
#include <string_view>
#include <vector>

namespace inspect {

/// A column of a table of text.
struct Column {
    enum class Kind {
        Number, ///< stands to the right
        Name,   ///< stands to the left
        Rest    ///< stands to the left, the last one; cut where the line ends
    };

    std::string_view qualifier; ///< before the heading, or above it where the line is short: "version"
    std::string_view heading;   ///< "changes"
    Kind kind = Kind::Number;
    unsigned dispensable = 0; ///< where the line is too short even so, what has most of this is left out first
};

using Row = std::vector<Line>;

/// Rows with their cells below each other.
class Grid {
public:
    /// @param widest cells of a name that make its column wider; longer ones stand out from it
    Grid(std::vector<Column::Kind> kinds, std::vector<Row> rows,
         std::size_t widest = std::numeric_limits<std::size_t>::max());

    std::size_t width(std::size_t gap) const;

    /// The same when all is cut that may be.
    std::size_t leastWidth(std::size_t gap) const;

    void append(Page& page, std::size_t gap, std::size_t indent = 0) const;

private:
    std::vector<Column::Kind> m_kinds;
    std::vector<Row> m_rows;
    std::vector<std::size_t> m_widths;
};

/// Appends rows below the headings of their columns, as far apart as the page is wide.
void appendRows(Page& page, std::vector<Column> columns, std::vector<Row> rows);

} // namespace inspect
