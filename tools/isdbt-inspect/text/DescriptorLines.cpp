#include "text/DescriptorLines.h"

#include "text/FieldText.h"
#include "text/ValueText.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;

/// "> 001F  0x52  " or, for a descriptor that is not at fault, without the mark.
constexpr std::size_t MARGIN = 14;

const Field& find(const Field& descriptor, std::string_view name) {
    const Fields& fields = std::get<Object>(descriptor.value).fields;
    return *std::find_if(fields.begin(), fields.end(), [name](const Field& each) { return each.name == name; });
}

std::int64_t numberOf(const Field& descriptor, std::string_view name) {
    return std::get<Number>(find(descriptor, name).value).value;
}

/// What is wrong with a descriptor; empty when nothing is.
std::string faultOf(const Field& descriptor) {
    if (!std::get<bool>(find(descriptor, "fits").value)) {
        return fmt::format("does not fit: {} left", std::get<Bytes>(find(descriptor, "bytes").value).bytes.size());
    }
    const Field& error = find(descriptor, "error_code");
    return std::holds_alternative<Absent>(error.value) ? "" : "refused with " + error.codeName;
}

} // namespace

void appendDescriptorLine(Page& page, const Field& descriptor, std::size_t indent) {
    const std::string fault = faultOf(descriptor);
    const std::string& name = find(descriptor, "descriptor_tag").codeName;
    const bool known = std::get<bool>(find(descriptor, "known").value);
    const std::string named = name.empty() ? "unknown, skipped" : name + (known ? "" : ", skipped");
    const Field& length = find(descriptor, "length");
    const std::string line = fmt::format(
        "{:{}}{} {:04X}  0x{:02X}  {}, {}{}", "", indent, fault.empty() ? " " : page.style.paint(Ink::Fault, ">"),
        numberOf(descriptor, "offset"), numberOf(descriptor, "descriptor_tag"), named,
        std::holds_alternative<Absent>(length.value) ? "no length" : valueText(length, page.style),
        fault.empty() ? "" : "  " + page.style.paint(Ink::Fault, fault));
    appendLine(page, line, indent + MARGIN);
    appendBytes(page, std::get<Bytes>(find(descriptor, "bytes").value).bytes, indent + MARGIN);
}

void appendDescriptorLines(Page& page, const Fields& loops, std::size_t indent) {
    for (const Field& loop : loops) {
        const Fields& descriptors = std::get<List>(loop.value).elements;
        page.text += fmt::format("{:{}}descriptors of {} ({}{})\n", "", indent, loop.name, descriptors.size(),
                                 loop.reading.empty() ? "" : ' ' + loop.reading);
        for (const Field& descriptor : descriptors) {
            appendDescriptorLine(page, descriptor, indent + INDENT);
        }
    }
}

} // namespace inspect
