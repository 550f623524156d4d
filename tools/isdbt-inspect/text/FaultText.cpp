#include "text/FaultText.h"

#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 4;

void append(Page& page, const std::vector<const Fault*>& faults) {
    if (faults.empty()) {
        return;
    }
    page.text += faults.size() == 1 ? "1 fault:\n" : fmt::format("{} faults:\n", faults.size());
    for (const Fault* const fault : faults) {
        const std::string about = fault->about.empty() ? "" : fault->about + ": ";
        appendLine(page, page.style.paint(Ink::Fault, "! " + about + fault->text), INDENT);
    }
}

} // namespace

void appendFaults(Page& page, const Faults& faults) {
    std::vector<const Fault*> all;
    for (const Fault& fault : faults.all()) {
        all.push_back(&fault);
    }
    append(page, all);
}

void appendOtherFaults(Page& page, const Faults& faults) {
    std::vector<const Fault*> others;
    for (const Fault& fault : faults.all()) {
        if (!fault.kind.ofSection) {
            others.push_back(&fault);
        }
    }
    append(page, others);
}

} // namespace inspect
