#pragma once

#include "text/InText.h"

namespace inspect {

/// What came of each table on each PID, and how often, when the input ends. Before that, sections that are rejected.
class StatisticsRenderer : public InText<Renderer> {
public:
    using InText::InText;

    void section(const SectionReport& report) override;
    void interim(const Summary& summary, double seconds) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
