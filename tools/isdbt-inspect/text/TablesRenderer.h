#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"
#include "text/AlarmText.h"

namespace inspect {

/// Each section as text, when it is first seen and at each change.
class TablesRenderer : public Renderer {
public:
    TablesRenderer(Output& output, const Style& style) : m_output(output), m_style(style) {}

    void begin(const std::string& name) override;
    void section(const SectionReport& report) override;
    void descriptor(const DescriptorReport& report) override;
    void alarm(const Alarm& alarm) override { writeAlarm(m_output, m_style, alarm); }
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    Output& m_output;
    Style m_style;
};

} // namespace inspect
