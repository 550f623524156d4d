#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace inspect {

/// What a part of a text is, which a terminal may show by a colour.
enum class Ink { Plain, Heading, Name, Remark, Good, Fault };

struct Span {
    std::string text;
    Ink ink;
};

/// Text in one line, in spans of one ink each. It has no control characters.
class Line {
public:
    Line() = default;

    template <class Characters, class = std::enable_if_t<std::is_convertible_v<const Characters&, std::string_view>>>
    Line(const Characters& text, Ink ink = Ink::Plain) {
        append(text, ink);
    }

    Line& operator+=(const Line& other);
    friend Line operator+(Line one, const Line& other) { return std::move(one += other); }

    const std::vector<Span>& spans() const { return m_spans; }
    bool empty() const { return m_spans.empty(); }

    /// Without the inks.
    std::string text() const;

    /// What a terminal shows it in, locale or not: two for a wide character, none for one that combines with another.
    std::size_t cells() const;

    /// The bytes of as many of its characters as fit in some cells, those of the first one in any case.
    std::size_t bytesWithin(std::size_t cells) const;

    /// Some of its bytes, as of a string.
    Line part(std::size_t begin, std::size_t size = std::string::npos) const;

private:
    void append(std::string_view text, Ink ink);

    std::vector<Span> m_spans; ///< none empty, and no two in a row of the same ink
};

Line blanks(std::size_t count);

/// Fills up with blanks.
Line padded(Line line, std::size_t cells);

} // namespace inspect
