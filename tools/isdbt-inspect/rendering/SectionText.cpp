#include "rendering/SectionText.h"

#include "rendering/DescriptorLines.h"
#include "rendering/FieldText.h"

#include <fmt/format.h>

namespace inspect {

std::string sectionTitle(const SectionReport& report, const Style& style) {
    std::string text = style.paint(Ink::Heading, report.tableName);
    if (report.pid) {
        text += fmt::format("  PID 0x{:04X}", *report.pid);
    }
    if (report.header) {
        text += fmt::format("  version {}  section {}/{}", report.header->version, report.header->sectionNumber,
                            report.header->lastSectionNumber);
        text += report.header->current ? "  current" : "  not yet current";
    }
    text += report.position.packet != 0 ? fmt::format("  packet {}", report.position.packet)
                                        : fmt::format("  byte {}", report.position.offset);
    if (report.position.seconds) {
        text += fmt::format("  {:.3f} s", *report.position.seconds);
    }
    if (report.sameVersion) {
        text += "  " + style.paint(Ink::Fault, "CHANGED WITHOUT A NEW VERSION");
    }
    if (report.damaged) {
        text += "  " + style.paint(Ink::Fault, "DAMAGED");
    }
    if (report.rejection) {
        text += "  " + style.paint(Ink::Fault, "REJECTED");
    }
    return text;
}

void appendRejection(Page& page, const Rejection& rejection, std::size_t indent) {
    const std::string margin(indent, ' ');
    const std::size_t behindLabel = indent + 7;
    appendLine(page,
               fmt::format("{}error  {} (0x{:04X})", margin, page.style.paint(Ink::Fault, rejection.errorName),
                           rejection.errorCode),
               behindLabel);
    for (const std::string& line : rejection.logLines) {
        appendLine(page, fmt::format("{}log    {}", margin, line), behindLabel);
    }
    appendDescriptorLines(page, rejection.descriptors, indent);
    page.text += fmt::format("{}bytes ({})\n", margin, rejection.section.size());
    appendDump(page, rejection.section, 2 * indent);
}

} // namespace inspect
