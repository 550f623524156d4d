#pragma once

#include "describing/Conversion.h"

#include <stdexcept>
#include <string>
#include <string_view>

namespace inspect {

/// There is no character set of this name.
struct UnknownCharset : std::runtime_error {
    explicit UnknownCharset(const std::string& name) : std::runtime_error("unknown character set: " + name) {}
};

/// A broadcast text as people read it.
struct ShownText {
    std::string text;   ///< UTF-8, safe for a terminal
    std::string remark; ///< what it does not show; empty when there is nothing to say
};

/// A character set that broadcasters write in.
class Charset {
public:
    /// That of Brazil and of the countries that broadcast as it does; what names and texts are in when nothing else is
    /// said.
    static constexpr const char* LATIN_AMERICA = "latin-america";

    /// @param name LATIN_AMERICA, or as iconv(3) knows it
    /// @throws UnknownCharset
    explicit Charset(const std::string& name = LATIN_AMERICA);

    /// Any bytes make a text. In those that iconv knows, bytes that are no characters are shown as \x81, and so are
    /// control characters; a backslash of the text is doubled, so that it cannot be taken for one of these.
    ShownText decode(std::string_view raw) const;

private:
    bool m_isLatinAmerican;
    Conversion m_conversion;
};

} // namespace inspect
