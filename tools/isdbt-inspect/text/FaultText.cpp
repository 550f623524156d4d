#include "text/FaultText.h"

#include <fmt/format.h>

namespace inspect {

void appendFaults(Page& page, const Faults& faults, Listed listed) {
    Page lines{page.style, {}};
    std::size_t count = 0;
    for (const Fault& fault : faults.all()) {
        const bool isListed = fault.kind.shownBy == FaultKind::ShownBy::Fault ||
                              (fault.kind.shownBy == FaultKind::ShownBy::Section && listed == Listed::All);
        if (isListed) {
            const std::string about = fault.about.empty() ? "" : fault.about + ": ";
            appendLine(lines, {"! " + about + fault.text, Ink::Fault}, 2 * INDENT);
            ++count;
        }
    }
    if (count != 0) {
        appendLine(page, fmt::format("{} {}:", count, count == 1 ? "fault" : "faults"));
        appendPage(page, {}, {}, lines);
    }
}

} // namespace inspect
