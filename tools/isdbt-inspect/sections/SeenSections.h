#pragma once

#include "sections/BoundedMap.h"
#include "sections/Place.h"

namespace inspect {

/// Tells sections that carry something new from repetitions. Of more places in tables than a multiplex has, it forgets
/// those that it has not seen for longest, so that it can watch a stream for ever.
class SeenSections {
public:
    /// How many places it remembers.
    static constexpr std::size_t CAPACITY = 16384;

    enum class News {
        Repetition,
        New,        ///< the first of its place in its table, or another version; without versions: other bytes
        SameVersion ///< other bytes, though the version did not change: receivers may overlook them
    };

    News look(const Section& section);

    std::size_t size() const { return m_byPlace.entries().size(); }

private:
    struct Last {
        int version;
        std::uint32_t fingerprint;
    };

    BoundedMap<Place, Last> m_byPlace{CAPACITY};
};

} // namespace inspect
