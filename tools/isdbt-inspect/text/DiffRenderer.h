#pragma once

#include "comparing/ChangesRenderer.h"
#include "terminal/Output.h"
#include "text/Page.h"

namespace inspect {

/// What changes from version to version of a table, field by field, and from one input to the next.
class DiffRenderer : public ChangesRenderer {
public:
    DiffRenderer(Output& output, const Style& style) : m_output(output), m_style(style) {}

private:
    void tellInput(const std::string& name) override;
    void tellNew(const SectionReport& report) override;
    void tellReturn(const SectionReport& report) override;
    void tellChange(const SectionReport& former, const SectionReport& report,
                    const std::vector<Change>& changes) override;
    void tellRejection(const SectionReport& report) override;
    void tellEnd(const SectionReport& last, unsigned number) override;
    void tellMissing(const SectionReport& report) override;
    void tellOutcome(const Summary& summary, const Faults& faults) override;

    Line timed(const Line& line, const Position& position) const;
    void writeLine(const Line& line) const;

    Output& m_output;
    Style m_style;
};

} // namespace inspect
