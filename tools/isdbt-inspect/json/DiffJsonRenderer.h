#pragma once

#include "comparing/ChangesRenderer.h"
#include "terminal/Output.h"

#include <string>

namespace inspect {

/// What changes from version to version of a table and from one input to the next: an object in JSON for each section
/// that something becomes of, with its fields that differ.
class DiffJsonRenderer : public ChangesRenderer {
public:
    explicit DiffJsonRenderer(Output& output) : m_output(output) {}

private:
    void tellInput(const std::string& name) override { m_source = name; }
    void tell(const Fate& fate) override;
    void tellAlarm(const Alarm& alarm) override;
    void tellOutcome(const Summary& summary, const Faults& faults) override;

    Output& m_output;
    std::string m_source;
};

} // namespace inspect
