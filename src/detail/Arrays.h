#ifndef QUOR_DETAIL_ARRAYS_H
#define QUOR_DETAIL_ARRAYS_H

#include "detail/Bytes.h"

#include <algorithm>
#include <memory>

/// The owned arrays of descriptors whose last field fills the rest of their body.
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

} // namespace Quor::detail

#endif
