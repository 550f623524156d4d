#include "text/FaultText.h"

#include <fmt/format.h>

namespace inspect {

void appendFaults(Page& page, const Faults& faults, Listed listed) {
    constexpr std::size_t INDENT = 4;
    Page lines{page.style, {}};
    std::size_t count = 0;
    for (const Fault& fault : faults.all()) {
        if (listed == Listed::All || !fault.kind.ofSection) {
            const std::string about = fault.about.empty() ? "" : fault.about + ": ";
            appendLine(lines, page.style.paint(Ink::Fault, "! " + about + fault.text), INDENT);
            ++count;
        }
    }
    if (count != 0) {
        page.text += fmt::format("{} {}:\n", count, count == 1 ? "fault" : "faults") + lines.text;
    }
}

} // namespace inspect
