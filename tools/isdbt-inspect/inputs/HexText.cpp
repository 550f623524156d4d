#include "inputs/HexText.h"

#include <algorithm>
#include <charconv>
#include <fmt/format.h>
#include <optional>

namespace inspect {

namespace {

using Octets = std::vector<std::uint8_t>;

constexpr int HEXADECIMAL = 16;
constexpr std::string_view DIGITS = "0123456789abcdefABCDEF";
constexpr std::string_view BLANKS = " \t";

/// What people and programs write between bytes.
constexpr std::string_view SEPARATORS = " \t\n,;:-\"'";

std::uint64_t valueOf(std::string_view digits) {
    std::uint64_t value = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), value, HEXADECIMAL);
    return value;
}

std::string_view digitsAt(std::string_view text, std::size_t at) {
    return text.substr(at, std::min(text.find_first_not_of(DIGITS, at), text.size()) - at);
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(BLANKS) == std::string_view::npos;
}

void append(Octets& bytes, std::string_view digits) {
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        bytes.push_back(static_cast<std::uint8_t>(valueOf(digits.substr(at, 2))));
    }
}

/// Bytes without offsets.
class Plain {
public:
    explicit Plain(std::string_view text) : m_text(text) {}

    Octets read() {
        // Of an array, what stands before its braces and behind them are no bytes.
        const bool array = m_text.find('{') != std::string_view::npos;
        m_at = array ? m_text.find('{') + 1 : 0;
        while (skip()) {
            if (array && m_text[m_at] == '}') {
                m_at = std::min(m_text.find('{', m_at), m_text.size() - 1) + 1;
            } else {
                readNumber();
            }
        }
        return std::move(m_bytes);
    }

private:
    /// Goes to what stands behind separators and comments. @return whether there is something.
    bool skip() {
        for (;;) {
            m_at = std::min(m_text.find_first_not_of(SEPARATORS, m_at), m_text.size());
            const bool line = m_text.substr(m_at, 2) == "//";
            if (!line && m_text.substr(m_at, 2) != "/*") {
                return m_at != m_text.size();
            }
            const std::size_t end = m_text.find(line ? "\n" : "*/", m_at);
            m_at = end == std::string_view::npos ? m_text.size() : end + (line ? 1 : 2);
        }
    }

    void readNumber() {
        const std::string_view prefix = m_text.substr(m_at, 2);
        const bool prefixed = prefix == "0x" || prefix == "0X" || prefix == "\\x";
        const std::string_view digits = digitsAt(m_text, m_at + (prefixed ? 2 : 0));
        if (digits.empty() || (digits.size() % 2 != 0 && !(prefixed && digits.size() == 1))) {
            fail();
        }
        append(m_bytes, digits.size() == 1 ? '0' + std::string(digits) : std::string(digits));
        m_at = static_cast<std::size_t>(digits.data() - m_text.data()) + digits.size();
        const bool ended = m_at == m_text.size() || SEPARATORS.find(m_text[m_at]) != std::string_view::npos ||
                           m_text[m_at] == '\\' || m_text[m_at] == '}';
        if (!ended) {
            fail();
        }
    }

    [[noreturn]] void fail() const {
        const std::string_view before = m_text.substr(0, m_at);
        const auto line = std::count(before.begin(), before.end(), '\n') + 1;
        const std::size_t column = m_at - (before.rfind('\n') + 1) + 1;
        const std::string_view found =
            m_text.substr(m_at, std::min(m_text.find_first_of(" \t\n,", m_at), m_text.size()) - m_at);
        throw HexError(fmt::format("line {}, column {}: two hexadecimal digits expected, not \"{}\"", line, column,
                                   found.substr(0, 20)));
    }

    std::string_view m_text;
    std::size_t m_at = 0;
    Octets m_bytes;
};

/// A line of a dump: "0010  02 B0 14 E6  |....|".
struct DumpLine {
    std::uint64_t offset;
    std::size_t digits;    ///< of the offset
    bool marked;           ///< a colon behind it says that it is an offset
    std::string_view rest; ///< behind it
};

std::optional<DumpLine> dumpLine(std::string_view line) {
    constexpr std::size_t SHORTEST_OFFSET = 4;
    constexpr std::size_t LONGEST_OFFSET = 16;
    const std::size_t begin = std::min(line.find_first_not_of(BLANKS), line.size());
    const std::string_view offset = digitsAt(line, begin);
    std::string_view rest = line.substr(begin + offset.size());
    const bool marked = !rest.empty() && rest.front() == ':';
    rest.remove_prefix(marked ? 1 : 0);
    if (offset.size() < SHORTEST_OFFSET || offset.size() > LONGEST_OFFSET ||
        (!rest.empty() && BLANKS.find(rest.front()) == std::string_view::npos)) {
        return std::nullopt;
    }
    return DumpLine{valueOf(offset), offset.size(), marked, rest};
}

