#pragma once

#include "QuorDefs.h"
#include "describing/Field.h"

#include <cstdint>
#include <fmt/format.h>
#include <limits>
#include <list>
#include <memory>
#include <string_view>
#include <type_traits>

namespace inspect {

/// The elements of a list that the library addresses by position. It counts the positions of some lists in eight bits
/// and reaches only their first 256 elements.
/// @param describe Field(const Item&), or Field(Element) for elements that are no objects
template <class Holder, class Element, class Position, class Describe>
Field listByPosition(std::string_view name, const Holder& holder, QUOR_U32 size, Element (Holder::*get)(Position) const,
                     const Describe& describe) {
    Fields elements;
    for (std::uint64_t at = 0; at < size && at <= std::numeric_limits<Position>::max(); ++at) {
        Element element = (holder.*get)(static_cast<Position>(at));
        if constexpr (std::is_pointer_v<Element>) {
            elements.push_back(describe(*element));
        } else {
            elements.push_back(describe(element));
        }
    }
    const bool complete = elements.size() == size;
    return list(name, std::move(elements))
        .reads(complete ? "" : fmt::format("of {}; the others are out of reach", size));
}

/// The items of a descriptor that has nothing else in a list.
template <class Descriptor, class Describe> Field items(const Descriptor& descriptor, const Describe& describe) {
    return listByPosition("items", descriptor, descriptor.size(), &Descriptor::get, describe);
}

/// The elements of a map that the library addresses by key.
/// @param describe Field(const Item&)
template <class Holder, class Key, class Argument, class Item, class Describe>
Field listByKey(std::string_view name, const Holder& holder, std::list<Key>* (Holder::*keys)() const,
                Item* (Holder::*get)(Argument) const, const Describe& describe) {
    Fields elements;
    const std::unique_ptr<std::list<Key>> owned((holder.*keys)());
    for (const Key& key : *owned) {
        elements.push_back(describe(*(holder.*get)(key)));
    }
    return list(name, std::move(elements));
}

/// Says so when more elements of a list were sent than the library keeps.
/// @param key what it keeps one element for: "country"
inline Field keptOf(Field list, std::size_t sent, std::string_view key) {
    const bool complete = sent <= std::get<List>(list.value).elements.size();
    return complete ? list : std::move(list).reads(fmt::format("of {} sent; of each {} the last is kept", sent, key));
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

} // namespace inspect
