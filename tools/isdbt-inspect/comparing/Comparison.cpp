#include "comparing/Comparison.h"

#include "describing/FieldLookup.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <map>
#include <set>

namespace inspect {

namespace {

/// Fields that identify what they stand in, those of the smallest things first: an entry that names a service and its
/// transport stream stands for the service.
constexpr std::string_view IDENTIFYING[] = {
    "elementary_pid", "program_number",  "application_identifier", "service_id",     "transport_stream_id",
    "hash_id",        "country_code",    "language_code",          "label",          "dii_identification",
    "module_id",      "logical_cell_id", "application_profile",    "descriptor_tag", "transmission_type_info",
    "start_time",
};

std::string textOf(const Field& field);

struct KeyText {
    std::string operator()(Absent /*value*/) const { return "none"; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(const Number& number) const { return number.digits(); }
    std::string operator()(const Text& text) const { return text.decoded; }
    std::string operator()(const Bytes& value) const { return fmt::format("{:02X}", fmt::join(value.bytes, " ")); }
    std::string operator()(const List& list) const { return joined(list.elements); }
    std::string operator()(const Object& object) const { return joined(object.fields); }

    /// "0x0000000A/0x0001"
    static std::string joined(const Fields& fields) {
        std::vector<std::string> texts;
        std::transform(fields.begin(), fields.end(), std::back_inserter(texts), textOf);
        return fmt::format("{}", fmt::join(texts, "/"));
    }
};

std::string textOf(const Field& field) {
    return std::visit(KeyText{}, field.value);
}

/// Whether each element has a value of its own in a field.
bool identifies(std::string_view name, const Fields& elements) {
    std::set<std::string> values;
    return std::all_of(elements.begin(), elements.end(), [name, &values](const Field& element) {
        const Field* const field = find(inner(element), name);
        return field != nullptr && values.insert(textOf(*field)).second;
    });
}

/// What tells the elements of a list apart, in two versions of it.
class Keys {
public:
    Keys(const Fields& before, const Fields& after) {
        const auto* const found =
            std::find_if(std::begin(IDENTIFYING), std::end(IDENTIFYING), [&before, &after](std::string_view name) {
                return identifies(name, before) && identifies(name, after);
            });
        if (found != std::end(IDENTIFYING)) {
            m_name = *found;
        }
    }

    /// The value of the field that identifies an element: "0x0131"; of a single value, the value itself; else the
    /// position.
    std::string of(const Field& element, std::size_t position) const {
        if (!std::holds_alternative<Object>(element.value)) {
            return textOf(element);
        }
        const Field* const field = m_name.empty() ? nullptr : find(inner(element), m_name);
        return field == nullptr ? std::to_string(position) : textOf(*field);
    }

private:
    std::string_view m_name; ///< of the field that identifies the elements; empty when none does
};

struct SameValue {
    template <class One, class Other> bool operator()(const One& /*one*/, const Other& /*other*/) const {
        return false;
    }
    bool operator()(Absent /*one*/, Absent /*other*/) const { return true; }
    bool operator()(bool one, bool other) const { return one == other; }
    bool operator()(const Number& one, const Number& other) const { return one.value == other.value; }
    bool operator()(const Text& one, const Text& other) const { return one.raw == other.raw; }
    bool operator()(const Bytes& one, const Bytes& other) const { return one.bytes == other.bytes; }
};

class Comparison {
public:
    void compareFields(const std::string& prefix, const Fields& before, const Fields& after) {
        compareMatching(
            before, after, [](const Field& field, std::size_t /*position*/) { return field.name; },
            [&prefix](const Field& /*field*/, const std::string& name) { return prefix + name; });
    }

    std::vector<Change> take() { return std::move(m_changes); }

private:
    /// Compares fields of the same key, and tells those that have no counterpart.
    /// @param keyOf std::string(const Field&, std::size_t position)
    /// @param pathOf std::string(const Field&, const std::string& key)
    template <class KeyOf, class PathOf>
    void compareMatching(const Fields& before, const Fields& after, const KeyOf& keyOf, const PathOf& pathOf) {
        std::multimap<std::string, std::size_t> unmatched;
        for (std::size_t at = 0; at < after.size(); ++at) {
            unmatched.emplace(keyOf(after[at], at), at);
        }
        for (std::size_t at = 0; at < before.size(); ++at) {
            const std::string key = keyOf(before[at], at);
            const auto found = unmatched.find(key);
            if (found == unmatched.end()) {
                m_changes.push_back({pathOf(before[at], key), &before[at], nullptr});
            } else {
                compareField(pathOf(before[at], key), before[at], after[found->second]);
                unmatched.erase(found);
            }
        }
        std::map<std::size_t, std::string> inOrder;
        for (const auto& [key, at] : unmatched) {
            inOrder.emplace(at, key);
        }
        for (const auto& [at, key] : inOrder) {
            m_changes.push_back({pathOf(after[at], key), nullptr, &after[at]});
        }
    }

    void compareField(const std::string& path, const Field& before, const Field& after) {
        const auto* const object = std::get_if<Object>(&before.value);
        const auto* const otherObject = std::get_if<Object>(&after.value);
        const auto* const list = std::get_if<List>(&before.value);
        const auto* const otherList = std::get_if<List>(&after.value);
        if (object != nullptr && otherObject != nullptr) {
            compareFields(path + '.', object->fields, otherObject->fields);
        } else if (list != nullptr && otherList != nullptr) {
            compareElements(path, list->elements, otherList->elements);
        } else if (!std::visit(SameValue{}, before.value, after.value)) {
            m_changes.push_back({path, &before, &after});
        }
    }

    void compareElements(const std::string& path, const Fields& before, const Fields& after) {
        const Keys keys(before, after);
        compareMatching(
            before, after, [&keys](const Field& element, std::size_t position) { return keys.of(element, position); },
            [&path](const Field& element, const std::string& key) {
                return std::holds_alternative<Object>(element.value) ? path + '[' + key + ']' : path;
            });
    }

    std::vector<Change> m_changes;
};

} // namespace

std::vector<Change> compare(const Fields& before, const Fields& after) {
    Comparison comparison;
    comparison.compareFields("", before, after);
    return comparison.take();
}

} // namespace inspect
