#pragma once

#include "text/InText.h"

namespace inspect {

/// Each section as text, when it is first seen and at each change.
class TablesRenderer : public InText<Renderer> {
public:
    using InText::InText;

    void section(const SectionReport& report) override;
    void descriptor(const DescriptorReport& report) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;
};

} // namespace inspect
