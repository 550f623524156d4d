#pragma once

#include "TISDBTTable.h"
#include "ait/TApplication.h"
#include "support/Bytes.h"

#include <type_traits>
#include <utility>

template <class T> constexpr bool IS_TABLE = std::is_base_of_v<Quor::TISDBTTable, T>;

/// What the caller of a parse is free to choose.
template <class T> struct Choices {
    bool outputs = true; ///< asks for the error code and the length
    int switches = 1;    ///< value of those that a parse takes
    T* previous = nullptr;
};

namespace parsing {

template <class T>
using OfTable = decltype(T::parse(std::declval<QUOR_U8*>(), QUOR_U32{}, 0, 0, std::declval<QUOR_U16*>(), nullptr));
template <class T>
using OfEntry =
    decltype(T::parse(std::declval<QUOR_U8*>(), QUOR_U32{}, 0, std::declval<QUOR_U32*>(), std::declval<QUOR_U16*>()));
template <class T>
using OfDescriptor =
    decltype(T::parse(std::declval<QUOR_U8*>(), QUOR_U32{}, std::declval<QUOR_U32*>(), std::declval<QUOR_U16*>()));

template <template <class> class Parse, class T, class = void> constexpr bool HAS = false;
template <template <class> class Parse, class T> constexpr bool HAS<Parse, T, std::void_t<Parse<T>>> = true;

} // namespace parsing

template <class T>
constexpr bool PARSES =
    parsing::HAS<parsing::OfTable, T> || parsing::HAS<parsing::OfEntry, T> || parsing::HAS<parsing::OfDescriptor, T>;

/// Bytes that nothing may be read beyond of, for as many as the class demands.
template <class T> HeapBytes bufferFor(ByteVector wire) {
    // The one class whose caller provides its fixed bytes, whatever length it states.
    constexpr std::size_t APPLICATION_HEADER = 9;
    if (std::is_same_v<T, Quor::TApplication> && wire.size() >= 6 && wire.size() < APPLICATION_HEADER) {
        wire.resize(APPLICATION_HEADER);
    }
    return HeapBytes(wire);
}

/// Calls the parse of a class, whatever its arguments are.
/// @return a new object, or null.
template <class T> T* parsed(const HeapBytes& bytes, QUOR_U32 size, const Choices<T>& choices = {}) {
    QUOR_U16 error = 0;
    QUOR_U32 length = 0;
    QUOR_U16* const errorCode = choices.outputs ? &error : nullptr;
    QUOR_U32* const parsedLength = choices.outputs ? &length : nullptr;
    if constexpr (parsing::HAS<parsing::OfTable, T>) {
        return T::parse(bytes.data(), size, choices.switches, choices.switches, errorCode, choices.previous);
    } else if constexpr (parsing::HAS<parsing::OfEntry, T>) {
        return T::parse(bytes.data(), size, choices.switches, parsedLength, errorCode);
    } else {
        return T::parse(bytes.data(), size, parsedLength, errorCode);
    }
}
