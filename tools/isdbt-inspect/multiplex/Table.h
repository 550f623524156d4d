#pragma once

#include "describing/Field.h"
#include "multiplex/LatestSections.h"
#include "sections/Section.h"

#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// A section that the library took.
struct TakenSection {
    std::optional<LongHeader> header;
    Position position;
    bool damaged;
    Fields fields;
    std::string otherZone; ///< as in its report
};

/// A section that the library did not take.
struct RefusedSection {
    std::optional<LongHeader> header;
    Position position;
    std::string errorName;
    std::string logLine; ///< that says why; empty when there is none
};

/// What came of a table.
struct Table {
    TableKey key;
    std::vector<const TakenSection*> taken;
    std::vector<const RefusedSection*> refused;
    std::vector<Position> silentChanges; ///< where each section first changed without a new version

    /// What it says beside a list of entries: the fields of its first section, and the descriptors of all.
    Fields beside(std::string_view list) const;

    /// The elements of a list that goes on from section to section.
    std::vector<const Fields*> entries(std::string_view list) const;

    /// Whether it is known whole, so that what it does not say is not there.
    bool complete() const;

    /// The numbers of sections of which nothing is known.
    std::vector<unsigned> missingSections() const;
};

} // namespace inspect
