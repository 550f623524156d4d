#include "text/FieldText.h"

#include "describing/StandardReadings.h"
#include "text/TableText.h"
#include "text/ValueText.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;
constexpr std::string_view GAP = "  ";

/// An object of so few fields stands in one line.
constexpr std::size_t FEW = 2;

/// What stands in parentheses behind the name of a descriptor rather than among its fields.
constexpr std::string_view TAG = "descriptor_tag";
constexpr std::string_view INHERITED = "inherited";

/// How many bytes stand in a line behind so many columns: 16, or half of that as often as they do not fit.
std::size_t bytesPerLine(const Style& style, std::size_t used) {
    constexpr std::size_t DIGITS_AND_BLANK = 3;
    std::size_t count = 16;
    while (count > 1 && used + DIGITS_AND_BLANK * count - 1 > style.width) {
        count /= 2;
    }
    return count;
}

bool isInHeading(const Field& field) {
    return field.name == TAG || field.name == INHERITED;
}

/// "transport_protocol_descriptor (0x02, inherited)"
std::string headingOf(const Field& field, const Style& style) {
    std::vector<std::string> remarks;
    for (const Field& each : std::get<Object>(field.value).fields) {
        if (each.name == TAG) {
            remarks.insert(remarks.begin(), fmt::format("0x{:02X}", std::get<Number>(each.value).value));
            if (!each.codeName.empty()) {
                remarks.push_back(each.codeName);
            }
        } else if (each.name == INHERITED) {
            remarks.emplace_back(INHERITED);
        }
    }
    const std::string name = style.paint(Ink::Name, field.name);
    return remarks.empty() ? name : fmt::format("{} ({})", name, fmt::join(remarks, ", "));
}

std::string named(const Field& field, const Style& style) {
    const std::string name = field.name.empty() ? "" : style.paint(Ink::Name, field.name) + ' ';
    return name + valueText(field, style);
}

/// "organization_id 0x0000000A (10)  application_id 0x0001 (1)"
std::string inOneLine(Fields::const_iterator begin, Fields::const_iterator end, const Style& style) {
    std::vector<std::string> texts;
    std::transform(begin, end, std::back_inserter(texts), [&style](const Field& field) { return named(field, style); });
    return fmt::format("{}", fmt::join(texts, GAP));
}

/// The same behind a heading.
std::string behindHeading(const Fields& fields, const Style& style) {
    return fields.empty() ? "" : std::string(GAP) + inOneLine(fields.begin(), fields.end(), style);
}

bool anyNested(const Fields& fields) {
    return std::any_of(fields.begin(), fields.end(), isNested);
}

/// Appends a heading with something behind it, if that fits in a line. @return whether it did.
bool appendInOneLine(Page& page, const std::string& heading, const std::string& line) {
    if (columns(heading) + columns(line) > page.style.width) {
        return false;
    }
    page.text += heading + line + '\n';
    return true;
}

/// An element of a list. Its number stands in the margin of its first line.
/// @param number with the margin
void appendElement(Page& page, const Field& element, const std::string& number) {
    const auto* const inner = std::get_if<Object>(&element.value);
    if (inner == nullptr || inner->fields.empty()) {
        appendLine(page, number + valueText(element, page.style), number.size());
        return;
    }
    const Fields& fields = inner->fields;
    const auto firstNested = std::find_if(fields.begin(), fields.end(), isNested);
    if (std::all_of(firstNested, fields.end(), isNested) &&
        appendInOneLine(page, number, inOneLine(fields.begin(), firstNested, page.style))) {
        appendFields(page, Fields(firstNested, fields.end()), number.size());
        return;
    }
    Page lines{page.style, {}};
    appendFields(lines, fields, columns(number));
    page.text += number + lines.text.substr(columns(number));
}

