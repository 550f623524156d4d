#include "comparing/Comparison.h"

#include "comparing/Keys.h"

#include <map>

namespace inspect {

namespace {

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
