#pragma once

#include "comparing/Comparison.h"
#include "comparing/KnownSections.h"
#include "reports/Renderer.h"

#include <vector>

namespace inspect {

/// What becomes of a section.
struct Fate {
    enum Kind {
        New,
        Returned, ///< it is what it was, after another one at its place
        Changed,
        Rejected,
        Ended,  ///< its table has fewer sections than before
        Missing ///< an earlier input had it, this one does not
    };

    Kind kind;
    const SectionReport& report;           ///< when it ended, of the last one of its table
    const SectionReport* former = nullptr; ///< when it changed
    std::vector<Change> changes = {};      ///< the same
    unsigned ended = 0;                    ///< the number of the section that ended
};

/// Finds out what becomes of each section, from one to the next and from one input to the next. How it is told is left
/// to the forms of output.
class ChangesRenderer : public Renderer {
public:
    void begin(const std::string& /*name*/) override { m_known.beginInput(); }
    void section(const SectionReport& report) final;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) final;

private:
    virtual void tell(const Fate& fate) = 0;
    virtual void tellOutcome(const Summary& summary, const Faults& faults) = 0;

    void take(const SectionReport& report);

    KnownSections m_known;
};

} // namespace inspect
