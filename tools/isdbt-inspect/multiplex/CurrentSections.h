#pragma once

#include "multiplex/LatestSections.h"
#include "reports/Report.h"

namespace inspect {

/// A section that the library took.
struct TakenSection {
    std::optional<LongHeader> header;
    Position position;
    bool damaged;
    Fields fields;
    std::string otherZone;                ///< as in its report
    std::vector<std::uint8_t> bytes = {}; ///< all, of tables that say where applications are
};

/// A section that the library did not take.
struct RefusedSection {
    std::optional<LongHeader> header;
    Position position;
    std::string errorName;
    std::string logLine; ///< that says why; empty when there is none
};

/// The sections that are valid now, as far as they came, and those that were not taken.
class CurrentSections {
public:
    using Taken = LatestSections<TakenSection, 512>;
    using Refused = LatestSections<RefusedSection, 512>;
    using Silent = LatestSections<Position, 512>;

    /// A section says something new.
    /// @param bytes of the section
    void take(const SectionReport& report, const std::vector<std::uint8_t>& bytes = {});

    const Taken& taken() const { return m_taken; }
    const Refused& refused() const { return m_refused; }

    /// Where a section first changed without a new version, those included that are valid no more or not yet.
    const Silent& silentChanges() const { return m_silentChanges; }

private:
    void keep(const SectionReport& report, const std::vector<std::uint8_t>& bytes);

    Taken m_taken;
    Refused m_refused;
    Silent m_silentChanges;
};

} // namespace inspect
