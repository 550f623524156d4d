#include "text/SectionText.h"

#include "text/DescriptorLines.h"
#include "text/FieldText.h"

#include <algorithm>
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

/// What is wrong with a section or a descriptor.
Line remark(bool wrong, std::string_view words) {
    return wrong ? "  " + Line(words, Ink::Fault) : Line();
}

Line remarks(const SectionReport& report) {
    return remark(report.sameVersion, "CHANGED WITHOUT A NEW VERSION") + remark(report.damaged, "DAMAGED") +
           remark(report.rejection.has_value(), "REJECTED");
}

void appendError(Page& page, const Rejection& rejection, std::size_t indent, Extent extent) {
    const Line margin = blanks(indent);
    const std::size_t behindLabel = indent + 7;
    appendLine(page,
               margin + "error  " + Line(rejection.errorName, Ink::Fault) +
                   fmt::format(" (0x{:04X})", rejection.errorCode),
               behindLabel);
    if (extent != Extent::Brief) {
        for (const std::string& line : rejection.logLines) {
            appendLine(page, margin + "log    " + line, behindLabel);
        }
    }
}

/// The first descriptor at fault.
void appendFirstAtFault(Page& page, const std::vector<LoopOnWire>& loops, std::size_t indent, Extent extent) {
    for (const LoopOnWire& loop : loops) {
        const auto first = std::find_if(loop.descriptors.begin(), loop.descriptors.end(),
                                        [](const DescriptorOnWire& each) { return each.atFault(); });
        if (first != loop.descriptors.end()) {
            appendLine(page, blanks(indent) + "descriptor of " + loop.name);
            appendDescriptorLine(page, *first, 2 * indent, extent);
            return;
        }
    }
}

} // namespace

Line sectionTitle(const SectionReport& report) {
    Line title = Line(report.tableName, Ink::Heading) + pidText(report);
    if (report.header) {
        title += fmt::format("  version {}", report.header->version) + sectionNumbers(*report.header);
        title += report.header->current ? "  current" : "  not yet current";
    }
    return title + positionText(report.position) + remarks(report);
}

Line sectionName(const SectionReport& report, std::optional<std::uint8_t> formerVersion) {
    if (!report.header) {
        return Line(report.tableName, Ink::Heading) + pidText(report);
    }
    const LongHeader& header = *report.header;
    return Line(fmt::format("{} 0x{:04X}", report.tableName, header.extension), Ink::Heading) + pidText(report) +
           (formerVersion && *formerVersion != header.version
                ? fmt::format("  version {} -> {}", *formerVersion, header.version)
                : fmt::format("  version {}", header.version)) +
           sectionNumbers(header) + (header.current ? "" : "  not yet current");
}

Line changeTitle(const SectionReport& report, std::optional<std::uint8_t> formerVersion) {
    return sectionName(report, formerVersion) + positionText(report.position) + remarks(report);
}

Line descriptorTitle(const DescriptorReport& report) {
    const RawDescriptor& raw = report.onWire.raw;
    return Line(fmt::format("{} (0x{:02X})", raw.name, raw.tag), Ink::Heading) +
           fmt::format("  {}  byte {}", report.tableName, raw.offset) + remark(!raw.fits(), "DAMAGED") +
           remark(report.rejection.has_value(), "REJECTED");
}

void appendSectionBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent) {
    appendLine(page, blanks(indent) + fmt::format("bytes ({})", bytes.size()));
    appendBytes(page, bytes, 2 * indent, true);
}

void appendRejection(Page& page, const Rejection& rejection, std::size_t indent, Extent extent) {
    appendError(page, rejection, indent, extent);
    if (extent != Extent::Full) {
        appendFirstAtFault(page, rejection.loops, indent, extent);
        return;
    }
    appendDescriptorLines(page, rejection.loops, indent);
    appendSectionBytes(page, rejection.section, indent);
}

} // namespace inspect
