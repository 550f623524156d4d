#pragma once

#include "QuorDefs.h"
#include "describing/Field.h"
#include "describing/Readings.h"

#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <list>
#include <memory>
#include <string_view>

namespace inspect {

/// The elements of a list that the library addresses by position. It counts the positions of some lists in eight bits
/// and reaches only their first 256 elements.
/// @param get Field(Position)
template <class Position, class Get> Field listByPosition(std::string_view name, QUOR_U32 size, const Get& get) {
    Fields elements;
    for (std::uint64_t at = 0; at < size && at <= std::numeric_limits<Position>::max(); ++at) {
        elements.push_back(get(static_cast<Position>(at)));
    }
    const bool complete = elements.size() == size;
    return list(name, std::move(elements))
        .reads(complete ? "" : fmt::format("of {}; the others are out of reach", size));
}

/// The elements of a map that the library addresses by key.
/// @param keys a list of them, which is the caller's
/// @param get  Field(const Key&)
template <class Key, class Get> Field listByKey(std::string_view name, std::list<Key>* keys, const Get& get) {
    Fields elements;
    const std::unique_ptr<std::list<Key>> owned(keys);
    for (const Key& key : *owned) {
        elements.push_back(get(key));
    }
    return list(name, std::move(elements));
}

/// The numbers of an array.
/// @param hexDigits as in Number
template <class Value> Field numbers(std::string_view name, const Value* values, std::size_t count, int hexDigits) {
    Fields elements;
    for (std::size_t at = 0; at < count; ++at) {
        elements.push_back(identifier("", values[at], hexDigits));
    }
    return list(name, std::move(elements));
}

/// The same, if they stand for something.
template <class Value>
Field codes(std::string_view name, const Value* values, std::size_t count, int hexDigits, const NameList& names) {
    Field all = numbers(name, values, count, hexDigits);
    for (Field& each : std::get<List>(all.value).elements) {
        each = std::move(each).named(names);
    }
    return all;
}

/// The frequencies of an array, in units of 1/7 MHz.
inline Field frequencies(std::string_view name, const QUOR_U16* sevenths, std::size_t count) {
    Field all = numbers(name, sevenths, count, 0);
    for (Field& each : std::get<List>(all.value).elements) {
        each = std::move(each).in("x 1/7 MHz").reads(megahertz(*sevenths++));
    }
    return all;
}

} // namespace inspect
