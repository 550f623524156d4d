#include "multiplex/Tables.h"

namespace inspect {

Tables::Tables(const CurrentSections& sections, std::set<std::uint8_t> expected, std::set<Pid> scrambled,
               std::optional<PidSet> carried)
    : m_expected(std::move(expected)), m_scrambled(std::move(scrambled)), m_carried(carried) {
    sections.taken().forEach([this](const TableKey& key, const TakenSection& section) {
        Table& table = m_tables[key];
        table.key = key;
        table.taken.push_back(&section);
    });
    sections.refused().forEach([this](const TableKey& key, const RefusedSection& section) {
        Table& table = m_tables[key];
        table.key = key;
        table.refused.push_back(&section);
    });
    sections.silentChanges().forEach([this](const TableKey& key, const Position& position) {
        if (const auto found = m_tables.find(key); found != m_tables.end()) {
            found->second.silentChanges.push_back(position);
        } else {
            m_silentChangesElsewhere.emplace_back(key, position);
        }
    });
}

std::vector<const Table*> Tables::of(std::uint8_t tableId) const {
    std::vector<const Table*> found;
    for (auto each = m_tables.lower_bound({std::nullopt, tableId, 0});
         each != m_tables.end() && each->first.tableId == tableId; ++each) {
        found.push_back(&each->second);
    }
    return found;
}

std::vector<const Table*> Tables::of(std::uint8_t tableId, std::uint16_t extension) const {
    std::vector<const Table*> found;
    for (auto each = m_tables.lower_bound({std::nullopt, tableId, extension});
         each != m_tables.end() && each->first.tableId == tableId && each->first.extension == extension; ++each) {
        found.push_back(&each->second);
    }
    return found;
}

std::vector<const Table*> Tables::on(std::optional<Pid> pid, std::uint8_t tableId) const {
    std::vector<const Table*> found;
    for (const Table* const table : of(tableId)) {
        if (table->key.pid == pid) {
            found.push_back(table);
        }
    }
    return found;
}

} // namespace inspect
