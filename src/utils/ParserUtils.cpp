#include "utils/ParserUtils.h"

#include "detail/Arrays.h"
#include "detail/Items.h"
#include "detail/Log.h"
#include "detail/Strings.h"

#include <algorithm>

namespace Quor {

namespace {

/// Quirk: the tag of this class is spelt differently from all others.
constexpr const char* MISSPELT_TAG = "ISDBTUils";

void warnOfNullTarget() {
    quor_log_std_generic(detail::LOG_LEVEL, MISSPELT_TAG,
                         "%s: ParserUtils::parseByteArray: ERROR: Invalid data target. Aborting!", MISSPELT_TAG);
}

} // namespace

void ParserUtils::parseByteArray(QUOR_U8* pData, QUOR_U8*& target, QUOR_U8 length) {
    if (target == nullptr) {
        warnOfNullTarget();
    }
    target = nullptr;
    if (length == 0) {
        quor_log_std_generic(
            detail::LOG_LEVEL, MISSPELT_TAG,
            "%s: ParserUtils::parseByteArray: ERROR: Byte array length is not greater than zero.Aborting!",
            MISSPELT_TAG);
        return;
    }
    target = new QUOR_U8[length];
    std::copy_n(pData, length, target);
}

QUOR_S32 ParserUtils::parseStr(QUOR_U8* pData, std::string& target, QUOR_U32 length, QUOR_U32 maxLength) {
    detail::Memory heap;
    const detail::Characters found = detail::findText(detail::Bytes::of(pData, maxLength, heap), length);
    if (found.taken >= 0) {
        target.assign(found.bytes.data(), found.bytes.data() + found.bytes.size());
    }
    return found.taken;
}

namespace detail {

void warnOfLongText(QUOR_U32 length, QUOR_U32 left) {
    quor_log_std_generic(
        LOG_LEVEL, MISSPELT_TAG,
        "%s: ParserUtils::parseStr: ERROR: String length exceeds available data length: %u > %u.Aborting!",
        MISSPELT_TAG, length, left);
}

QUOR_S32 readPrefixedText(const Bytes& field, Text& text) {
    return readText(field, 0, text);
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
