#include "describing/Conversion.h"

#include <algorithm>
#include <cerrno>
#include <fmt/format.h>

namespace inspect {

namespace {

// NOLINTNEXTLINE(performance-no-int-to-ptr): the value is prescribed by iconv_open()
const auto NO_CONVERSION = reinterpret_cast<iconv_t>(-1);
constexpr auto FAILED = static_cast<std::size_t>(-1);

std::string escaped(char byte) {
    return fmt::format("\\x{:02X}", static_cast<unsigned char>(byte));
}

bool isControl(unsigned char byte) {
    return byte < 0x20 || byte == 0x7F;
}

} // namespace

Conversion::Conversion(const std::string& charset) : m_conversion(NO_CONVERSION) {
    // Lists of names end each of them with slashes. iconv would take the empty name for the locale's, and what follows
    // the second slash for an order to drop characters.
    const auto slashes = std::count(charset.begin(), charset.end(), '/');
    if (charset.find_first_not_of('/') != std::string::npos &&
        (slashes == 0 || (slashes == 2 && charset.back() == '/'))) {
        m_conversion = iconv_open("UTF-8", charset.c_str());
    }
}

Conversion::~Conversion() {
    if (isKnown()) {
        iconv_close(m_conversion);
    }
}

bool Conversion::isKnown() const {
    return m_conversion != NO_CONVERSION;
}

std::string Conversion::shown(std::string_view raw) const {
    bool isWhole = true;
    return convert(raw, isWhole);
}

std::optional<std::string> Conversion::shownWhole(std::string_view raw) const {
    bool isWhole = true;
    std::string text = convert(raw, isWhole);
    return isWhole ? std::optional(std::move(text)) : std::nullopt;
}

std::string Conversion::convert(std::string_view raw, bool& isWhole) const {
    std::string text;
    char* input = const_cast<char*>(raw.data()); // iconv() only reads
    std::size_t inputLeft = raw.size();
    iconv(m_conversion, nullptr, nullptr, nullptr, nullptr);
    bool flushed = false;
    while (!flushed) {
        flushed = inputLeft == 0;
        char buffer[256];
        char* output = buffer;
        std::size_t outputLeft = sizeof buffer;
        const std::size_t result =
            iconv(m_conversion, flushed ? nullptr : &input, flushed ? nullptr : &inputLeft, &output, &outputLeft);
        const bool undecodable = result == FAILED && errno != E2BIG;
        text += shownUtf8({buffer, sizeof buffer - outputLeft});
        if (undecodable && inputLeft != 0) {
            text += escaped(*input++);
            --inputLeft;
            isWhole = false;
        }
    }
    return text;
}

std::string shownUtf8(std::string_view utf8) {
    constexpr unsigned char BEFORE_C1_CONTROL = 0xC2;
    std::string shown;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const auto byte = static_cast<unsigned char>(utf8[at]);
        if (byte == BEFORE_C1_CONTROL && static_cast<unsigned char>(utf8[at + 1]) < 0xA0) {
            shown += escaped(utf8[++at]);
        } else if (isControl(byte)) {
            shown += escaped(utf8[at]);
        } else {
            shown.append(byte == '\\' ? 2 : 1, utf8[at]);
        }
    }
    return shown;
}

std::string shownName(std::string_view raw) {
    thread_local const Conversion utf8("UTF-8");
    return utf8.shown(raw);
}

} // namespace inspect
