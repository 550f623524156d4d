#include "describing/JapaneseText.h"

#ifdef ISDBT_INSPECT_READS_JAPANESE

#include <memory>
#include <vector>

// Its headers have neither these nor C linkage.
#include <cstddef>
#include <cstdint>
#include <ctime>
extern "C" {
#include <aribb24/aribb24.h>
#include <aribb24/decoder.h>
}

namespace inspect {

namespace {

struct Destroyer {
    void operator()(arib_instance_t* instance) const { arib_instance_destroy(instance); }
};

using Instance = std::unique_ptr<arib_instance_t, Destroyer>;

/// As it is sent: letters and digits as wide as the other characters.
std::string readWide(std::string_view raw) {
    constexpr std::size_t LONGEST_CHARACTER = 4; // in UTF-8, of a byte
    const Instance instance(arib_instance_new(nullptr));
    arib_decoder_t* const decoder = instance == nullptr ? nullptr : arib_get_decoder(instance.get());
    if (decoder == nullptr) {
        return {};
    }
    std::vector<char> text(raw.size() * LONGEST_CHARACTER + 2);
    arib_initialize_decoder(decoder);
    // It writes a zero behind the room that it is given when the text fills it.
    const std::size_t length = arib_decode_buffer(decoder, reinterpret_cast<const unsigned char*>(raw.data()),
                                                  raw.size(), text.data(), text.size() - 1);
    arib_finalize_decoder(decoder);
    return {text.data(), std::min(length, text.size() - 1)};
}

/// The character of three bytes that begins there.
unsigned codePointAt(const std::string& utf8, std::size_t at) {
    const auto bits = [&utf8](std::size_t each, unsigned mask) {
        return static_cast<unsigned char>(utf8[each]) & mask;
    };
    return bits(at, 0x0FU) << 12U | bits(at + 1, 0x3FU) << 6U | bits(at + 2, 0x3FU);
}

/// The character of usual width, if the one that begins there is the wide form of one in ASCII.
char narrowAt(const std::string& utf8, std::size_t at) {
    constexpr std::size_t SIZE = 3;
    constexpr unsigned WIDE_BLANK = 0x3000;
    constexpr unsigned WIDE_MARK = 0xFF01; // of '!', the first of ASCII in their order
    constexpr unsigned WIDE_TILDE = 0xFF5E;
    if (utf8.size() - at < SIZE || (static_cast<unsigned char>(utf8[at]) & 0xF0U) != 0xE0) {
        return 0;
    }
    const unsigned codePoint = codePointAt(utf8, at);
    if (codePoint >= WIDE_MARK && codePoint <= WIDE_TILDE) {
        return static_cast<char>(codePoint - WIDE_MARK + '!');
    }
    return codePoint == WIDE_BLANK ? ' ' : '\0';
}

} // namespace

bool canReadJapanese() {
    return true;
}

std::string readJapanese(std::string_view raw) {
    const std::string wide = readWide(raw);
    std::string text;
    for (std::size_t at = 0; at < wide.size();) {
        const char narrow = narrowAt(wide, at);
        text += narrow == 0 ? wide[at] : narrow;
        at += narrow == 0 ? 1 : 3;
    }
    return text;
}

} // namespace inspect

#else

namespace inspect {

bool canReadJapanese() {
    return false;
}

std::string readJapanese(std::string_view /*raw*/) {
    return {};
}

} // namespace inspect

#endif
