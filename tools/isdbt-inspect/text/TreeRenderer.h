#pragma once

#include "arranging/Outline.h"
#include "multiplex/LatestSections.h"
#include "reports/Renderer.h"
#include "terminal/Output.h"
#include "text/Page.h"

namespace inspect {

/// The multiplex in one outline, when the input ends. An overview that does not fit on a screen becomes a brief one.
class TreeRenderer : public Renderer {
public:
    TreeRenderer(Output& output, const Style& style) : m_output(output), m_style(style) {
        m_style.wraps = true; // a branch would else go on below those of others
    }

    void begin(const std::string& name) override;
    void section(const SectionReport& report) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    Page draw(const std::vector<Node>& nodes, const Summary& summary, const Faults& faults, Extent extent) const;
    void appendRejections(Page& page, Extent extent) const;
    void appendRemarks(Page& page, std::uint64_t forgotten) const;

    Output& m_output;
    Style m_style;
    LatestSections<SectionReport, 64> m_rejections; ///< to be shown in full
};

} // namespace inspect
