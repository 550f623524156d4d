#include "utils/ParserUtils.h"

#include "detail/Arrays.h"
#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Strings.h"

#include <algorithm>

namespace Quor {

namespace {

/// Quirk: the tag of this class is spelt differently.
constexpr const char* LOG_TAG = "ISDBTUils";

/// A length that stands before the text, in a byte.
constexpr QUOR_U32 IN_A_BYTE = 0;

void warnOfNullTarget() {
    quor_log_std_generic(detail::LOG_LEVEL, LOG_TAG,
                         "%s: ParserUtils::parseByteArray: ERROR: Invalid data target. Aborting!", LOG_TAG);
}

/// Where the characters of a text lie.
struct Characters {
    const QUOR_U8* data;
    QUOR_U32 length;
    QUOR_S32 taken; ///< modulo 256, or -1
};

Characters findText(const QUOR_U8* data, QUOR_U32 length, QUOR_U32 maxLength) {
    QUOR_U32 delta = 0;
    if (length == IN_A_BYTE && maxLength != 0) {
        length = data[0];
        --maxLength;
        ++data;
        delta = 1;
    }
    if (maxLength < length) {
        quor_log_std_generic(
            detail::LOG_LEVEL, LOG_TAG,
            "%s: ParserUtils::parseStr: ERROR: String length exceeds available data length: %u > %u.Aborting!", LOG_TAG,
            length, maxLength);
        return {nullptr, 0, -1};
    }
    return {data, length, static_cast<QUOR_U8>(delta + length)};
}

} // namespace

void ParserUtils::parseByteArray(QUOR_U8* pData, QUOR_U8*& target, QUOR_U8 length) {
    if (target == nullptr) {
        warnOfNullTarget();
    }
    target = nullptr;
    if (length == 0) {
        quor_log_std_generic(
            detail::LOG_LEVEL, LOG_TAG,
            "%s: ParserUtils::parseByteArray: ERROR: Byte array length is not greater than zero.Aborting!", LOG_TAG);
        return;
    }
    target = new QUOR_U8[length];
    std::copy_n(pData, length, target);
}

QUOR_S32 ParserUtils::parseStr(QUOR_U8* pData, std::string& target, QUOR_U32 length, QUOR_U32 maxLength) {
    const Characters found = findText(pData, length, maxLength);
    if (found.taken >= 0) {
        target.assign(found.data, found.data + found.length);
    }
    return found.taken;
}

namespace detail {

Text makeText(const char* characters, QUOR_U32 size, Memory& memory) {
    if (size == 0) {
        return {};
    }
    Array<char> copy(static_cast<char*>(memory.take(size)));
    std::copy_n(characters, size, copy.get());
    return Text(std::move(copy), size);
}

QUOR_S32 readText(const Bytes& field, QUOR_U32 length, Text& text) {
    const Characters found = findText(field.data(), length, field.size());
    if (found.taken >= 0) {
        text = makeText(reinterpret_cast<const char*>(found.data), found.length, field.memory());
    }
    return found.taken;
}

QUOR_S32 readPrefixedText(const Bytes& field, Text& text) {
    return readText(field, IN_A_BYTE, text);
}

bool readPrefixedTexts(Bytes left, Row<Text>& texts) {
    while (!left.empty()) {
        Text text;
        const QUOR_S32 taken = readPrefixedText(left, text);
        if (taken <= 0) {
            return false;
        }
        append(texts, std::move(text), left.memory());
        left = left.from(static_cast<QUOR_U32>(taken));
    }
    return true;
}

bool readByteArray(const Bytes& left, QUOR_U8& length, Array<QUOR_U8>& target) {
    constexpr QUOR_U32 lengthByte = 1;
    length = left.u8(0);
    if (!left.has(0, lengthByte + length)) {
        return false;
    }
    if (length != 0) {
        // Quirk: each such array is announced by this line, though nothing is wrong.
        warnOfNullTarget();
        target = copyBytes(left.from(lengthByte).first(length));
    }
    return true;
}

} // namespace detail

} // namespace Quor
