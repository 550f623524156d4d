#include "describing/Charset.h"

#include "describing/LatinAmericanText.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr const char* LATIN_9 = "ISO-8859-15";

bool isAscii(std::string_view raw) {
    return std::none_of(raw.begin(), raw.end(), [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
}

/// A text with accents that is UTF-8 as it stands is hardly anything else.
std::string asUtf8(std::string_view raw) {
    const Conversion utf8("UTF-8");
    const std::optional<std::string> text = isAscii(raw) ? std::nullopt : utf8.shownWhole(raw);
    return text ? fmt::format("in UTF-8: {}", *text) : "";
}

std::string codesLeftOut(std::size_t count) {
    return count == 0 ? "" : fmt::format("{} control {} left out", count, count == 1 ? "code" : "codes");
}

ShownText decodeLatinAmerican(std::string_view raw, const Conversion& latin9) {
    LatinAmericanText read = readLatinAmerican(raw);
    std::replace(read.characters.begin(), read.characters.end(), '\n', ' ');
    const std::string utf8 = asUtf8(raw);
    return {latin9.shown(read.characters), utf8.empty() ? codesLeftOut(read.leftOut) : utf8};
}

} // namespace

Charset::Charset(const std::string& name)
    : m_isLatinAmerican(name == LATIN_AMERICA), m_conversion(m_isLatinAmerican ? LATIN_9 : name) {
    if (!m_conversion.isKnown()) {
        throw UnknownCharset(name);
    }
}

ShownText Charset::decode(std::string_view raw) const {
    return m_isLatinAmerican ? decodeLatinAmerican(raw, m_conversion) : ShownText{m_conversion.shown(raw), {}};
}

} // namespace inspect
