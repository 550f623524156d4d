#include "text/ValueText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace inspect {

namespace {

/// In quotation marks, those of the text behind a backslash.
std::string quoted(const std::string& decoded) {
    std::string text = "\"";
    for (const char character : decoded) {
        text += character == '"' ? "\\\"" : std::string(1, character);
    }
    return text + '"';
}

struct ValueText {
    std::string operator()(Absent /*value*/) const { return "none"; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(const Text& value) const { return quoted(value.decoded); }
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

bool isOne(const Field& field) {
    const auto* const number = std::get_if<Number>(&field.value);
    return number != nullptr && number->value == 1;
}

} // namespace

Line valueText(const Field& field) {
    Line text = std::visit(ValueText{}, field.value);
    if (!field.unit.empty()) {
        text += ' ' + (field.unit == "bytes" && isOne(field) ? "byte" : field.unit);
    }
    if (!field.codeName.empty()) {
        text += " " + Line(field.codeName, Ink::Remark);
    }
    if (!field.reading.empty()) {
        const bool isRemark = std::holds_alternative<Text>(field.value);
        text += Line(isRemark ? fmt::format(" ({})", field.reading) : " = " + field.reading, Ink::Remark);
    }
    return text;
}

} // namespace inspect
