#pragma once

#include "comparing/Comparison.h"
#include "comparing/KnownSections.h"
#include "reports/Renderer.h"

#include <vector>

namespace inspect {

/// Finds out what becomes of each section, from one to the next and from one input to the next. How it is told is left
/// to the forms of output.
class ChangesRenderer : public Renderer {
public:
    void begin(const std::string& name) final;
    void section(const SectionReport& report) final;
    void alarm(const Alarm& alarm) final { tellAlarm(alarm); }
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) final;

private:
    virtual void tellInput(const std::string& name) = 0;
    virtual void tellNew(const SectionReport& report) = 0;

    /// The section is what it was, after another one at its place.
    virtual void tellReturn(const SectionReport& report) = 0;

    virtual void tellChange(const SectionReport& former, const SectionReport& report,
                            const std::vector<Change>& changes) = 0;
    virtual void tellRejection(const SectionReport& report) = 0;

    /// The table has fewer sections than before.
    /// @param number of the section that is no more
    virtual void tellEnd(const SectionReport& last, unsigned number) = 0;

    /// An earlier input had the section, this one does not.
    virtual void tellMissing(const SectionReport& report) = 0;

    virtual void tellAlarm(const Alarm& alarm) = 0;
    virtual void tellOutcome(const Summary& summary, const Faults& faults) = 0;

    void take(const SectionReport& report);

    KnownSections m_known;
};

} // namespace inspect
