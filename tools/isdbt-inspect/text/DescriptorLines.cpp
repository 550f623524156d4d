#include "text/DescriptorLines.h"

#include "parsing/SectionParser.h"
#include "text/FieldText.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// "> 001F  0x52  " or, for a descriptor that is not at fault, without the mark.
constexpr std::size_t MARGIN = 14;

std::string lengthText(std::optional<std::uint8_t> length) {
    return length ? fmt::format("{} {}", *length, *length == 1 ? "byte" : "bytes") : "no length";
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

} // namespace inspect
