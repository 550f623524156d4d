#include "text/FieldText.h"

#include "text/Columns.h"
#include "text/ValueText.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr std::string_view GAP = "  ";
constexpr const char* OFFSET = "{:04X}  ";

/// An object of so few fields stands in one line.
constexpr std::size_t FEW = 2;

/// How many bytes stand in a line behind so many columns: 16, or half of that as often as they do not fit.
std::size_t bytesPerLine(const Style& style, std::size_t used) {
    constexpr std::size_t DIGITS_AND_BLANK = 3;
    std::size_t count = 16;
    while (count > 1 && used + DIGITS_AND_BLANK * count - 1 > style.width) {
        count /= 2;
    }
    return count;
}

Line named(const Field& field) {
    return Line(field.name, Ink::Name) + (field.name.empty() ? "" : " ") + valueText(field);
}

/// "organization_id 0x0000000A (10)  application_id 0x0001 (1)"
Line inOneLine(Fields::const_iterator begin, Fields::const_iterator end) {
    std::vector<Line> texts;
    std::transform(begin, end, std::back_inserter(texts), named);
    return joined(texts);
}

/// The same behind a heading.
Line behindHeading(const Fields& fields) {
    return (fields.empty() ? "" : GAP) + inOneLine(fields.begin(), fields.end());
}

bool anyNested(const Fields& fields) {
    return std::any_of(fields.begin(), fields.end(), isNested);
}

/// Appends a line if it is not too long. @return whether it did.
bool appendIfFits(Page& page, const Line& line) {
    const bool fits = line.cells() <= page.style.width;
    if (fits) {
        appendLine(page, line);
    }
    return fits;
}

/// Whether the elements are objects of the same simple fields.
bool isTable(const List& list) {
    const auto* const first = list.elements.empty() ? nullptr : std::get_if<Object>(&list.elements.front().value);
    return first != nullptr && std::all_of(list.elements.begin(), list.elements.end(), [first](const Field& element) {
               const auto* const other = std::get_if<Object>(&element.value);
               return other != nullptr && std::equal(first->fields.begin(), first->fields.end(), other->fields.begin(),
                                                     other->fields.end(), [](const Field& one, const Field& another) {
                                                         return one.name == another.name && !isNested(another);
                                                     });
           });
}

std::vector<Row> tableRows(const List& list) {
    std::vector<Row> rows(1);
    for (const Field& field : std::get<Object>(list.elements.front().value).fields) {
        rows.front().emplace_back(field.name, Ink::Name);
    }
    for (const Field& element : list.elements) {
        const Fields& fields = std::get<Object>(element.value).fields;
        std::transform(fields.begin(), fields.end(), std::back_inserter(rows.emplace_back()), valueText);
    }
    return rows;
}

/// Appends a list as a table, a line for each element below a line with the names of their fields.
/// @return whether it did: the elements must be objects of the same fields, none of them nested, and the lines must not
///         become too long
bool appendTable(Page& page, const List& list, std::size_t indent) {
    if (!isTable(list)) {
        return false;
    }
    std::vector<Row> rows = tableRows(list);
    std::vector<Column::Kind> kinds(rows.front().size(), Column::Kind::Name);
    const Grid grid(std::move(kinds), std::move(rows));
    if (indent + grid.width(GAP.size()) > page.style.width) {
        return false;
    }
    grid.append(page, GAP.size(), indent);
    return true;
}

/// An element of a list. Its number stands in the margin of its first line.
/// @param number with the margin
void appendElement(Page& page, const Field& element, const Line& number) {
    const std::size_t margin = number.cells();
    const auto* const inner = std::get_if<Object>(&element.value);
    if (inner == nullptr || inner->fields.empty()) {
        appendLine(page, number + valueText(element), margin);
        return;
    }
    const Fields& fields = inner->fields;
    const auto firstNested = std::find_if(fields.begin(), fields.end(), isNested);
    if (std::all_of(firstNested, fields.end(), isNested) &&
        appendIfFits(page, number + inOneLine(fields.begin(), firstNested))) {
        appendFields(page, Fields(firstNested, fields.end()), margin);
        return;
    }
    Page lines = pageBehind(margin, page.style);
    appendFields(lines, fields, 0);
    appendPage(page, number, blanks(margin), lines);
}

