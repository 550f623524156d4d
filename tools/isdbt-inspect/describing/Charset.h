#pragma once

#include "describing/Conversion.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace inspect {

/// There is no character set of this name.
struct UnknownCharset : std::runtime_error {
    explicit UnknownCharset(const std::string& name) : std::runtime_error("unknown character set: " + name) {}
};

/// What broadcasters write names in.
enum class Coding { LatinAmerica, Japan };

/// A broadcast text as people read it.
struct ShownText {
    std::string text;   ///< UTF-8, safe for a terminal
    std::string remark; ///< what it does not show; empty when there is nothing to say
};

/// A character set that broadcasters write in.
class Charset {
public:
    /// Whatever the stream's tables tell.
    static constexpr const char* AUTO = "auto";

    /// That of Brazil and of the countries that broadcast as it does.
    static constexpr const char* LATIN_AMERICA = "latin-america";
    static constexpr const char* JAPAN = "japan";

    /// @param name one of these, or as iconv(3) knows it
    /// @throws UnknownCharset also for that of Japan in a build that cannot read it
    explicit Charset(const std::string& name = AUTO);

    /// Any bytes make a text. In a character set that iconv knows, bytes that are no characters are shown as \x81, and
    /// so are control characters; a backslash of the text is doubled, so that it cannot be taken for one of these.
    /// @param told what the stream's tables tell
    ShownText decode(std::string_view raw, Coding told = Coding::LatinAmerica) const;

    /// The same for an address, which has nothing but ASCII in Japan.
    ShownText decodeAddress(std::string_view raw) const;

private:
    std::optional<Coding> m_coding; ///< of this name
    bool m_isAuto;
    Conversion m_conversion;
};

} // namespace inspect
