#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"
#include "text/AlarmText.h"

namespace inspect {

/// A form of output in text: with a heading for each of several inputs, and alarms as they come.
/// @tparam Base Renderer, or a kind of it
template <class Base> class InText : public Base {
public:
    InText(Output& output, const Style& style) : m_output(output), m_style(style) {}

    void begin(const std::string& name) override {
        Base::begin(name);
        m_output.begin(inputHeading(name, m_style));
    }

    void alarm(const Alarm& alarm) override { writeAlarm(m_output, m_style, alarm); }

protected:
    const Style& style() const { return m_style; }
    Page emptyPage() const { return {m_style, {}}; }
    void write(const Page& page) { m_output.write(page.lines); }

private:
    Output& m_output;
    Style m_style;
};

} // namespace inspect
