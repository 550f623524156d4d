#include "placing/FieldChanges.h"

#include <algorithm>

namespace inspect {

namespace {

/// What another field holds in its place.
enum class Value {
    Same,
    Changed,
    Other ///< one of another kind or length: it is another field
};

Value ofLength(std::size_t one, std::size_t other, bool same) {
    return one != other ? Value::Other : same ? Value::Same : Value::Changed;
}

struct ValueComparison {
    const Field& after;

    template <class T> const T& other() const { return std::get<T>(after.value); }
    static Value of(bool same) { return same ? Value::Same : Value::Changed; }

    Value operator()(Absent /*before*/) const { return Value::Same; }
    Value operator()(bool before) const { return of(before == other<bool>()); }
    Value operator()(const Number& before) const { return of(before.value == other<Number>().value); }

    Value operator()(const Text& before) const {
        const std::string& raw = other<Text>().raw;
        return ofLength(before.raw.size(), raw.size(), before.raw == raw);
    }

    Value operator()(const Bytes& before) const {
        const std::vector<std::uint8_t>& bytes = other<Bytes>().bytes;
        return ofLength(before.bytes.size(), bytes.size(), before.bytes == bytes);
    }

    Value operator()(const List& before) const;
    Value operator()(const Object& before) const;
};

bool isOfSameKind(const Field& before, const Field& after) {
    return before.name == after.name && before.value.index() == after.value.index();
}

Value compare(const Field& before, const Field& after) {
    return isOfSameKind(before, after) ? std::visit(ValueComparison{after}, before.value) : Value::Other;
}

bool isSame(const Field& before, const Field& after) {
    return compare(before, after) == Value::Same;
}

Value ValueComparison::operator()(const List& before) const {
    const Fields& elements = other<List>().elements;
    return ofLength(
        before.elements.size(), elements.size(),
        std::equal(before.elements.begin(), before.elements.end(), elements.begin(), elements.end(), isSame));
}

Value ValueComparison::operator()(const Object& before) const {
    const Fields& fields = other<Object>().fields;
    return ofLength(before.fields.size(), fields.size(),
                    std::equal(before.fields.begin(), before.fields.end(), fields.begin(), fields.end(), isSame));
}

bool findChanges(const Field& before, const Field& after, FieldPlace& place, FieldChanges& changes);

/// Those that are not the same at the same index: they may be so at another one. The library keeps entries in the order
/// of their numbers, so that one with another number may stand elsewhere.
void leaveOutMoved(const Fields& before, const Fields& after, std::vector<std::size_t>& from,
                   std::vector<std::size_t>& to) {
    const auto isMoved = [&](std::size_t at) {
        const auto there =
            std::find_if(to.begin(), to.end(), [&](std::size_t other) { return isSame(before[at], after[other]); });
        const bool isThere = there != to.end();
        if (isThere) {
            to.erase(there);
        }
        return isThere;
    };
    from.erase(std::remove_if(from.begin(), from.end(), isMoved), from.end());
}

bool findChanges(const Field& before, const Field& after, FieldPlace& place, FieldChanges& changes) {
    if (!isOfSameKind(before, after)) {
        return false;
    }
    if (const auto* const object = std::get_if<Object>(&before.value)) {
        return findChanges(object->fields, std::get<Object>(after.value).fields, place.parts, changes);
    }
    if (const auto* const list = std::get_if<List>(&before.value)) {
        return findChanges(list->elements, std::get<List>(after.value).elements, place.parts, changes);
    }
    const Value value = compare(before, after);
    if (value == Value::Changed) {
        changes.values.push_back({&before, &after, &place});
    }
    return value != Value::Other;
}

} // namespace

bool findChanges(const Fields& before, const Fields& after, FieldPlaces& places, FieldChanges& changes) {
    if (before.size() != after.size()) {
        return false;
    }
    std::vector<std::size_t> from;
    for (std::size_t at = 0; at < before.size(); ++at) {
        if (!isSame(before[at], after[at])) {
            from.push_back(at);
        }
    }
    std::vector<std::size_t> to = from;
    if (from.size() > 1 && std::holds_alternative<Object>(before.front().value)) {
        const std::size_t all = from.size();
        leaveOutMoved(before, after, from, to);
        changes.moved = changes.moved || from.size() != all;
    }
    bool alike = true;
    for (std::size_t each = 0; alike && each < from.size(); ++each) {
        alike = findChanges(before[from[each]], after[to[each]], places[from[each]], changes);
    }
    return alike;
}

} // namespace inspect
