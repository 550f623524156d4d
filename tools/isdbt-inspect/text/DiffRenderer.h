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
    void tell(const Fate& fate) override;
    void tellAlarm(const Alarm& alarm) override;
    void tellOutcome(const Summary& summary, const Faults& faults) override;

    Output& m_output;
    Style m_style;
};

} // namespace inspect
