#pragma once

#include "placing/FieldPlaces.h"
#include "sections/BoundedMap.h"
#include "sections/Place.h"

#include <cstdint>

namespace inspect {

/// Finds out which bytes of a section its fields stand for. The library does not say where it reads, and nobody else
/// knows how it does so: the bytes are changed one by one, and what changes with a byte stands there. A change that
/// makes another section of it, with other fields or with texts of other lengths, tells little.
class FieldFinder {
public:
    /// @param fields that a section was taken for
    /// @param most bytes of sections that may be tried, in all
    /// @return none when they are not enough for it
    FieldPlaces find(const Place& place, const std::vector<std::uint8_t>& section, const Fields& fields,
                     std::uint64_t most);

    std::uint64_t tried() const { return m_tried; } ///< bytes of sections, so far

private:
    struct Found {
        std::vector<std::uint8_t> section;
        Fields fields;
        FieldPlaces places;
    };

    static bool isLike(Found& before, const std::vector<std::uint8_t>& section, const Fields& fields);

    std::uint64_t m_tried = 0;
    BoundedMap<Place, Found> m_found{64}; ///< most sections that change do so in a few bytes
};

} // namespace inspect
