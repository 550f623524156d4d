#pragma once

#include <iconv.h>
#include <optional>
#include <string>
#include <string_view>

namespace inspect {

/// A conversion to UTF-8, one of those that the system has.
class Conversion {
public:
    /// @param charset as iconv(3) knows it; if it does not, isKnown() tells
    explicit Conversion(const std::string& charset);
    ~Conversion();
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;

    bool isKnown() const;

    /// The text, safe for a terminal: bytes that are no characters are shown as \x81, and so are control characters; a
    /// backslash of the text is doubled, so that it cannot be taken for one of these.
    std::string shown(std::string_view raw) const;

    /// The same, if each of the bytes belongs to a character.
    std::optional<std::string> shownWhole(std::string_view raw) const;

private:
    std::string convert(std::string_view raw, bool& isWhole) const;

    iconv_t m_conversion;
};

/// Text in UTF-8 that is safe for a terminal, in the same way.
std::string shownUtf8(std::string_view utf8);

/// The same of a name of which nothing says how it is coded: what is no UTF-8 is shown as \x81, too.
std::string shownName(std::string_view raw);

} // namespace inspect
