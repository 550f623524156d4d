#include "multiplex/Tables.h"

#include "describing/FieldLookup.h"

namespace inspect {

Fields Table::beside(std::string_view list) const {
    Fields fields;
    for (const TakenSection* const section : taken) {
        for (const Field& field : section->fields) {
            const bool repeats = section != taken.front() && find(fields, field.name) != nullptr && !isNested(field);
            if (field.name != list && !repeats) {
                fields.push_back(field);
            }
        }
    }
    return fields;
}

std::vector<const Fields*> Table::entries(std::string_view list) const {
    std::vector<const Fields*> entries;
    for (const TakenSection* const section : taken) {
        for (const Field& element : elements(section->fields, list)) {
            entries.push_back(&inner(element));
        }
    }
    return entries;
}

std::vector<unsigned> Table::missingSections() const {
    std::set<unsigned> known;
    unsigned last = 0;
    const auto add = [&](const auto& sections) {
        const bool first = known.empty();
        for (const auto* const section : sections) {
            known.insert(section->header ? section->header->sectionNumber : 0U);
            last = first && section->header ? section->header->lastSectionNumber : last;
        }
    };
    add(taken);
    add(refused); // perhaps of a version that was longer
    std::vector<unsigned> missing;
    for (unsigned number = 0; number <= last; ++number) {
        if (known.count(number) == 0) {
            missing.push_back(number);
        }
    }
    return missing;
}

bool Table::complete() const {
    return !taken.empty() && refused.empty() && missingSections().empty();
}

FaultPlace placeOf(const Table& table) {
    return {table.key.pid, table.key.tableId, table.key.extension};
}

std::optional<Position> sinceOf(const Table& table) {
    if (!table.taken.empty()) {
        return table.taken.front()->position;
    }
    return table.refused.empty() ? std::nullopt : std::optional(table.refused.front()->position);
}

Tables::Tables(const CurrentSections& sections, std::set<std::uint8_t> expected, std::set<Pid> scrambled,
               std::optional<PidSet> carried, std::map<std::pair<Pid, std::uint8_t>, std::uint64_t> crcErrors)
    : m_expected(std::move(expected)), m_scrambled(std::move(scrambled)), m_carried(carried),
      m_crcErrors(std::move(crcErrors)) {
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
