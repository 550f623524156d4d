#pragma once

#include "multiplex/Table.h"
#include "reports/Report.h"

namespace inspect {

/// The sections that are valid now, as far as they came, and those that were not taken.
class CurrentSections {
public:
    using Taken = LatestSections<TakenSection, 512>;
    using Refused = LatestSections<RefusedSection, 512>;

    /// A section says something new.
    void take(const SectionReport& report);

    const Taken& taken() const { return m_taken; }
    const Refused& refused() const { return m_refused; }

private:
    void keep(const SectionReport& report);

    Taken m_taken;
    Refused m_refused;
};

} // namespace inspect
