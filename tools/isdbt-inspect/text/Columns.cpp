#include "text/Columns.h"

#include <algorithm>
#include <numeric>

namespace inspect {

namespace {

constexpr std::size_t NARROWEST_GAP = 1;
constexpr std::size_t USUAL_GAP = 2;
constexpr std::size_t WIDEST_GAP = 3;
constexpr std::size_t WORD = 12;
constexpr std::string_view CUT = "...";

std::string heading(const Column& column) {
    return std::string(column.qualifier) + (column.qualifier.empty() ? "" : " ") + std::string(column.heading);
}

/// The rows of the headings: one, or two when qualifiers stand above.
std::vector<Row> headings(const std::vector<Column>& titles, bool stacked) {
    Row above;
    Row below;
    for (const Column& title : titles) {
        above.push_back({std::string(title.qualifier), Ink::Heading});
        below.push_back({stacked ? std::string(title.heading) : heading(title), Ink::Heading});
    }
    const bool qualified =
        std::any_of(titles.begin(), titles.end(), [](const Column& title) { return !title.qualifier.empty(); });
    return stacked && qualified ? std::vector<Row>{std::move(above), std::move(below)}
                                : std::vector<Row>{std::move(below)};
}

class Grid {
public:
    Grid(std::vector<Column> titles, bool stacked, const std::vector<Row>& rows)
        : m_titles(std::move(titles)), m_rows(headings(m_titles, stacked)), m_widths(m_titles.size()),
          m_wholeWidths(m_titles.size()) {
        m_rows.insert(m_rows.end(), rows.begin(), rows.end());
        for (const Row& row : m_rows) {
            for (std::size_t at = 0; at < row.size(); ++at) {
                const std::size_t whole = columns(row[at].text);
                m_wholeWidths[at] = std::max(m_wholeWidths[at], whole);
                // Of what may be cut, no more than a word is needed.
                m_widths[at] =
                    m_titles[at].kind == Column::Kind::Rest ? std::min(m_wholeWidths[at], WORD) : m_wholeWidths[at];
            }
        }
    }

    /// @return whether the rows fit, apart from what may be cut.
    bool fits(std::size_t gap, const Style& style) const { return total(m_widths, gap) <= style.width; }

    void append(Page& page) const {
        std::size_t gap = WIDEST_GAP;
        while (gap > NARROWEST_GAP && total(m_wholeWidths, gap) > page.style.width) {
            --gap;
        }
        for (const Row& row : m_rows) {
            page.text += line(row, gap, page.style) + '\n';
        }
    }

private:
    static std::size_t total(const std::vector<std::size_t>& widths, std::size_t gap) {
        return std::accumulate(widths.begin(), widths.end(), gap * (widths.size() - 1));
    }

    std::string line(const Row& row, std::size_t gap, const Style& style) const {
        std::string text;
        std::size_t end = 0;   // of what is written
        std::size_t begin = 0; // of the cell
        for (std::size_t at = 0; at < row.size(); ++at) {
            const Column::Kind kind = m_titles[at].kind;
            const std::string shown = kind == Column::Kind::Rest ? cut(row[at].text, begin, style) : row[at].text;
            const std::size_t place = begin + (kind == Column::Kind::Number ? m_widths[at] - columns(shown) : 0);
            if (!shown.empty()) {
                text += std::string(place - end, ' ') + style.paint(row[at].ink, shown);
                end = place + columns(shown);
            }
            begin += m_widths[at] + gap;
        }
        return text;
    }

    static std::string cut(const std::string& text, std::size_t begin, const Style& style) {
        const std::size_t room = std::max(style.width - std::min(style.width, begin), CUT.size());
        return columns(text) <= room ? text : text.substr(0, room - CUT.size()) + std::string(CUT);
    }

    std::vector<Column> m_titles;
    std::vector<Row> m_rows;
    std::vector<std::size_t> m_widths;
    std::vector<std::size_t> m_wholeWidths; ///< with what may be cut
};

} // namespace

void appendRows(Page& page, std::vector<Column> columns, std::vector<Row> rows) {
    const Grid relaxed(columns, false, rows);
    if (relaxed.fits(USUAL_GAP, page.style)) {
        relaxed.append(page);
        return;
    }
    std::size_t at = columns.size();
    while (at-- > 0 && !Grid(columns, true, rows).fits(NARROWEST_GAP, page.style)) {
        if (columns[at].dispensable) {
            columns.erase(columns.begin() + static_cast<std::ptrdiff_t>(at));
            for (Row& row : rows) {
                row.erase(row.begin() + static_cast<std::ptrdiff_t>(at));
            }
        }
    }
    Grid(columns, true, rows).append(page);
}

} // namespace inspect