void appendList(Page& page, const Field& field, std::size_t indent) {
    const Fields& elements = std::get<List>(field.value).elements;
    const std::string remark = field.reading.empty() ? "" : ' ' + field.reading;
    const std::string heading =
        fmt::format("{:{}}{} ({}{})", "", indent, page.style.paint(Ink::Name, field.name), elements.size(), remark);
    if (!anyNested(elements) && appendInOneLine(page, heading, behindHeading(elements, page.style))) {
        return;
    }
    appendLine(page, heading, indent + INDENT);
    if (elements.empty() || appendTable(page, std::get<List>(field.value), indent + INDENT)) {
        return;
    }
    const std::size_t margin = indent + INDENT + fmt::formatted_size("[{}] ", elements.size() - 1);
    for (std::size_t position = 0; position < elements.size(); ++position) {
        const std::string number = fmt::format("{:{}}[{}]", "", indent + INDENT, position);
        appendElement(page, elements[position], padded(number, margin));
    }
}

void appendObject(Page& page, const Field& field, std::size_t indent) {
    Fields fields;
    const Fields ordered = standardFirst(std::get<Object>(field.value).fields);
    std::remove_copy_if(ordered.begin(), ordered.end(), std::back_inserter(fields), isInHeading);
    const std::string heading = std::string(indent, ' ') + headingOf(field, page.style);
    if (fields.size() <= FEW && !anyNested(fields) &&
        appendInOneLine(page, heading, behindHeading(fields, page.style))) {
        return;
    }
    page.text += heading + '\n';
    appendFields(page, fields, indent + INDENT);
}

void appendSimple(Page& page, const Field& field, std::size_t nameWidth, std::size_t indent) {
    const std::size_t valueAt = indent + nameWidth + GAP.size();
    const std::string name =
        std::string(indent, ' ') + padded(page.style.paint(Ink::Name, field.name), nameWidth + GAP.size());
    const std::string value = valueText(field, page.style);
    const auto* const bytes = std::get_if<Bytes>(&field.value);
    if (bytes == nullptr || bytes->bytes.empty() || valueAt + columns(value) <= page.style.width) {
        appendLine(page, name + value, valueAt);
        return;
    }
    // Bytes that do not fit behind their name go on below each other.
    Page lines{page.style, {}};
    appendBytes(lines, bytes->bytes, valueAt);
    page.text += name + lines.text.substr(valueAt);
}

} // namespace

void appendFields(Page& page, const Fields& fields, std::size_t indent) {
    std::size_t nameWidth = 0;
    for (const Field& field : fields) {
        nameWidth = std::max(nameWidth, isNested(field) ? 0 : field.name.size());
    }
    for (const Field& field : fields) {
        if (std::holds_alternative<Object>(field.value)) {
            appendObject(page, field, indent);
        } else if (std::holds_alternative<List>(field.value)) {
            appendList(page, field, indent);
        } else {
            appendSimple(page, field, nameWidth, indent);
        }
    }
}

void appendBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent) {
    const std::size_t perLine = bytesPerLine(page.style, indent);
    for (std::size_t at = 0; at < bytes.size(); at += perLine) {
        const auto* const begin = bytes.data() + at;
        const auto* const end = begin + std::min(perLine, bytes.size() - at);
        page.text += fmt::format("{:{}}{:02X}\n", "", indent, fmt::join(begin, end, " "));
    }
}

void appendDump(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent) {
    constexpr std::size_t OFFSET = 6; // with its gap
    const std::size_t perLine = bytesPerLine(page.style, indent + OFFSET);
    for (std::size_t at = 0; at < bytes.size(); at += perLine) {
        Page line{page.style, {}};
        appendBytes(line,
                    {bytes.begin() + static_cast<std::ptrdiff_t>(at),
                     bytes.begin() + static_cast<std::ptrdiff_t>(std::min(at + perLine, bytes.size()))},
                    0);
        page.text += fmt::format("{:{}}{:04X}  {}", "", indent, at, line.text);
    }
}

} // namespace inspect
