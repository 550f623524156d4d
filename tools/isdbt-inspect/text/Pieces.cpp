#include "text/Pieces.h"

#include <algorithm>
#include <iterator>

namespace inspect {

namespace {

constexpr std::string_view COLOUR_END = "\x1B[0m";

/// Two blanks, or one where a list goes on.
std::string_view gapBehind(std::string_view piece) {
    const bool goesOn = !piece.empty() && (piece.back() == ',' || piece.back() == ':');
    return goesOn ? " " : "  ";
}

/// The colour that a text leaves switched on.
std::string openColour(const std::string& text) {
    const std::size_t begin = text.rfind('\x1B');
    const std::size_t end = begin == std::string::npos ? begin : text.find('m', begin);
    const std::string sequence = end == std::string::npos ? "" : text.substr(begin, end + 1 - begin);
    return sequence == COLOUR_END ? "" : sequence;
}

/// The parts of a text between separators, each in its colour.
std::vector<std::string> partsOf(const std::string& text, std::string_view separator) {
    std::vector<std::string> parts;
    std::string colour;
    for (std::size_t at = 0; at <= text.size();) {
        const std::size_t end = std::min(text.find(separator, at), text.size());
        std::string part = colour + text.substr(at, end - at);
        colour = openColour(part);
        parts.push_back(colour.empty() ? part : part.append(COLOUR_END));
        at = end + separator.size();
    }
    return parts;
}

/// Fills lines.
class Lines {
public:
    Lines(Page& page, const std::string& first, const std::string& rest) : m_page(page), m_rest(rest), m_line(first) {}

    void add(std::string_view gap, const std::string& text) {
        if (!m_isEmpty && !fits(columns(m_line) + gap.size(), text)) {
            breakLine();
        }
        m_line.append(m_isEmpty ? "" : gap).append(text);
        m_isEmpty = false;
    }

    /// Whether a text fits in a line of its own.
    bool fitsAlone(const std::string& text) const { return fits(columns(m_rest), text); }

    void finish() { m_page.text += m_line + '\n'; }

private:
    bool fits(std::size_t used, const std::string& text) const {
        return !m_page.style.wraps || used + columns(text) <= m_page.style.width;
    }

    void breakLine() {
        finish();
        m_line = m_rest;
        m_isEmpty = true;
    }

    Page& m_page;
    const std::string& m_rest;
    std::string m_line;
    bool m_isEmpty = true;
};

/// Where a piece is broken that is too long for a line: between its own pieces, else between words.
constexpr std::string_view SEPARATORS[] = {"  ", " "};

void appendPiece(Lines& lines, std::string_view gap, const std::string& piece, std::size_t level) {
    if (level == std::size(SEPARATORS) || lines.fitsAlone(piece)) {
        lines.add(gap, piece);
        return;
    }
    for (const std::string& part : partsOf(piece, SEPARATORS[level])) {
        appendPiece(lines, gap, part, level + 1);
        gap = SEPARATORS[level];
    }
}

} // namespace

std::string joined(const std::vector<std::string>& pieces) {
    std::string text;
    for (const std::string& piece : pieces) {
        text.append(piece).append(&piece == &pieces.back() ? "" : gapBehind(piece));
    }
    return text;
}

void appendPieces(Page& page, const std::string& first, const std::string& rest,
                  const std::vector<std::string>& pieces) {
    Lines lines(page, first, rest);
    std::string_view gap;
    for (const std::string& piece : pieces) {
        appendPiece(lines, gap, piece, 0);
        gap = gapBehind(piece);
    }
    lines.finish();
}

} // namespace inspect
