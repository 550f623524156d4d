#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"
#include "text/AlarmText.h"

namespace inspect {

/// What carousels have brought, when the input ends.
class CarouselsRenderer : public Renderer {
public:
    CarouselsRenderer(Output& output, const Style& style) : m_output(output), m_style(style) {}

    void begin(const std::string& name) override;
    void section(const SectionReport& /*report*/) override {}
    void alarm(const Alarm& alarm) override { writeAlarm(m_output, m_style, alarm); }
    void interim(const Summary& summary, double seconds) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    Output& m_output;
    Style m_style;
};

} // namespace inspect
