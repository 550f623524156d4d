#include "multiplex/Pruning.h"

namespace inspect {

namespace {

/// Whether there is nothing to be seen. An object is there even if it holds nothing.
bool saysNothing(const Field& field) {
    const auto* const text = std::get_if<Text>(&field.value);
    const auto* const bytes = std::get_if<Bytes>(&field.value);
    const auto* const list = std::get_if<List>(&field.value);
    const bool isEmpty = std::holds_alternative<Absent>(field.value) || (text != nullptr && text->decoded.empty()) ||
                         (bytes != nullptr && bytes->bytes.empty()) || (list != nullptr && list->elements.empty());
    return isEmpty && field.reading.empty();
}

/// Whether a number says only how much the next field holds.
bool isLengthOf(const Field& field, const Field& next) {
    const auto* const number = std::get_if<Number>(&field.value);
    const auto* const bytes = std::get_if<Bytes>(&next.value);
    const auto* const list = std::get_if<List>(&next.value);
    if (number == nullptr || number->hexDigits != 0 || (bytes == nullptr && list == nullptr)) {
        return false;
    }
    const std::size_t held = bytes != nullptr ? bytes->bytes.size() : list->elements.size();
    return number->value == static_cast<std::int64_t>(held);
}

Field prunedWithin(const Field& field) {
    Field copy = field;
    if (auto* const object = std::get_if<Object>(&copy.value)) {
        object->fields = pruned(object->fields);
    } else if (auto* const list = std::get_if<List>(&copy.value)) {
        for (Field& element : list->elements) {
            element = prunedWithin(element);
        }
    }
    return copy;
}

} // namespace

Fields pruned(const Fields& fields) {
    Fields left;
    for (std::size_t at = 0; at < fields.size(); ++at) {
        const bool isLength = at + 1 < fields.size() && isLengthOf(fields[at], fields[at + 1]);
        if (!isLength && !saysNothing(fields[at])) {
            left.push_back(prunedWithin(fields[at]));
        }
    }
    return left;
}

} // namespace inspect
