#pragma once

#include "describing/Field.h"

#include <string>
#include <vector>

namespace inspect {

/// A field that differs between two versions of a table.
struct Change {
    std::string path;    ///< "elementary_streams[0x0131].stream_identifier_descriptor.component_tag"
    const Field* before; ///< null when it is new
    const Field* after;  ///< null when it is gone
};

/// What differs between the fields of two versions of a table. Elements of a list are matched by what identifies them,
/// such as their service_id; elements without such a field by their position, single values by themselves, so that
/// their order does not matter.
/// @return changes that refer to the fields
std::vector<Change> compare(const Fields& before, const Fields& after);

} // namespace inspect
