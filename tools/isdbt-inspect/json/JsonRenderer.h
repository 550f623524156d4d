#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"

#include <string>

namespace inspect {

/// Each section, or descriptor that came by itself, as an object in JSON, one a line, when it is first seen and at each
/// change. Nothing else is written, so that every line is an object: what the summary says, the exit status and the
/// statistics tell.
class JsonRenderer : public Renderer {
public:
    explicit JsonRenderer(Output& output) : m_output(output) {}

    void begin(const std::string& name) override { m_source = name; }
    void section(const SectionReport& report) override;
    void descriptor(const DescriptorReport& report) override;
    void alarm(const Alarm& alarm) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    Output& m_output;
    std::string m_source;
};

} // namespace inspect
