#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <list>
#include <map>
#include <utility>
#include <vector>

namespace inspect {

/// A map of limited size. When it is full, a new entry takes the place of the one that has not been used for longest,
/// so that a stream can be watched for ever.
template <class Key, class Value> class BoundedMap {
public:
    using Entry = std::pair<Key, Value>;

    explicit BoundedMap(std::size_t capacity) : m_capacity(capacity) {}

    /// Null when there is none. The value is used thereby.
    Value* find(const Key& key) {
        const auto found = m_byKey.find(key);
        if (found == m_byKey.end()) {
            return nullptr;
        }
        m_entries.splice(m_entries.begin(), m_entries, found->second);
        return &m_entries.front().second;
    }

    void put(const Key& key, Value value) {
        if (Value* const known = find(key)) {
            *known = std::move(value);
            return;
        }
        if (m_entries.size() == m_capacity) {
            m_byKey.erase(m_entries.back().first);
            m_entries.pop_back();
        }
        m_entries.emplace_front(key, std::move(value));
        m_byKey.emplace(key, m_entries.begin());
    }

    void erase(const Key& key) {
        if (const auto found = m_byKey.find(key); found != m_byKey.end()) {
            m_entries.erase(found->second);
            m_byKey.erase(found);
        }
    }

    /// Changes values, none of which is used thereby.
    /// @param change void(const Key&, Value&)
    template <class Change> void forEach(const Change& change) {
        for (auto& [key, value] : m_entries) {
            change(key, value);
        }
    }

    /// The keys behind one in its table, see behind().
    std::vector<Key> keysBehind(const Key& key) const {
        std::vector<Key> keys;
        const auto [begin, end] = behind(m_byKey, key);
        std::transform(begin, end, std::back_inserter(keys), [](const auto& entry) { return entry.first; });
        return keys;
    }

    /// The entries, the one that was used last first.
    const std::list<Entry>& entries() const { return m_entries; }

private:
    std::size_t m_capacity;
    std::list<Entry> m_entries;
    std::map<Key, typename std::list<Entry>::iterator> m_byKey;
};

} // namespace inspect
