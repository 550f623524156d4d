#include "text/ValueText.h"

#include "describing/StandardReadings.h"
#include "text/Page.h"

#include <algorithm>
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
        return number.hexDigits == 0 ? number.digits() : fmt::format("{} ({})", number.digits(), number.value);
    }

    std::string operator()(const Bytes& value) const {
        return value.bytes.empty() ? "none" : fmt::format("{:02X}", fmt::join(value.bytes, " "));
    }
};

bool isOne(const Field& field) {
    const auto* const number = std::get_if<Number>(&field.value);
    return number != nullptr && number->value == 1;
}

/// What the library calls lists that are all of a descriptor: this says nothing.
constexpr std::string_view ITEMS = "items";

bool holdsObjects(const Field& list) {
    const Fields& elements = std::get<List>(list.value).elements;
    return elements.empty() || std::holds_alternative<Object>(elements.front().value);
}

Line numberText(const Field& field) {
    const auto& number = std::get<Number>(field.value);
    const bool isIdentifier = number.hexDigits != 0;
    const std::string digits = number.digits();
    if (!field.codeName.empty()) {
        const Line name(field.codeName, Ink::Remark);
        return isIdentifier ? name + fmt::format(" ({})", digits) : name;
    }
    if (field.reading.empty()) {
        return field.unit.empty() ? digits : valueText(field);
    }
    return isIdentifier ? digits + Line(" = " + field.reading, Ink::Remark) : Line(field.reading, Ink::Remark);
}

std::vector<Line> listPieces(const Field& field) {
    std::vector<Line> pieces;
    for (const Field& element : std::get<List>(field.value).elements) {
        if (!pieces.empty()) {
            pieces.back() += ",";
        }
        pieces.push_back(briefText(element));
    }
    if (!field.reading.empty()) {
        pieces.push_back("(" + Line(field.reading, Ink::Remark) + ")");
    }
    return pieces;
}

/// What stands in parentheses behind the name of a descriptor rather than among its fields.
constexpr std::string_view TAG = "descriptor_tag";
constexpr std::string_view INHERITED = "inherited";

} // namespace

Line headingOf(const Field& object) {
    std::vector<std::string> remarks;
    for (const Field& each : std::get<Object>(object.value).fields) {
        if (each.name == TAG) {
            remarks.insert(remarks.begin(), fmt::format("0x{:02X}", std::get<Number>(each.value).value));
            if (!each.codeName.empty()) {
                remarks.push_back(each.codeName);
            }
        } else if (each.name == INHERITED) {
            remarks.emplace_back(INHERITED);
        }
    }
    const Line name(object.name, Ink::Name);
    return remarks.empty() ? name : name + fmt::format(" ({})", fmt::join(remarks, ", "));
}

Fields besideHeading(const Fields& fields) {
    Fields others = standardFirst(fields);
    others.erase(std::remove_if(others.begin(), others.end(),
                                [](const Field& each) { return each.name == TAG || each.name == INHERITED; }),
                 others.end());
    return others;
}

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

Line briefText(const Field& field) {
    if (std::holds_alternative<Number>(field.value)) {
        return numberText(field);
    }
    if (std::holds_alternative<List>(field.value)) {
        return joined(listPieces(field));
    }
    if (const auto* const object = std::get_if<Object>(&field.value)) {
        return "{" + joined(briefPieces(standardFirst(object->fields))) + "}";
    }
    return valueText(field);
}

std::vector<Line> briefPieces(const Fields& fields) {
    std::vector<Line> pieces;
    for (const Field& field : fields) {
        if (field.name == RECEIVER) {
            std::vector<Line> others = briefPieces(std::get<Object>(field.value).fields);
            if (others.empty()) {
                others.emplace_back("nothing"); // lists without elements
            }
            others.front() = Line(fmt::format("({} ", RECEIVER)) + others.front();
            others.back() += ")";
            std::move(others.begin(), others.end(), std::back_inserter(pieces));
            continue;
        }
        const Line name(field.name, Ink::Name);
        if (!std::holds_alternative<List>(field.value)) {
            pieces.push_back(name + (name.empty() ? "" : " ") + briefText(field));
            continue;
        }
        std::vector<Line> elements = listPieces(field);
        if (field.name != ITEMS && holdsObjects(field)) {
            pieces.push_back(name + ":");
        } else if (field.name != ITEMS) {
            elements.front() = name + ": " + elements.front();
        }
        std::move(elements.begin(), elements.end(), std::back_inserter(pieces));
    }
    return pieces;
}

} // namespace inspect
