#pragma once

#include "sections/Place.h"

#include <list>
#include <map>
#include <string>

namespace inspect {

/// Texts of sections, as many as there is room for: where there is not enough, the oldest go that are not current any
/// more, and then the oldest.
class KeptSections {
public:
    explicit KeptSections(std::size_t room) : m_room(room) {}

    /// @param text of the section that is at a place from now on
    void take(const Place& place, std::string text);

    /// All, in the order in which they came.
    std::string text() const;

    std::uint64_t leftOut() const { return m_leftOut; }

private:
    struct Kept {
        std::uint64_t number;
        Place place;
        std::string text;
    };

    void dropOne();

    std::size_t m_room; ///< in bytes
    std::size_t m_size = 0;
    std::uint64_t m_count = 0;
    std::uint64_t m_leftOut = 0;
    std::list<Kept> m_former;
    std::list<Kept> m_current;
    std::map<Place, std::list<Kept>::iterator> m_byPlace; ///< in m_current
};

} // namespace inspect
