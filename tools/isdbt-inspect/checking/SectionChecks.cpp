#include "checking/Checks.h"

#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

std::string refusal(std::string_view name, const RefusedSection& section) {
    std::string text(name);
    if (section.header) {
        text += fmt::format(" version {}", section.header->version);
        text +=
            section.header->lastSectionNumber == 0 ? "" : fmt::format(", section {}", section.header->sectionNumber);
    }
    text += section.position.packet == 0 ? "" : fmt::format(" (packet {})", section.position.packet);
    text += " rejected with " + section.errorName;
    return section.logLine.empty() ? text : text + ": " + section.logLine;
}

} // namespace

bool areWhole(const std::vector<const Table*>& tables) {
    return !tables.empty() &&
           std::all_of(tables.begin(), tables.end(), [](const Table* table) { return table->complete(); });
}

void addSilentChange(Faults& faults, const Subject& subject, const TableKey& table, const Position& position) {
    faults.add(subject, {faults::CHANGED_SILENTLY,
                         {table.pid, table.tableId, table.extension},
                         fmt::format("{} changed without a new version", tableName(table.tableId)),
                         position});
}

void checkSections(Faults& faults, const Subject& subject, const Table& table) {
    const std::string_view name = tableName(table.key.tableId);
    const auto add = [&](FaultKind kind, std::string text, std::optional<Position> since) {
        faults.add(subject, {kind, placeOf(table), std::move(text), since});
    };
    for (const Position& position : table.silentChanges) {
        addSilentChange(faults, subject, table.key, position);
    }
    for (const TakenSection* const section : table.taken) {
        if (section->damaged) {
            add(faults::DAMAGED, fmt::format("{} is incomplete, or its CRC_32 is wrong", name), section->position);
        }
    }
    for (const RefusedSection* const section : table.refused) {
        add(faults::REJECTED, refusal(name, *section), section->position);
    }
    const std::vector<unsigned> missing = table.key.pid ? table.missingSections() : std::vector<unsigned>{};
    for (const unsigned number : missing) {
        add(faults::SECTION_MISSING, fmt::format("section {} of the {} did not come", number, name), sinceOf(table));
    }
}

} // namespace inspect
