#pragma once

#include "packets/Pid.h"

#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <optional>
#include <tuple>

namespace inspect {

/// A table: the sections of one PID, table_id and table_id_extension.
struct TableKey {
    std::optional<Pid> pid; ///< nothing when it did not come in packets
    std::uint8_t tableId;
    std::uint16_t extension;

    bool operator<(const TableKey& other) const {
        return std::tie(tableId, extension, pid) < std::tie(other.tableId, other.extension, other.pid);
    }
};

/// What was last said in each place of each table. Of more places than a multiplex has, it forgets the oldest of the
/// PID and table that has most, so that events which come for ever do not displace the program maps.
template <class Content, std::size_t CAPACITY> class LatestSections {
public:
    /// PID, table_id, table_id_extension, section_number.
    using Place = std::tuple<std::optional<Pid>, std::uint8_t, std::uint16_t, std::uint8_t>;

    void put(const TableKey& table, std::uint8_t sectionNumber, Content content) {
        m_entries.insert_or_assign(Place{table.pid, table.tableId, table.extension, sectionNumber},
                                   Entry{m_puts++, std::move(content)});
        if (m_entries.size() > CAPACITY) {
            m_entries.erase(oldestOfTheLargest());
            ++m_forgotten;
        }
    }

    /// Null when there is none.
    const Content* find(const TableKey& table, std::uint8_t sectionNumber) const {
        const auto found = m_entries.find({table.pid, table.tableId, table.extension, sectionNumber});
        return found == m_entries.end() ? nullptr : &found->second.content;
    }

    /// Forgets the sections that a table has no more.
    void forgetBeyond(const TableKey& table, std::uint8_t lastSectionNumber) {
        constexpr std::uint8_t HIGHEST = std::numeric_limits<std::uint8_t>::max();
        m_entries.erase(m_entries.upper_bound({table.pid, table.tableId, table.extension, lastSectionNumber}),
                        m_entries.upper_bound({table.pid, table.tableId, table.extension, HIGHEST}));
    }

    /// Forgets all tables of a table_id on a PID but this one.
    void forgetOthers(const TableKey& table) {
        for (auto entry = m_entries.begin(); entry != m_entries.end();) {
            const auto& [pid, tableId, extension, number] = entry->first;
            const bool other = pid == table.pid && tableId == table.tableId && extension != table.extension;
            entry = other ? m_entries.erase(entry) : std::next(entry);
        }
    }

    /// Visits all of them in the order of their places.
    /// @param visit void(const TableKey&, const Content&)
    template <class Visit> void forEach(const Visit& visit) const {
        for (const auto& [place, entry] : m_entries) {
            visit(TableKey{std::get<0>(place), std::get<1>(place), std::get<2>(place)}, entry.content);
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

    static bool ofOneTable(const Place& one, const Place& other) {
        return std::get<0>(one) == std::get<0>(other) && std::get<1>(one) == std::get<1>(other);
    }

    typename Entries::iterator oldestOfTheLargest() {
        auto found = m_entries.begin();
        std::size_t largest = 0;
        for (auto begin = m_entries.begin(); begin != m_entries.end();) {
            auto oldest = begin;
            std::size_t size = 0;
            auto each = begin;
            for (; each != m_entries.end() && ofOneTable(each->first, begin->first); ++each, ++size) {
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
