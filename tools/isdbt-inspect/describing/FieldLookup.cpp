#include "describing/FieldLookup.h"

#include <algorithm>

namespace inspect {

namespace {

const Fields NOTHING;

/// What a descriptor keeps when all that it says is taken out of it.
constexpr std::string_view TAG = "descriptor_tag";

Fields::iterator locate(Fields& fields, std::string_view name) {
    return std::find_if(fields.begin(), fields.end(), [name](const Field& each) { return each.name == name; });
}

bool saysNothingMore(const Fields& fields) {
    return std::all_of(fields.begin(), fields.end(), [](const Field& each) { return each.name == TAG; });
}

} // namespace

const Field* find(const Fields& fields, std::string_view name) {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [name](const Field& each) { return each.name == name; });
    return found == fields.end() ? nullptr : &*found;
}

const Fields& inner(const Fields& fields, std::string_view name) {
    const Field* const field = find(fields, name);
    return field == nullptr ? NOTHING : inner(*field);
}

const Fields& inner(const Field& element) {
    const auto* const object = std::get_if<Object>(&element.value);
    return object == nullptr ? NOTHING : object->fields;
}

const Fields& elements(const Fields& fields, std::string_view name) {
    const Field* const field = find(fields, name);
    const auto* const list = field == nullptr ? nullptr : std::get_if<List>(&field->value);
    return list == nullptr ? NOTHING : list->elements;
}

std::optional<std::int64_t> numberIn(const Fields& fields, std::string_view name) {
    const Field* const field = find(fields, name);
    const auto* const number = field == nullptr ? nullptr : std::get_if<Number>(&field->value);
    return number == nullptr ? std::nullopt : std::optional(number->value);
}

std::string textIn(const Fields& fields, std::string_view name) {
    const Field* const field = find(fields, name);
    const auto* const text = field == nullptr ? nullptr : std::get_if<Text>(&field->value);
    return text == nullptr ? std::string() : text->raw;
}

bool isSet(const Fields& fields, std::string_view name) {
    const Field* const field = find(fields, name);
    const auto* const flag = field == nullptr ? nullptr : std::get_if<bool>(&field->value);
    return flag != nullptr && *flag;
}

std::vector<std::int64_t> numbersIn(const Fields& fields, std::string_view name) {
    std::vector<std::int64_t> numbers;
    for (const Field& element : elements(fields, name)) {
        if (const auto* const number = std::get_if<Number>(&element.value)) {
            numbers.push_back(number->value);
        }
    }
    return numbers;
}

std::optional<Field> take(Fields& fields, std::string_view name) {
    const auto found = locate(fields, name);
    if (found == fields.end()) {
        return std::nullopt;
    }
    Field field = std::move(*found);
    fields.erase(found);
    return field;
}

std::optional<Field> take(Fields& fields, std::string_view object, std::string_view name) {
    const auto found = locate(fields, object);
    if (found == fields.end() || !std::holds_alternative<Object>(found->value)) {
        return std::nullopt;
    }
    Fields& within = std::get<Object>(found->value).fields;
    std::optional<Field> field = take(within, name);
    if (field && saysNothingMore(within)) {
        fields.erase(found);
    }
    return field;
}

} // namespace inspect
