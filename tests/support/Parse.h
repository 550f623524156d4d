#pragma once

#include "TISDBTTable.h"
#include "support/Bytes.h"
#include "support/LogCapture.h"
#include "support/TakenList.h"

#include <memory>
#include <type_traits>

/// What the error code and the length hold before a parse, to show what a parse leaves alone.
constexpr QUOR_U16 PRESET_ERROR = 0x7777;
constexpr QUOR_U32 PRESET_LENGTH = 77777;

/// All that a caller sees of one parse. The bytes live as long as the result: descriptors point into them.
template <class T> struct Parsed {
    HeapBytes bytes;
    std::unique_ptr<T> object;
    QUOR_U16 error = PRESET_ERROR;
    QUOR_U32 length = PRESET_LENGTH;
    Lines lines;

    explicit Parsed(const ByteVector& wire) : bytes(wire) {}
    T* operator->() const { return object.get(); }
};

/// Parses a descriptor or an item over an exact-size copy of its bytes.
template <class T> Parsed<T> parseBytes(const ByteVector& wire) {
    Parsed<T> result(wire);
    const LogCapture log;
    result.object.reset(T::parse(result.bytes.data(), result.bytes.size(), &result.length, &result.error));
    result.lines = log.lines();
    return result;
}

/// Parses an entry of a table (the classes with an int argument) over an exact-size copy of its bytes.
template <class T> Parsed<T> parseEntry(const ByteVector& wire) {
    Parsed<T> result(wire);
    const LogCapture log;
    result.object.reset(T::parse(result.bytes.data(), result.bytes.size(), 1, &result.length, &result.error));
    result.lines = log.lines();
    return result;
}

/// Parses a section over an exact-size copy of its bytes. Both switches are on.
template <class T> Parsed<T> parseSection(const ByteVector& wire, T* previous = nullptr) {
    Parsed<T> result(wire);
    const LogCapture log;
    result.object.reset(T::parse(result.bytes.data(), result.bytes.size(), 1, 1, &result.error, previous));
    result.lines = log.lines();
    return result;
}

template <class T> constexpr bool IS_TABLE = std::is_base_of<Quor::TISDBTTable, T>::value;

template <class T, class = void> constexpr bool IS_ENTRY = false;
template <class T> constexpr bool IS_ENTRY<T, std::void_t<decltype(T::parse(nullptr, 0U, 1, nullptr, nullptr))>> = true;

/// Parses whatever is of that class.
template <class T> Parsed<T> parseAny(const ByteVector& wire) {
    if constexpr (IS_TABLE<T>) {
        return parseSection<T>(wire);
    } else if constexpr (IS_ENTRY<T>) {
        return parseEntry<T>(wire);
    } else {
        return parseBytes<T>(wire);
    }
}