/// Nothing when one is no line of a dump.
std::optional<std::vector<DumpLine>> dumpLines(std::string_view text) {
    std::vector<DumpLine> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        if (isBlank(line)) {
            continue;
        }
        const std::optional<DumpLine> found = dumpLine(line);
        if (!found) {
            return std::nullopt;
        }
        lines.push_back(*found);
    }
    return lines;
}

/// Appends the bytes of a line until something else comes. @return where they end.
/// @param most  how many there can be
/// @param alone no other line shows where the bytes end and the characters begin: a wide gap does
std::size_t appendBytes(Octets& bytes, std::string_view rest, std::uint64_t most, bool alone) {
    constexpr std::size_t HALF_LINE = 8; // behind it some dumps have a wider gap
    const std::size_t before = bytes.size();
    std::size_t end = 0;
    for (std::size_t at = rest.find_first_not_of(BLANKS); at < rest.size() && bytes.size() - before < most;
         at = rest.find_first_not_of(BLANKS, end)) {
        const std::string_view digits = digitsAt(rest, at);
        const std::size_t behind = at + digits.size();
        const bool ended = behind == rest.size() || BLANKS.find(rest[behind]) != std::string_view::npos;
        const bool wide = alone && at > end + 1 && bytes.size() != before && bytes.size() - before != HALF_LINE;
        if (digits.empty() || digits.size() % 2 != 0 || !ended || wide) {
            break;
        }
        append(bytes, digits);
        end = behind;
    }
    return end;
}

constexpr const char* OF_WORDS =
    "od and hexdump write octal offsets or words of 16 bits unless they are told otherwise; od -A x -t x1, hexdump -C and "
    "xxd write a dump that can be read";

/// Whether an offset is as od and hexdump write it.
bool isAsOfOd(const DumpLine& line) {
    constexpr std::size_t DIGITS_OF_OD = 7;
    return line.digits == DIGITS_OF_OD && !line.marked;
}

/// Whether what stands behind such an offset does not begin with a byte.
bool hasWords(const DumpLine& line) {
    const std::size_t begin = std::min(line.rest.find_first_not_of(BLANKS), line.rest.size());
    return isAsOfOd(line) && digitsAt(line.rest, begin).size() != 2;
}

[[noreturn]] void failAt(const DumpLine& line, std::size_t read) {
    throw HexError(isAsOfOd(line)
                       ? OF_WORDS
                       : fmt::format("the line at offset {:04X} has {} bytes, which does not lead to the next one",
                                     line.offset, read));
}

/// Bytes with an offset before each line that says how many came before; several dumps one behind the other. Nothing
/// when the text is something else.
std::optional<Octets> readDump(std::string_view text) {
    const std::optional<std::vector<DumpLine>> lines = dumpLines(text);
    if (!lines || lines->empty() || isBlank(lines->front().rest)) {
        return std::nullopt;
    }
    if (hasWords(lines->front())) {
        throw HexError(OF_WORDS);
    }
    Octets all;
    std::size_t end = 0; // of the bytes in the line before
    for (auto line = lines->begin(); line != lines->end(); ++line) {
        const auto next = line + 1;
        const bool first = line == lines->begin() || line->offset <= (line - 1)->offset;
        const bool last = next == lines->end() || next->offset <= line->offset;
        if (line == lines->begin() && last && line->offset != 0 && !line->marked) {
            return std::nullopt; // it may as well be the first bytes
        }
        const std::size_t before = all.size();
        const std::string_view rest = last && !first ? line->rest.substr(0, end) : line->rest;
        end = appendBytes(all, rest, last ? rest.size() : next->offset - line->offset, first && last);
        const std::size_t read = all.size() - before;
        const bool isEnd = last && isBlank(rest); // the size of all, in a line of its own
        if (isEnd || (read != 0 && (last || read == next->offset - line->offset))) {
            continue;
        }
        if (lines->front().offset != 0 && !lines->front().marked) {
            return std::nullopt;
        }
        failAt(*line, read);
    }
    return all;
}

/// Each line ended by \n, whatever ended it.
std::string withLineFeeds(std::string text) {
    for (std::size_t at = text.find('\r'); at != std::string::npos; at = text.find('\r', at)) {
        text[at] = text.compare(at, 2, "\r\n") == 0 ? ' ' : '\n';
    }
    return text;
}

} // namespace

std::vector<std::uint8_t> readHex(std::string_view text) {
    const std::string lines = withLineFeeds(std::string(text));
    if (std::optional<Octets> dump = readDump(lines)) {
        return std::move(*dump);
    }
    Octets bytes = Plain(lines).read();
    if (bytes.empty()) {
        throw HexError("bytes in hexadecimal expected");
    }
    return bytes;
}

} // namespace inspect
