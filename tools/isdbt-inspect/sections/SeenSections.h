#pragma once

#include "sections/Section.h"

#include <map>
#include <tuple>

namespace inspect {

/// Tells sections that carry something new from repetitions.
class SeenSections {
public:
    enum class News {
        Repetition,
        New,        ///< the first of its place in its table, or another version; without versions: other bytes
        SameVersion ///< other bytes, though the version did not change: receivers may overlook them
    };

    News look(const Section& section);

private:
    /// PID, table_id, table_id_extension, section_number, current_next_indicator. The next version of a table is
    /// announced beside the current one.
    using Place = std::tuple<Pid, std::uint8_t, std::uint16_t, std::uint8_t, bool>;

    struct Last {
        int version;
        std::uint32_t fingerprint;
    };

    std::map<Place, Last> m_last;
};

} // namespace inspect
