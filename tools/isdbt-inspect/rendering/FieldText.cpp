#include "rendering/FieldText.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

constexpr std::size_t INDENT = 2;
constexpr std::size_t GAP = 2;
constexpr std::size_t WIDTH = 100;
constexpr std::size_t BYTES_PER_LINE = 16;

using Row = std::vector<std::string>;

template <class Type> bool holds(const Field& field) {
    return std::holds_alternative<Type>(field.value);
}

bool isNested(const Field& field) {
    return holds<List>(field) || holds<Object>(field);
}

/// Keeps the terminal safe from what is broadcast.
std::string quoted(const std::string& raw) {
    std::string text = "\"";
    for (const char character : raw) {
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            text += '\\';
            text += character;
        } else if (byte >= 0x20 && byte < 0x7F) {
            text += character;
        } else {
            text += fmt::format("\\x{:02X}", byte);
        }
    }
    return text + '"';
}

struct ValueText {
    std::string operator()(Absent /*value*/) const { return "none"; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(const Text& value) const { return quoted(value.raw); }
    std::string operator()(const List& /*value*/) const { return {}; }
    std::string operator()(const Object& /*value*/) const { return {}; }

    std::string operator()(const Number& number) const {
        return number.hexDigits == 0 ? std::to_string(number.value)
                                     : fmt::format("0x{:0{}X} ({})", static_cast<std::uint64_t>(number.value),
                                                   number.hexDigits, number.value);
    }

    std::string operator()(const Bytes& value) const {
        return value.bytes.empty() ? "none" : fmt::format("{:02X}", fmt::join(value.bytes, " "));
    }
};

/// "1 behind UTC", "10800 s = -03:00"
std::string valueText(const Field& field) {
    std::string text = std::visit(ValueText{}, field.value);
    if (!field.unit.empty()) {
        text += ' ' + field.unit;
    }
    if (!field.codeName.empty()) {
        text += ' ' + field.codeName;
    }
    if (!field.reading.empty()) {
        text += " = " + field.reading;
    }
    return text;
}

/// Whether the elements are objects of the same simple fields.
bool isTable(const List& list) {
    const auto* const first = std::get_if<Object>(&list.elements.front().value);
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
        rows.front().push_back(field.name);
    }
    for (const Field& element : list.elements) {
        Row row;
        for (const Field& field : std::get<Object>(element.value).fields) {
            row.push_back(valueText(field));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<std::size_t> columnWidths(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], row[column].size());
        }
    }
    return widths;
}

/// Appends a table, unless it is too wide. @return whether it was appended.
bool appendTable(std::string& text, const List& list, std::size_t indent) {
    const std::vector<Row> rows = tableRows(list);
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::size_t width = indent;
    for (const std::size_t column : widths) {
        width += column + GAP;
    }
    if (width - GAP > WIDTH) {
        return false;
    }
    for (const Row& row : rows) {
        std::string line(indent, ' ');
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += fmt::format("{:{}}", row[column], widths[column] + GAP);
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return true;
}

void appendElements(std::string& text, const List& list, std::size_t indent) {
    if (list.elements.empty() || (isTable(list) && appendTable(text, list, indent))) {
        return;
    }
    std::size_t position = 0;
    for (const Field& element : list.elements) {
        Field numbered = element;
        numbered.name = fmt::format("[{}]", position++);
        appendFields(text, {numbered}, indent);
    }
}

void appendNested(std::string& text, const Field& field, std::size_t indent) {
    const std::string margin(indent, ' ');
    if (const auto* const inner = std::get_if<Object>(&field.value)) {
        text += margin + field.name + '\n';
        appendFields(text, inner->fields, indent + INDENT);
        return;
    }
    const auto& elements = std::get<List>(field.value);
    const std::string remark = field.reading.empty() ? "" : ' ' + field.reading;
    text += fmt::format("{}{} ({}{})\n", margin, field.name, elements.elements.size(), remark);
    appendElements(text, elements, indent + INDENT);
}

} // namespace

void appendFields(std::string& text, const std::vector<Field>& fields, std::size_t indent) {
    std::size_t nameWidth = 0;
    for (const Field& field : fields) {
        nameWidth = std::max(nameWidth, isNested(field) ? 0 : field.name.size());
    }
    for (const Field& field : fields) {
        if (isNested(field)) {
            appendNested(text, field, indent);
        } else {
            text += fmt::format("{:{}}{:{}}{}\n", "", indent, field.name, nameWidth + GAP, valueText(field));
        }
    }
}

void appendDump(std::string& text, const std::vector<std::uint8_t>& bytes, std::size_t indent) {
    for (std::size_t at = 0; at < bytes.size(); at += BYTES_PER_LINE) {
        const auto* const begin = bytes.data() + at;
        const auto* const end = begin + std::min(BYTES_PER_LINE, bytes.size() - at);
        text += fmt::format("{:{}}{:04X}  {:02X}\n", "", indent, at, fmt::join(begin, end, " "));
    }
}

} // namespace inspect
