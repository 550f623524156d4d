#pragma once

#include "text/InText.h"

namespace inspect {

/// Why each application starts, or does not: its steps, and the verdict in words.
class ApplicationsRenderer : public InText<Renderer> {
public:
    using InText::InText;

    void section(const SectionReport& /*report*/) override {}
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
