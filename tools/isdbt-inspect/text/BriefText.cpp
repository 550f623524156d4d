#include "text/BriefText.h"

#include "describing/StandardReadings.h"
#include "text/Pieces.h"
#include "text/ValueText.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// What the library calls lists that are all of a descriptor: this says nothing.
constexpr std::string_view ITEMS = "items";

bool holdsObjects(const Field& list) {
    const Fields& elements = std::get<List>(list.value).elements;
    return elements.empty() || std::holds_alternative<Object>(elements.front().value);
}

std::string numberText(const Field& field, const Style& style) {
    const auto& number = std::get<Number>(field.value);
    const bool isIdentifier = number.hexDigits != 0;
    const std::string digits =
        isIdentifier ? fmt::format("0x{:0{}X}", number.value, number.hexDigits) : std::to_string(number.value);
    if (!field.codeName.empty()) {
        const std::string name = style.paint(Ink::Remark, field.codeName);
        return isIdentifier ? fmt::format("{} ({})", name, digits) : name;
    }
    if (field.reading.empty()) {
        return field.unit.empty() ? digits : valueText(field, style);
    }
    return isIdentifier ? digits + style.paint(Ink::Remark, " = " + field.reading)
                        : style.paint(Ink::Remark, field.reading);
}

std::vector<std::string> listPieces(const Field& field, const Style& style) {
    std::vector<std::string> pieces;
    for (const Field& element : std::get<List>(field.value).elements) {
        if (!pieces.empty()) {
            pieces.back() += ',';
        }
        pieces.push_back(briefText(element, style));
    }
    if (!field.reading.empty()) {
        pieces.push_back(fmt::format("({})", style.paint(Ink::Remark, field.reading)));
    }
    return pieces;
}

} // namespace

std::string briefText(const Field& field, const Style& style) {
    if (std::holds_alternative<Number>(field.value)) {
        return numberText(field, style);
    }
    if (std::holds_alternative<List>(field.value)) {
        return joined(listPieces(field, style));
    }
    if (const auto* const object = std::get_if<Object>(&field.value)) {
        return '{' + joined(briefPieces(standardFirst(object->fields), style)) + '}';
    }
    return valueText(field, style);
}

std::vector<std::string> briefPieces(const Fields& fields, const Style& style) {
    std::vector<std::string> pieces;
    for (const Field& field : fields) {
        const std::string name = style.paint(Ink::Name, field.name);
        if (field.name == RECEIVER) {
            std::vector<std::string> others = briefPieces(std::get<Object>(field.value).fields, style);
            if (others.empty()) {
                others.emplace_back("nothing"); // lists without elements
            }
            others.front().insert(0, fmt::format("({} ", RECEIVER));
            others.back() += ')';
            std::move(others.begin(), others.end(), std::back_inserter(pieces));
            continue;
        }
        if (!std::holds_alternative<List>(field.value)) {
            pieces.push_back(name + (name.empty() ? "" : " ") + briefText(field, style));
            continue;
        }
        std::vector<std::string> elements = listPieces(field, style);
        if (field.name != ITEMS && holdsObjects(field)) {
            pieces.push_back(name + ':');
        } else if (field.name != ITEMS) {
            elements.front().insert(0, name + ": ");
        }
        std::move(elements.begin(), elements.end(), std::back_inserter(pieces));
    }
    return pieces;
}

} // namespace inspect
