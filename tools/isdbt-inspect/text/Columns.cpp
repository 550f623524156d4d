#include "text/Columns.h"

#include <algorithm>
#include <numeric>

namespace inspect {

namespace {

constexpr std::size_t NARROWEST_GAP = 1;
constexpr std::size_t USUAL_GAP = 2;
constexpr std::size_t WIDEST_GAP = 3;

/// Leaves the end out of what does not fit.
Line cut(const Line& text, std::size_t room) {
    constexpr std::string_view CUT = "...";
    return text.cells() <= room ? text : text.part(0, text.bytesWithin(std::max(room, CUT.size()) - CUT.size())) + CUT;
}

/// Rows below those of the headings: one, or two when qualifiers stand above.
Grid gridOf(const std::vector<Column>& columns, bool stacked, std::vector<Row> rows) {
    Row above;
    Row below;
    std::vector<Column::Kind> kinds;
    for (const Column& column : columns) {
        const std::string qualifier(column.qualifier);
        const std::string before = stacked || qualifier.empty() ? "" : qualifier + ' ';
        above.emplace_back(qualifier, Ink::Heading);
        below.emplace_back(before + std::string(column.heading), Ink::Heading);
        kinds.push_back(column.kind);
    }
    rows.insert(rows.begin(), std::move(below));
    if (stacked && !std::all_of(above.begin(), above.end(), [](const Line& each) { return each.empty(); })) {
        rows.insert(rows.begin(), std::move(above));
    }
    return {std::move(kinds), std::move(rows)};
}

} // namespace

Grid::Grid(std::vector<Column::Kind> kinds, std::vector<Row> rows, std::size_t widest)
    : m_kinds(std::move(kinds)), m_rows(std::move(rows)), m_widths(m_kinds.size()) {
    for (const Row& row : m_rows) {
        for (std::size_t at = 0; at < row.size(); ++at) {
            const std::size_t cells = row[at].cells();
            const bool standsOut = m_kinds[at] == Column::Kind::Name && cells > widest;
            m_widths[at] = standsOut ? m_widths[at] : std::max(cells, m_widths[at]);
        }
    }
}

std::size_t Grid::width(std::size_t gap) const {
    return std::accumulate(m_widths.begin(), m_widths.end(), gap * (m_widths.size() - 1));
}

std::size_t Grid::leastWidth(std::size_t gap) const {
    constexpr std::size_t WORD = 12; // no more is needed of what may be cut
    const bool canBeCut = m_kinds.back() == Column::Kind::Rest && m_widths.back() > WORD;
    return width(gap) - (canBeCut ? m_widths.back() - WORD : 0);
}

void Grid::append(Page& page, std::size_t gap, std::size_t indent) const {
    for (const Row& row : m_rows) {
        Line line;
        std::size_t begin = indent; // of the cell
        for (std::size_t at = 0; at < row.size(); ++at) {
            const std::size_t room = page.style.width - std::min(page.style.width, begin);
            const Line cell = m_kinds[at] == Column::Kind::Rest ? cut(row[at], room) : row[at];
            const std::size_t left = m_kinds[at] == Column::Kind::Number ? m_widths[at] - cell.cells() : 0;
            const std::size_t behind = line.empty() ? 0 : line.cells() + gap; // of a name that stands out
            line = cell.empty() ? line : padded(std::move(line), std::max(begin + left, behind)) + cell;
            begin += m_widths[at] + gap;
        }
        appendLine(page, line, indent);
    }
}

void appendRows(Page& page, std::vector<Column> columns, std::vector<Row> rows) {
    const bool stacked = gridOf(columns, false, rows).leastWidth(USUAL_GAP) > page.style.width;
    Grid grid = gridOf(columns, stacked, rows);
    while (grid.leastWidth(NARROWEST_GAP) > page.style.width) {
        const auto last =
            std::max_element(columns.rbegin(), columns.rend(), [](const Column& one, const Column& other) {
                return one.dispensable < other.dispensable;
            });
        if (last->dispensable == 0) {
            break;
        }
        const auto at = std::distance(last, columns.rend()) - 1;
        columns.erase(columns.begin() + at);
        for (Row& row : rows) {
            row.erase(row.begin() + at);
        }
        grid = gridOf(columns, stacked, rows);
    }
    std::size_t gap = WIDEST_GAP;
    while (gap > NARROWEST_GAP && grid.width(gap) > page.style.width) {
        --gap;
    }
    grid.append(page, gap);
}

} // namespace inspect
