#include "describing/Charset.h"

#include "describing/JapaneseText.h"
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

ShownText decodeJapanese(std::string_view raw, const Conversion& latin9) {
    if (!canReadJapanese()) {
        return {latin9.shown(raw), "in the coding of Japan, which this build cannot read"};
    }
    return {Conversion("UTF-8").shown(readJapanese(raw)), {}};
}

std::optional<Coding> codingOf(const std::string& name) {
    if (name == Charset::LATIN_AMERICA) {
        return Coding::LatinAmerica;
    }
    return name == Charset::JAPAN && canReadJapanese() ? std::optional(Coding::Japan) : std::nullopt;
}

} // namespace

Charset::Charset(const std::string& name)
    : m_coding(codingOf(name)), m_isAuto(name == AUTO), m_conversion(m_coding || m_isAuto ? LATIN_9 : name) {
    if (!m_conversion.isKnown()) {
        throw UnknownCharset(name);
    }
}

ShownText Charset::decode(std::string_view raw, Coding told) const {
    if (!m_coding && !m_isAuto) {
        return {m_conversion.shown(raw), {}};
    }
    return m_coding.value_or(told) == Coding::Japan ? decodeJapanese(raw, m_conversion)
                                                    : decodeLatinAmerican(raw, m_conversion);
}

ShownText Charset::decodeAddress(std::string_view raw) const {
    return m_coding || m_isAuto ? decodeLatinAmerican(raw, m_conversion) : decode(raw);
}

} // namespace inspect
