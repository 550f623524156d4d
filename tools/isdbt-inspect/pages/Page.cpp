#include "pages/Page.h"

#include <cstdint>
#include <stdexcept>
#include <zlib.h>

namespace inspect {

std::string compressed(std::string_view text) {
    constexpr int GZIP = 16 + MAX_WBITS;
    constexpr int MEMORY = 8; // zlib's own choice
    z_stream stream{};
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, GZIP, MEMORY, Z_DEFAULT_STRATEGY) != Z_OK) {
        throw std::runtime_error("zlib cannot be used");
    }
    std::string bytes(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data())); // it is only read
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    deflate(&stream, Z_FINISH);
    bytes.resize(stream.total_out);
    deflateEnd(&stream);
    return bytes;
}

std::string base64(std::string_view bytes) {
    constexpr std::string_view DIGITS = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    constexpr unsigned DIGIT_BITS = 6;
    constexpr unsigned LOWEST_DIGIT = 0x3F;
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    unsigned bits = 0;
    unsigned count = 0;
    for (const char each : bytes) {
        bits = (bits << 8U | static_cast<std::uint8_t>(each)) & 0xFFFFU;
        for (count += 8; count >= DIGIT_BITS; count -= DIGIT_BITS) {
            text += DIGITS[bits >> (count - DIGIT_BITS) & LOWEST_DIGIT];
        }
    }
    if (count != 0) {
        text += DIGITS[bits << (DIGIT_BITS - count) & LOWEST_DIGIT];
    }
    text.resize((text.size() + 3) / 4 * 4, '=');
    return text;
}

/// Nothing in it can be taken for markup, whatever a station sends.
std::string pagePart(std::string_view lines) {
    return "<script type=\"application/gzip;base64\">" + base64(compressed(lines)) + "</script>\n";
}

} // namespace inspect
