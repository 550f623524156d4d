#include "utils/ParserUtils.h"

#include "detail/Log.h"

#include <algorithm>

namespace Quor {

namespace {

/// The tag of this class alone; log filters depend on its spelling.
constexpr const char* LOG_TAG = "ISDBTUils";

} // namespace

void ParserUtils::parseByteArray(QUOR_U8* pData, QUOR_U8*& target, QUOR_U8 length) {
    if (target == nullptr) {
        quor_log_std_generic(detail::LOG_LEVEL, LOG_TAG,
                             "%s: ParserUtils::parseByteArray: ERROR: Invalid data target. Aborting!", LOG_TAG);
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
    QUOR_U32 delta = 0;
    if (length == 0 && maxLength != 0) {
        length = pData[0];
        --maxLength;
        ++pData;
        delta = 1;
    }
    if (maxLength < length) {
        quor_log_std_generic(
            detail::LOG_LEVEL, LOG_TAG,
            "%s: ParserUtils::parseStr: ERROR: String length exceeds available data length: %u > %u.Aborting!", LOG_TAG,
            length, maxLength);
        return -1;
    }
    target.assign(pData, pData + length);
    return static_cast<QUOR_U8>(delta + length);
}

} // namespace Quor