void appendList(Page& page, const Field& field, std::size_t indent) {
    const Fields& elements = std::get<List>(field.value).elements;
    const std::string remark = field.reading.empty() ? "" : ' ' + field.reading;
    const Line heading = blanks(indent) + Line(field.name, Ink::Name) + fmt::format(" ({}{})", elements.size(), remark);
    if (!anyNested(elements) && appendIfFits(page, heading + behindHeading(elements))) {
        return;
    }
    appendLine(page, heading, indent + INDENT);
    if (elements.empty() || appendTable(page, std::get<List>(field.value), indent + INDENT)) {
        return;
    }
    const std::size_t margin = indent + INDENT + fmt::formatted_size("[{}] ", elements.size() - 1);
    for (std::size_t position = 0; position < elements.size(); ++position) {
        const Line number = blanks(indent + INDENT) + fmt::format("[{}]", position);
        appendElement(page, elements[position], padded(number, margin));
    }
}

void appendObject(Page& page, const Field& field, std::size_t indent) {
    const Fields fields = besideHeading(std::get<Object>(field.value).fields);
    const Line heading = blanks(indent) + headingOf(field);
    if (fields.size() <= FEW && !anyNested(fields) && appendIfFits(page, heading + behindHeading(fields))) {
        return;
    }
    appendLine(page, heading, indent + INDENT);
    appendFields(page, fields, indent + INDENT);
}

/// @param valueAt where the values of fields begin whose names stand below each other
void appendSimple(Page& page, const Field& field, std::size_t indent, std::size_t valueAt) {
    const Line name = blanks(indent) + Line(field.name, Ink::Name) + GAP;
    const Line line = padded(name, valueAt) + valueText(field);
    const auto* const bytes = std::get_if<Bytes>(&field.value);
    if (bytes == nullptr || line.cells() <= page.style.width || name.cells() > valueAt) {
        appendLine(page, line, valueAt);
        return;
    }
    // Bytes that do not fit behind their name go on below each other.
    Page lines = pageBehind(valueAt, page.style);
    appendBytes(lines, bytes->bytes, 0);
    appendPage(page, padded(name, valueAt), blanks(valueAt), lines);
}

} // namespace

void appendFields(Page& page, const Fields& fields, std::size_t indent) {
    std::size_t valueAt = indent + INDENT;
    for (const Field& field : fields) {
        const std::size_t end = indent + field.name.size() + GAP.size();
        valueAt = isNested(field) || end > widestMargin(page.style) ? valueAt : std::max(valueAt, end);
    }
    for (const Field& field : fields) {
        if (std::holds_alternative<Object>(field.value)) {
            appendObject(page, field, indent);
        } else if (std::holds_alternative<List>(field.value)) {
            appendList(page, field, indent);
        } else {
            appendSimple(page, field, indent, valueAt);
        }
    }
}

void appendBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent, bool offsets) {
    const std::size_t margin = indent + (offsets ? fmt::formatted_size(OFFSET, 0) : 0);
    const std::size_t perLine = bytesPerLine(page.style, margin);
    for (std::size_t at = 0; at < bytes.size(); at += perLine) {
        const auto* const begin = bytes.data() + at;
        const auto* const end = begin + std::min(perLine, bytes.size() - at);
        appendLine(page,
                   blanks(indent) + (offsets ? fmt::format(OFFSET, at) : "") +
                       fmt::format("{:02X}", fmt::join(begin, end, " ")),
                   margin);
    }
}

} // namespace inspect
