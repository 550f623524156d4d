#pragma once

#include "reports/Report.h"
#include "sections/BoundedMap.h"

#include <vector>

namespace inspect {

/// The sections that were taken last, each at its place in its table, over several inputs. Of more than a multiplex
/// has, it forgets those that it has not needed for longest.
class KnownSections {
public:
    static constexpr std::size_t CAPACITY = 512;

    struct Known {
        SectionReport report;
        unsigned input; ///< in which it, or what took its place, was last seen
    };

    /// From now on the sections are those of another input.
    void beginInput() { ++m_input; }

    /// Whether it was seen before in this input.
    bool isOfThisInput(const Known& known) const { return known.input == m_input; }

    /// The section that has the same place. Null when there is none.
    const Known* at(const SectionReport& report);

    /// The current section that a section replaces, or will replace. That of an earlier input may have had another PID.
    /// Null when there is none.
    const Known* formerOf(const SectionReport& report);

    /// Forgets the sections of a table that a version with fewer sections does not have.
    /// @return their section numbers
    std::vector<unsigned> forgetBeyond(const SectionReport& last);

    void put(const SectionReport& report);

    /// The place was seen, but what was there was not taken: what was known of it stays.
    void keep(const SectionReport& report);

    /// The current sections of the input before that were not in this one.
    std::vector<const SectionReport*> missing() const;

private:
    const Known* onAnotherPid(Place place);

    BoundedMap<Place, Known> m_known{CAPACITY};
    unsigned m_input = 0;
};

} // namespace inspect
