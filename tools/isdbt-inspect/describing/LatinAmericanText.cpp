#include "describing/LatinAmericanText.h"

#include <cstdint>

namespace inspect {

namespace {

constexpr std::uint8_t LINE_FEED = 0x0A;
constexpr std::uint8_t RETURN = 0x0D;
constexpr std::uint8_t ESCAPE = 0x1B;
constexpr std::uint8_t SMALL_SIZE = 0x88;
constexpr std::uint8_t MIDDLE_SIZE = 0x89;
constexpr std::uint8_t NORMAL_SIZE = 0x8A; ///< in DVB the end of a line

bool isBetween(std::uint8_t byte, std::uint8_t first, std::uint8_t last) {
    return first <= byte && byte <= last;
}

/// Names are filled up with these.
std::string_view withoutPadding(std::string_view raw) {
    constexpr std::string_view PADDING("\0 ", 2);
    return raw.substr(0, raw.find_last_not_of(PADDING) + 1); // when there is nothing else, npos + 1 is 0
}

class Reader {
public:
    explicit Reader(std::string_view raw) : m_raw(raw) {}

    LatinAmericanText read() {
        skipSelector();
        while (m_at < m_raw.size()) {
            take(byte(m_at++));
        }
        return std::move(m_text);
    }

private:
    std::uint8_t byte(std::size_t at) const { return static_cast<std::uint8_t>(m_raw[at]); }

    /// What names the coding of a text in DVB stands in front here by mistake.
    void skipSelector() {
        constexpr std::uint8_t LAST_SELECTOR = 0x1F;
        constexpr std::uint8_t OF_ISO_8859 = 0x10;
        if (m_raw.empty() || byte(0) > LAST_SELECTOR || byte(0) == ESCAPE) {
            return;
        }
        m_at = 1;
        if (byte(0) == OF_ISO_8859) {
            m_at = 3;
        } else if (byte(0) == LAST_SELECTOR) {
            m_at = 2;
        }
        ++m_text.leftOut;
    }

    void take(std::uint8_t next) {
        if (isBetween(next, 0x20, 0x7E) || next >= 0xA0) {
            m_text.characters += static_cast<char>(next);
        } else if (next == ESCAPE) {
            skipDesignation();
        } else if (next == RETURN || next == LINE_FEED || (next == NORMAL_SIZE && !m_hasSizes)) {
            m_text.characters += '\n';
        } else if (next == SMALL_SIZE || next == MIDDLE_SIZE) {
            m_hasSizes = true;
        } else if (next != NORMAL_SIZE) {
            ++m_text.leftOut;
        }
    }

    /// All texts are of one set, which no designation changes.
    void skipDesignation() {
        while (m_at < m_raw.size() && isBetween(byte(m_at), 0x20, 0x2F)) {
            ++m_at;
        }
        if (m_at < m_raw.size() && isBetween(byte(m_at), 0x30, 0x7E)) {
            ++m_at;
        }
    }

    std::string_view m_raw;
    std::size_t m_at = 0;
    bool m_hasSizes = false; ///< so that 0x8A is one of them
    LatinAmericanText m_text;
};

} // namespace

LatinAmericanText readLatinAmerican(std::string_view raw) {
    return Reader(withoutPadding(raw)).read();
}

} // namespace inspect
