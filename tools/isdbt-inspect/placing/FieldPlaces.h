#pragma once

#include "describing/Field.h"
#include "sections/Ranges.h"

#include <vector>

namespace inspect {

/// Where a field stands in its section.
struct FieldPlace {
    Ranges bytes;                  ///< of a value, those that it depends on; none when they are not known
    std::vector<FieldPlace> parts; ///< of an object its fields', of a list its elements', in their order
};

using FieldPlaces = std::vector<FieldPlace>;

/// Calls for each value in the fields, at all depths.
/// @param take void(const Field& value, FieldPlace& place)
template <class Take> void forEachValue(const Fields& fields, FieldPlaces& places, const Take& take) {
    for (std::size_t at = 0; at < fields.size(); ++at) {
        if (const auto* const object = std::get_if<Object>(&fields[at].value)) {
            forEachValue(object->fields, places[at].parts, take);
        } else if (const auto* const list = std::get_if<List>(&fields[at].value)) {
            forEachValue(list->elements, places[at].parts, take);
        } else {
            take(fields[at], places[at]);
        }
    }
}

} // namespace inspect
