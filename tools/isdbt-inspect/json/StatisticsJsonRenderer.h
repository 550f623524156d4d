#pragma once

#include "reports/Renderer.h"
#include "terminal/Output.h"

#include <string>

namespace inspect {

/// The statistics of a source when it ends: an object in JSON for each PID, and behind it one for each of its tables;
/// and at last one for the stream.
class StatisticsJsonRenderer : public Renderer {
public:
    explicit StatisticsJsonRenderer(Output& output) : m_output(output) {}

    void begin(const std::string& name) override { m_source = name; }
    void section(const SectionReport& /*report*/) override {}
    void alarm(const Alarm& alarm) override;
    void interim(const Summary& summary, double seconds) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    Output& m_output;
    std::string m_source;
};

} // namespace inspect
