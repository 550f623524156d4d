#include "text/SectionText.h"

#include "text/DescriptorLines.h"
#include "text/FieldText.h"

#include <fmt/format.h>

namespace inspect {

namespace {

std::string pidText(const SectionReport& report) {
    return report.pid ? fmt::format("  PID 0x{:04X}", *report.pid) : "";
}

std::string sectionNumbers(const LongHeader& header) {
    return fmt::format("  section {}/{}", header.sectionNumber, header.lastSectionNumber);
}

std::string positionText(const Position& position) {
    return (position.packet != 0 ? fmt::format("  packet {}", position.packet)
                                 : fmt::format("  byte {}", position.offset)) +
           (position.seconds ? fmt::format("  {:.3f} s", *position.seconds) : "");
}

/// What is wrong with a section.
std::string remarks(const SectionReport& report, const Style& style) {
    std::string text;
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

} // namespace

std::string sectionTitle(const SectionReport& report, const Style& style) {
    std::string text = style.paint(Ink::Heading, report.tableName) + pidText(report);
    if (report.header) {
        text += fmt::format("  version {}", report.header->version) + sectionNumbers(*report.header);
        text += report.header->current ? "  current" : "  not yet current";
    }
    return text + positionText(report.position) + remarks(report, style);
}

std::string sectionName(const SectionReport& report, const Style& style, std::optional<std::uint8_t> formerVersion) {
    std::string text = report.tableName;
    if (!report.header) {
        return style.paint(Ink::Heading, text) + pidText(report);
    }
    const LongHeader& header = *report.header;
    text = style.paint(Ink::Heading, fmt::format("{} 0x{:04X}", text, header.extension)) + pidText(report);
    text += formerVersion && *formerVersion != header.version
                ? fmt::format("  version {} -> {}", *formerVersion, header.version)
                : fmt::format("  version {}", header.version);
    return text + sectionNumbers(header) + (header.current ? "" : "  not yet current");
}

std::string changeTitle(const SectionReport& report, const Style& style, std::optional<std::uint8_t> formerVersion) {
    return sectionName(report, style, formerVersion) + positionText(report.position) + remarks(report, style);
}

std::string descriptorTitle(const DescriptorReport& report, const Style& style) {
    return style.paint(Ink::Heading, fmt::format("{} (0x{:02X})", report.name, report.tag)) +
           fmt::format("  {}  byte {}", report.tableName, report.offset) +
           (report.damaged ? "  " + style.paint(Ink::Fault, "DAMAGED") : "") +
           (report.rejection ? "  " + style.paint(Ink::Fault, "REJECTED") : "");
}

void appendSectionBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent) {
    page.text += fmt::format("{:{}}bytes ({})\n", "", indent, bytes.size());
    appendDump(page, bytes, 2 * indent);
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
    appendSectionBytes(page, rejection.section, indent);
}

} // namespace inspect
