#include "tool/describing/FieldLines.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace {

using namespace inspect;

struct ValueLine {
    std::string operator()(Absent /*value*/) const { return " none"; }
    std::string operator()(bool value) const { return value ? " yes" : " no"; }
    std::string operator()(const Text& value) const { return fmt::format(" \"{}\"", value.raw); }
    std::string operator()(const List& value) const { return fmt::format(" [{}]", value.elements.size()); }
    std::string operator()(const Object& /*value*/) const { return {}; }

    std::string operator()(const Number& number) const {
        return number.hexDigits == 0 ? fmt::format(" {}", number.value)
                                     : fmt::format(" 0x{:0{}X}", number.value, number.hexDigits);
    }

    std::string operator()(const Bytes& value) const {
        return value.bytes.empty() ? " <>" : fmt::format(" <{:02X}>", fmt::join(value.bytes, " "));
    }
};

void append(Lines& lines, const Fields& fields, const std::string& margin) {
    for (const Field& field : fields) {
        std::string line = margin + (field.name.empty() ? "-" : field.name) + std::visit(ValueLine{}, field.value);
        line += field.codeName.empty() ? "" : " (" + field.codeName + ')';
        line += field.unit.empty() ? "" : ' ' + field.unit;
        line += field.reading.empty() ? "" : " = " + field.reading;
        lines.push_back(line);
        if (const auto* const object = std::get_if<Object>(&field.value)) {
            append(lines, object->fields, margin + "  ");
        } else if (const auto* const list = std::get_if<List>(&field.value)) {
            append(lines, list->elements, margin + "  ");
        }
    }
}

} // namespace

Lines linesOf(const inspect::Fields& fields) {
    Lines lines;
    append(lines, fields, "");
    return lines;
}
