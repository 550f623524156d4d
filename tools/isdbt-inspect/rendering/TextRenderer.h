#pragma once

#include "rendering/Output.h"
#include "rendering/Renderer.h"

namespace inspect {

/// Text for people.
class TextRenderer : public Renderer {
public:
    explicit TextRenderer(Output& output) : m_output(output) {}

    void section(const SectionReport& report) override;
    void summary(const Summary& summary) override;

private:
    Output& m_output;
};

} // namespace inspect
