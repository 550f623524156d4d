#pragma once

#include "arranging/Outline.h"
#include "multiplex/LatestSections.h"
#include "text/InText.h"

namespace inspect {

/// The multiplex in one outline, when the input ends. An overview that does not fit on a screen becomes a brief one.
class TreeRenderer : public InText<Renderer> {
public:
    TreeRenderer(Output& output, const Style& style) : InText(output, wrapping(style)) {}

    void begin(const std::string& name) override {
        InText::begin(name);
        m_rejections = {};
    }

    void alarm(const Alarm& /*alarm*/) override {}
    void section(const SectionReport& report) override;
    void end(const Summary& summary, const Multiplex& multiplex, const Faults& faults) override;

private:
    /// A branch would else go on below those of others.
    static Style wrapping(Style style) {
        style.wraps = true;
        return style;
    }

    Page draw(const std::vector<Node>& nodes, const Summary& summary, const Faults& faults, Extent extent) const;
    void appendRejections(Page& page, Extent extent) const;
    void appendRemarks(Page& page, std::uint64_t forgotten) const;

    LatestSections<SectionReport, 64> m_rejections; ///< to be shown in full
};

} // namespace inspect
