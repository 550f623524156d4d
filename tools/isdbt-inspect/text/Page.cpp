#include "text/Page.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::string_view GAP = "  ";

/// Two blanks, or one where a list goes on.
std::string_view gapBehind(const Line& piece) {
    const char end = piece.empty() ? ' ' : piece.spans().back().text.back();
    return end == ',' || end == ':' ? " " : GAP;
}

/// Where a piece is broken that is too long for a line: between its own pieces, else between words.
constexpr std::string_view SEPARATORS[] = {GAP, " "};
constexpr std::size_t WORDS = 1;

/// Where a word is broken that is too long for a line: behind the last of its parts that fits, unless that is short.
std::size_t endWithin(const Line& word, std::size_t cells) {
    const std::size_t end = word.bytesWithin(cells);
    const std::size_t part = word.text().find_last_of("_-./:,", end - 1) + 1;
    return part > end / 3 ? part : end;
}

/// Fills lines.
class Filling {
public:
    Filling(Page& page, const Line& first, const Line& rest) : m_page(page), m_rest(rest), m_line(first) {}
    ~Filling() { m_page.lines.push_back(std::move(m_line)); }
    Filling(const Filling&) = delete;
    Filling& operator=(const Filling&) = delete;

    /// @param level of the separators, at which it is broken if it has to be
    void add(Line gap, const Line& piece, std::size_t level) {
        if (level == std::size(SEPARATORS) || fitsAlone(piece)) {
            addWhole(gap, piece);
            return;
        }
        const std::string text = piece.text();
        std::size_t begin = text.find_first_not_of(' ');
        while (begin < text.size()) {
            const std::size_t end = std::min(text.find(SEPARATORS[level], begin), text.size());
            add(gap, piece.part(begin, end - begin), level + 1);
            begin = text.find_first_not_of(' ', end);
            gap = piece.part(end, begin - end);
        }
    }

private:
    bool fits(std::size_t cells) const { return !m_page.style.wraps || cells <= m_page.style.width; }
    bool fitsAlone(const Line& text) const { return fits(m_rest.cells() + text.cells()); }

    void addWhole(const Line& gap, Line text) {
        constexpr std::size_t PART = 12; // of a long word, for which it is worth to begin it in a line
        const std::size_t needed = fitsAlone(text) ? text.cells() : PART;
        if (!m_isEmpty && !fits(m_line.cells() + gap.cells() + needed)) {
            breakLine();
        }
        m_line += m_isEmpty ? Line() : gap;
        while (!fits(m_line.cells() + text.cells())) {
            const std::size_t end = endWithin(text, m_page.style.width - std::min(m_page.style.width, m_line.cells()));
            m_line += text.part(0, end);
            text = text.part(end);
            breakLine();
        }
        m_line += text;
        m_isEmpty = false;
    }

    void breakLine() {
        m_page.lines.push_back(std::move(m_line));
        m_line = m_rest;
        m_isEmpty = true;
    }

    Page& m_page;
    const Line& m_rest;
    Line m_line;
    bool m_isEmpty = true; ///< nothing stands right of the margin
};

} // namespace

std::size_t widestMargin(const Style& style) {
    return style.width * 2 / 3;
}

void appendLine(Page& page, const Line& line, std::size_t indent) {
    if (!page.style.wraps || line.cells() <= page.style.width) {
        page.lines.push_back(line);
        return;
    }
    const std::size_t margin = line.text().find_first_not_of(' ');
    const Line first = blanks(std::min(margin, widestMargin(page.style)));
    const Line rest = blanks(std::min(std::max(margin, indent), widestMargin(page.style)));
    Filling(page, first, rest).add({}, line.part(margin), WORDS);
}

Line joined(const std::vector<Line>& pieces) {
    Line line;
    for (const Line& piece : pieces) {
        line += piece;
        line += &piece == &pieces.back() ? "" : gapBehind(piece);
    }
    return line;
}

void appendPieces(Page& page, const Line& first, const Line& rest, const std::vector<Line>& pieces) {
    Filling filling(page, first, rest);
    Line gap;
    for (const Line& piece : pieces) {
        filling.add(gap, piece, 0);
        gap = gapBehind(piece);
    }
}

Page pageBehind(std::size_t cells, const Style& style) {
    constexpr std::size_t NARROWEST = 8;
    Page page{style, {}};
    page.style.width = std::max(style.width, cells + NARROWEST) - cells;
    return page;
}

void appendPage(Page& page, const Line& first, const Line& rest, const Page& right) {
    for (const Line& line : right.lines) {
        page.lines.push_back((&line == &right.lines.front() ? first : rest) + line);
    }
}

std::vector<Line> inputHeading(const std::string& name, const Style& style) {
    Page page{style, {}};
    if (style.namesInputs) {
        appendLine(page, {"== " + name + " ==", Ink::Heading});
    }
    return page.lines;
}

} // namespace inspect
