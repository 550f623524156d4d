#pragma once

#include "describing/Field.h"

#include <string>
#include <string_view>

namespace inspect {

/// What tells the elements of a list apart, in two versions of it.
class Keys {
public:
    Keys(const Fields& before, const Fields& after);

    /// The value of the field that identifies an element: "0x0131"; of a single value, the value itself; else the
    /// position.
    std::string of(const Field& element, std::size_t position) const;

private:
    std::string_view m_name; ///< of the field that identifies the elements; empty when none does
};

} // namespace inspect
