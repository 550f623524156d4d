#pragma once

#include "sections/Place.h"

#include <iterator>
#include <map>

namespace inspect {

/// What was last said in each place of each table. Of more places than a multiplex has, it forgets the oldest of the
/// PID and table that has most, so that events which come for ever do not displace the program maps.
template <class Content, std::size_t CAPACITY> class LatestSections {
public:
    void put(const Place& place, Content content) {
        m_entries.insert_or_assign(place, Entry{m_puts++, std::move(content)});
        if (m_entries.size() > CAPACITY) {
            m_entries.erase(oldestOfTheLargest());
            ++m_forgotten;
        }
    }

    /// Null when there is none.
    const Content* find(const Place& place) const {
        const auto found = m_entries.find(place);
        return found == m_entries.end() ? nullptr : &found->second.content;
    }

    /// Forgets the sections that a table has no more.
    void forgetBeyond(const Place& last) {
        const auto [begin, end] = behind(m_entries, last);
        m_entries.erase(begin, end);
    }

    /// Forgets all tables of a table_id on a PID but this one.
    void forgetOthers(const TableKey& table) {
        for (auto entry = m_entries.begin(); entry != m_entries.end();) {
            const TableKey& key = entry->first.table;
            const bool other = ofOnePid(key, table) && key.extension != table.extension;
            entry = other ? m_entries.erase(entry) : std::next(entry);
        }
    }

    /// Visits all of them in the order of their places.
    /// @param visit void(const TableKey&, const Content&)
    template <class Visit> void forEach(const Visit& visit) const {
        for (const auto& [place, entry] : m_entries) {
            visit(place.table, entry.content);
        }
    }

    std::size_t size() const { return m_entries.size(); }

    /// How often it forgot for want of room.
    std::uint64_t forgotten() const { return m_forgotten; }

private:
    struct Entry {
        std::uint64_t age;
        Content content;
    };
    using Entries = std::map<Place, Entry>;

    static bool ofOnePid(const TableKey& one, const TableKey& other) {
        return one.pid == other.pid && one.tableId == other.tableId;
    }

    typename Entries::iterator oldestOfTheLargest() {
        auto found = m_entries.begin();
        std::size_t largest = 0;
        for (auto begin = m_entries.begin(); begin != m_entries.end();) {
            auto oldest = begin;
            std::size_t size = 0;
            auto each = begin;
            for (; each != m_entries.end() && ofOnePid(each->first.table, begin->first.table); ++each, ++size) {
                oldest = each->second.age < oldest->second.age ? each : oldest;
            }
            if (size > largest) {
                largest = size;
                found = oldest;
            }
            begin = each;
        }
        return found;
    }

    Entries m_entries;
    std::uint64_t m_puts = 0;
    std::uint64_t m_forgotten = 0;
};

} // namespace inspect
