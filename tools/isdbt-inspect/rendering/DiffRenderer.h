#pragma once

#include "rendering/KnownSections.h"
#include "rendering/Output.h"
#include "rendering/Page.h"
#include "rendering/Renderer.h"

namespace inspect {

/// What changes from version to version of a table, field by field, and from one input to the next.
class DiffRenderer : public Renderer {
public:
    DiffRenderer(Output& output, const Style& style) : m_output(output), m_style(style) {}

    void begin(const std::string& name) override;
    void section(const SectionReport& report) override;
    void end(const Summary& summary) override;

private:
    void take(Page& page, const SectionReport& report);
    void appendChange(Page& page, const SectionReport& former, SectionReport report);

    Output& m_output;
    Style m_style;
    KnownSections m_known;
};

} // namespace inspect
