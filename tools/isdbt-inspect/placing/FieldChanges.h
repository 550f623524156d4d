#pragma once

#include "placing/FieldPlaces.h"

namespace inspect {

/// What became of fields that still are the same ones.
struct FieldChanges {
    struct Value {
        const Field* before;
        const Field* after;
        FieldPlace* place;
    };

    std::vector<Value> values; ///< those that are others
    bool moved = false;        ///< entries stand at other places of their list
};

/// Finds the values that are not what they were, whatever their readings say. Texts and bytes of another length are
/// other fields.
/// @param places of the fields before
/// @return whether the fields still are the same ones
bool findChanges(const Fields& before, const Fields& after, FieldPlaces& places, FieldChanges& changes);

} // namespace inspect
