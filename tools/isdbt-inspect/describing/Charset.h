#pragma once

#include <iconv.h>
#include <stdexcept>
#include <string>
#include <string_view>

namespace inspect {

/// There is no character set of this name.
struct UnknownCharset : std::runtime_error {
    explicit UnknownCharset(const std::string& name) : std::runtime_error("unknown character set: " + name) {}
};

/// A character set that broadcasters write in.
class Charset {
public:
    /// What names and texts are in when nothing else is said.
    static constexpr const char* USUAL = "ISO-8859-15";

    /// @param name as iconv(3) knows it
    /// @throws UnknownCharset
    explicit Charset(const std::string& name = USUAL);
    ~Charset();
    Charset(const Charset&) = delete;
    Charset& operator=(const Charset&) = delete;

    /// Broadcast text in UTF-8, safe for a terminal: bytes that are no characters are shown as \x81, and so are control
    /// characters; a backslash of the text is doubled, so that it cannot be taken for one of these.
    std::string decode(std::string_view raw) const;

private:
    iconv_t m_conversion;
};

} // namespace inspect
