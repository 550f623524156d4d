#ifndef QUOR_DETAIL_STRINGS_H
#define QUOR_DETAIL_STRINGS_H

#include "detail/Bytes.h"
#include "utils/ParserUtils.h"

#include <list>
#include <string>

namespace Quor::detail {

/// Appends strings that stand one behind the other, each after a byte with its length, until the bytes are used up.
/// @return false at a string that does not fit. One of 255 bytes fails as well: ParserUtils counts it as 0 bytes, so
///         that it could never be passed.
inline bool appendStrings(std::list<std::string>& strings, Bytes left) {
    while (!left.empty()) {
        std::string text;
        const QUOR_S32 taken = ParserUtils::parseStr(left.data(), text, 0, left.size());
        if (taken <= 0) {
            return false;
        }
        strings.push_back(std::move(text));
        left = left.from(static_cast<QUOR_U32>(taken));
    }
    return true;
}

} // namespace Quor::detail

#endif
