#ifndef QUOR_DETAIL_ARRAYS_H
#define QUOR_DETAIL_ARRAYS_H

#include "detail/Bytes.h"
#include "detail/Memory.h"
#include "detail/Owned.h"

#include <algorithm>

/// The owned arrays of descriptors: fields that fill the rest of a body, and fields behind a length byte.
namespace Quor::detail {

/// A copy of the bytes; null when there are none.
inline Array<QUOR_U8> copyBytes(const Bytes& bytes) {
    if (bytes.empty()) {
        return nullptr;
    }
    Array<QUOR_U8> copy(static_cast<QUOR_U8*>(bytes.memory().take(bytes.size())));
    std::copy_n(bytes.data(), bytes.size(), copy.get());
    return copy;
}

/// A copy of an array on the heap.
inline Array<QUOR_U8> copyBytes(const Array<QUOR_U8>& bytes, QUOR_U32 size) {
    Memory heap;
    return copyBytes(Bytes(bytes.get(), size, heap));
}

/// The same, with the number of bytes in the 8 bits that descriptors keep it in.
inline Array<QUOR_U8> copyBytes(const Bytes& bytes, QUOR_U8& size) {
    size = static_cast<QUOR_U8>(bytes.size());
    return copyBytes(bytes);
}

/// The 16-bit words of the bytes, without an odd last byte; null when there are no bytes.
inline Array<QUOR_U16> copyWords(const Bytes& bytes) {
    if (bytes.empty()) {
        return nullptr;
    }
    // Quirk: room for as many words as there are bytes, so that there is an array even for a single byte.
    Array<QUOR_U16> words(static_cast<QUOR_U16*>(bytes.memory().take(bytes.size() * sizeof(QUOR_U16))));
    const QUOR_U32 count = bytes.size() / 2;
    const QUOR_U8* next = bytes.data();
    for (QUOR_U32 i = 0; i < bytes.size(); ++i, next += 2) {
        words[i] = i < count ? static_cast<QUOR_U16>(next[0] << 8 | next[1]) : QUOR_U16{0};
    }
    return words;
}

/// The same, with the number of words in the 8 bits that descriptors keep it in.
inline Array<QUOR_U16> copyWords(const Bytes& bytes, QUOR_U8& count) {
    count = static_cast<QUOR_U8>(bytes.size() / 2);
    return copyWords(bytes);
}

/// Reads a length byte and the array behind it, which stays null when the length is 0.
/// @return false when @p left ends before either of them.
bool readByteArray(const Bytes& left, QUOR_U8& length, Array<QUOR_U8>& target);

} // namespace Quor::detail

#endif
