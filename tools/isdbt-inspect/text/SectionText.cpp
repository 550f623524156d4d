#include "text/SectionText.h"

#include "parsing/SectionParser.h"
#include "tables/TableKinds.h"
#include "text/FieldText.h"

#include <algorithm>
#include <fmt/chrono.h>
#include <fmt/format.h>

namespace inspect {

namespace {

std::string pidText(const SectionReport& report) {
    return report.pid ? fmt::format("  PID 0x{:04X}", *report.pid) : "";
}

std::string sectionNumbers(const LongHeader& header) {
    return fmt::format("  section {}/{}", header.sectionNumber, header.lastSectionNumber);
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

/// Appends the descriptors of a rejected section, loop by loop.
void appendDescriptorLines(Page& page, const std::vector<LoopOnWire>& loops, std::size_t indent) {
    for (const LoopOnWire& loop : loops) {
        const std::string remark = loop.remark.empty() ? "" : ' ' + loop.remark;
        appendLine(page,
                   blanks(indent) + fmt::format("descriptors of {} ({}{})", loop.name, loop.descriptors.size(), remark),
                   indent + INDENT);
        for (const DescriptorOnWire& descriptor : loop.descriptors) {
            appendDescriptorLine(page, descriptor, indent + INDENT);
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

/// "> 001F  0x52  " or, for a descriptor that is not at fault, without the mark.
constexpr std::size_t MARGIN = 14;

std::string lengthText(std::optional<std::uint8_t> length) {
    return length ? counted(*length, "byte", "bytes") : "no length";
}

/// What is wrong with a descriptor; empty when nothing is.
std::string faultOf(const DescriptorOnWire& descriptor) {
    if (!descriptor.raw.fits()) {
        return fmt::format("does not fit: {} left", descriptor.raw.body.size());
    }
    return descriptor.errorCode ? fmt::format("refused with {}", errorName(*descriptor.errorCode)) : "";
}

/// More of it than the name of the error; empty when that says all.
std::string explanationOf(const DescriptorOnWire& descriptor) {
    if (!descriptor.becauseOf.empty()) {
        return fmt::format("right by the standard; this receiver refuses it because {}", descriptor.becauseOf);
    }
    return std::string(descriptor.errorReading());
}

/// "association_tag_descriptor, skipped"
std::string nameOf(const RawDescriptor& raw) {
    return raw.name.empty() ? "unknown, skipped" : std::string(raw.name) + (raw.kind == nullptr ? ", skipped" : "");
}

} // namespace

std::string positionText(const Position& position) {
    return (position.packet != 0 ? fmt::format("  packet {}", position.packet)
                                 : fmt::format("  byte {}", position.offset)) +
           (position.seconds ? fmt::format("  {:.3f} s", *position.seconds) : "");
}

std::string utcText(std::int64_t unixTime) {
    return fmt::format("{:%Y-%m-%d %H:%M:%S} UTC", fmt::gmtime(static_cast<std::time_t>(unixTime)));
}

Line sectionTitle(const SectionReport& report) {
    Line title = Line(tableLabel(report.tableId), Ink::Heading) + pidText(report);
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

void appendDescriptorLine(Page& page, const DescriptorOnWire& descriptor, std::size_t indent, Extent extent) {
    const RawDescriptor& raw = descriptor.raw;
    const Line line =
        blanks(indent) + (descriptor.atFault() ? Line(">", Ink::Fault) : " ") +
        fmt::format(" {:04X}  0x{:02X}  {}, {}", raw.offset, raw.tag, nameOf(raw), lengthText(raw.length)) +
        (descriptor.atFault() ? "  " : "") + Line(faultOf(descriptor), Ink::Fault);
    appendLine(page, line, indent + MARGIN);
    if (const std::string explanation = explanationOf(descriptor); !explanation.empty()) {
        appendLine(page, blanks(indent + MARGIN) + Line(explanation, Ink::Remark), indent + MARGIN);
    }
    if (extent != Extent::Brief) {
        appendBytes(page, raw.body, indent + MARGIN);
    }
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
