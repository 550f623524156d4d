#include "text/CarouselsRenderer.h"

#include "text/CarouselText.h"
#include "text/FaultText.h"
#include "text/SummaryText.h"

#include <fmt/format.h>

namespace inspect {

void CarouselsRenderer::begin(const std::string& name) {
    m_output.begin(inputHeading(name, m_style));
}

void CarouselsRenderer::interim(const Summary& summary, double seconds) {
    Page page{m_style, {}};
    appendLine(page, {fmt::format("-- {:.1f} s --", seconds), Ink::Heading});
    appendCarousels(page, summary);
    m_output.write(page.lines);
}

void CarouselsRenderer::end(const Summary& summary, const Multiplex& /*multiplex*/, const Faults& faults) {
    Page page{m_style, {}};
    appendCarousels(page, summary);
    appendChecks(page, summary);
    appendFaults(page, faults, Listed::All);
    appendLine(page, summaryText(summary), INDENT);
    m_output.write(page.lines);
}

} // namespace inspect
