#ifndef QUOR_DETAIL_STRINGS_H
#define QUOR_DETAIL_STRINGS_H

#include "detail/Bytes.h"
#include "detail/Memory.h"
#include "detail/Owned.h"

#include <algorithm>

/// The texts of descriptors, with the rules and log lines of ParserUtils::parseStr().
namespace Quor::detail {

/// Where the characters of a text lie.
struct Characters {
    Bytes bytes;
    QUOR_S32 taken; ///< of the field, modulo 256; -1 when the field is shorter than the text
};

/// Logs a text that is longer than its field.
[[gnu::cold]] void warnOfLongText(QUOR_U32 length, QUOR_U32 left);

/// Finds a text of a known length. Of length 0 it is read as one behind a length byte, unless @p field is empty.
inline Characters findText(const Bytes& field, QUOR_U32 length) {
    const QUOR_U32 lengthByte = length == 0 && !field.empty() ? 1 : 0;
    const QUOR_U32 size = lengthByte == 0 ? length : field.u8(0);
    if (!field.has(lengthByte, size)) {
        warnOfLongText(size, field.size() - lengthByte);
        return {field.first(0), -1};
    }
    return {field.from(lengthByte).first(size), static_cast<QUOR_U8>(lengthByte + size)};
}

/// A copy of characters in the memory of what it is built into.
inline Text makeText(const char* characters, QUOR_U32 size, Memory& memory) {
    if (size == 0) {
        return {};
    }
    Array<char> copy(static_cast<char*>(memory.take(size)));
    std::copy_n(characters, size, copy.get());
    return Text(std::move(copy), size);
}

/// Copies a text. @return the bytes that it took, modulo 256; -1, with @p text unchanged, when @p field is shorter.
inline QUOR_S32 readText(const Bytes& field, QUOR_U32 length, Text& text) {
    const Characters found = findText(field, length);
    if (found.taken >= 0) {
        text = makeText(reinterpret_cast<const char*>(found.bytes.data()), found.bytes.size(), field.memory());
    }
    return found.taken;
}

/// Copies a text behind a byte with its length. @return the bytes that both took, as readText() does.
QUOR_S32 readPrefixedText(const Bytes& field, Text& text);

/// Appends texts that stand one behind the other, each after a byte with its length, until the bytes are used up.
/// @return false at a text that does not fit. One of 255 bytes fails as well: it counts as 0 bytes, so that it could
///         never be passed.
bool readPrefixedTexts(Bytes left, Row<Text>& texts);

} // namespace Quor::detail

#endif
