#pragma once

#include "multiplex/Tables.h"
#include "reports/Renderer.h"
#include "terminal/Output.h"
#include "text/Page.h"

namespace inspect {

/// The multiplex in one outline, when the input ends.
class TreeRenderer : public Renderer {
public:
    /// @param tables the table_id of those that are shown; all when there is none
    TreeRenderer(Output& output, const Style& style, std::set<std::uint8_t> tables);

    void begin(const std::string& name) override;
    void section(const SectionReport& report) override;
    void end(const Summary& summary) override;

private:
    void keep(const SectionReport& report);
    void keepRejected(const SectionReport& report);
    std::size_t appendOutlineOf(Page& page, bool packets) const;
    void appendRejections(Page& page) const;
    void appendRemarks(Page& page, std::size_t faults) const;

    Output& m_output;
    Style m_style;
    std::set<std::uint8_t> m_shown;
    Tables::Taken m_taken;
    Tables::Refused m_refused;
    LatestSections<SectionReport, 64> m_rejections; ///< to be shown in full
};

} // namespace inspect
