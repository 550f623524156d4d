#ifndef QUOR_DETAIL_ARRAYS_H
#define QUOR_DETAIL_ARRAYS_H

#include "detail/Bytes.h"
#include "utils/ParserUtils.h"

#include <algorithm>
#include <memory>

/// The owned arrays of descriptors: fields that fill the rest of a body, and fields behind a length byte.
namespace Quor::detail {

/// A copy of the bytes; null when there are none.
inline std::unique_ptr<QUOR_U8[]> copyBytes(Bytes bytes) {
    if (bytes.empty()) {
        return nullptr;
    }
    std::unique_ptr<QUOR_U8[]> copy(new QUOR_U8[bytes.size()]);
    std::copy_n(bytes.data(), bytes.size(), copy.get());
    return copy;
}

/// The same, with the number of bytes in the 8 bits that descriptors keep it in.
inline std::unique_ptr<QUOR_U8[]> copyBytes(Bytes bytes, QUOR_U8& size) {
    size = static_cast<QUOR_U8>(bytes.size());
    return copyBytes(bytes);
}

/// The 16-bit words of the bytes, without an odd last byte; null when there are no bytes.
inline std::unique_ptr<QUOR_U16[]> copyWords(Bytes bytes) {
    if (bytes.empty()) {
        return nullptr;
    }
    // Room for as many words as there are bytes; callers depend on an array even for a single byte.
    std::unique_ptr<QUOR_U16[]> words(new QUOR_U16[bytes.size()]());
    for (QUOR_U32 i = 0; i < bytes.size() / 2; ++i) {
        words[i] = bytes.u16(2 * i);
    }
    return words;
}

/// The same, with the number of words in the 8 bits that descriptors keep it in.
inline std::unique_ptr<QUOR_U16[]> copyWords(Bytes bytes, QUOR_U8& count) {
    count = static_cast<QUOR_U8>(bytes.size() / 2);
    return copyWords(bytes);
}

/// Reads a length byte and the array behind it, which stays null when the length is 0.
/// @return false when @p left ends before either of them.
inline bool readByteArray(Bytes left, QUOR_U8& length, std::unique_ptr<QUOR_U8[]>& target) {
    constexpr QUOR_U32 lengthByte = 1;
    length = left.u8(0);
    if (!left.has(0, lengthByte + length)) {
        return false;
    }
    if (length != 0) {
        QUOR_U8* copy = nullptr;
        ParserUtils::parseByteArray(left.from(lengthByte).data(), copy, length);
        target.reset(copy);
    }
    return true;
}

} // namespace Quor::detail

#endif
