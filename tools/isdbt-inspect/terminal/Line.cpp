#include "terminal/Line.h"

#include <algorithm>
#include <unistr.h>
#include <uniwidth.h>

namespace inspect {

namespace {

constexpr const char* UTF_8 = "UTF-8";

const std::uint8_t* bytesOf(const std::string& text) {
    return reinterpret_cast<const std::uint8_t*>(text.data());
}

bool isControl(char byte) {
    return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F';
}

} // namespace

Line& Line::operator+=(const Line& other) {
    for (const Span& span : other.m_spans) {
        append(span.text, span.ink);
    }
    return *this;
}

std::string Line::text() const {
    std::string text;
    for (const Span& span : m_spans) {
        text += span.text;
    }
    return text;
}

std::size_t Line::cells() const {
    std::size_t cells = 0;
    for (const Span& span : m_spans) {
        cells += static_cast<std::size_t>(u8_width(bytesOf(span.text), span.text.size(), UTF_8));
    }
    return cells;
}

std::size_t Line::bytesWithin(std::size_t cells) const {
    const std::string whole = text();
    std::size_t at = 0;
    for (std::size_t used = 0; at < whole.size();) {
        ucs4_t character = 0;
        const int size = u8_mbtouc(&character, bytesOf(whole) + at, whole.size() - at);
        used += static_cast<std::size_t>(std::max(uc_width(character, UTF_8), 0));
        if (used > cells && at != 0) {
            break;
        }
        at += static_cast<std::size_t>(size);
    }
    return at;
}

Line Line::part(std::size_t begin, std::size_t size) const {
    Line part;
    for (const Span& span : m_spans) {
        const std::size_t skipped = std::min(begin, span.text.size());
        const std::string_view taken = std::string_view(span.text).substr(skipped, size);
        part.append(taken, span.ink);
        begin -= skipped;
        size -= taken.size();
    }
    return part;
}

void Line::append(std::string_view text, Ink ink) {
    if (text.empty()) {
        return;
    }
    if (m_spans.empty() || m_spans.back().ink != ink) {
        m_spans.push_back({{}, ink});
    }
    std::string& end = m_spans.back().text;
    std::replace_copy_if(text.begin(), text.end(), std::back_inserter(end), isControl, '?');
}

Line blanks(std::size_t count) {
    return std::string(count, ' ');
}

Line padded(Line line, std::size_t cells) {
    const std::size_t used = line.cells();
    return std::move(line += blanks(cells - std::min(cells, used)));
}

} // namespace inspect
