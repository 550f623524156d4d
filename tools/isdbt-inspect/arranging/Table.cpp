#include "arranging/Table.h"

#include "arranging/FieldLookup.h"

#include <fmt/format.h>
#include <set>

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

/// The numbers of sections of which nothing is known.
std::vector<unsigned> missingSections(const Table& table) {
    std::set<unsigned> known;
    unsigned last = 0;
    const auto add = [&](const auto& sections) {
        const bool first = known.empty();
        for (const auto* const section : sections) {
            known.insert(section->header ? section->header->sectionNumber : 0U);
            last = first && section->header ? section->header->lastSectionNumber : last;
        }
    };
    add(table.taken);
    add(table.refused); // perhaps of a version that was longer
    std::vector<unsigned> missing;
    for (unsigned number = 0; number <= last; ++number) {
        if (known.count(number) == 0) {
            missing.push_back(number);
        }
    }
    return missing;
}

std::string versionText(const Table& table) {
    return table.taken.empty() || !table.taken.front()->header
               ? ""
               : fmt::format(" version {}", table.taken.front()->header->version);
}

void appendFaults(Node& node, const Table& table, std::string_view name) {
    for (const TakenSection* const section : table.taken) {
        if (section->sameVersion) {
            node.fault(fmt::format("{} changed without a new version", name));
        }
        if (section->damaged) {
            node.fault(fmt::format("{} is incomplete, or its CRC_32 is wrong", name));
        }
    }
    for (const RefusedSection* const section : table.refused) {
        node.fault(refusal(name, *section));
    }
    for (const unsigned number : missingSections(table)) {
        node.fault(fmt::format("section {} of the {} did not come", number, name));
    }
}

} // namespace

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

bool Table::complete() const {
    return !taken.empty() && refused.empty() && missingSections(*this).empty();
}

void Table::appendTo(Node& node, std::string_view name) const {
    const std::string version = versionText(*this);
    if (key.pid) {
        node.say(fmt::format("{} PID 0x{:04X}{}", name, *key.pid, version));
    } else if (!version.empty()) {
        node.say(fmt::format("{}{}", name, version));
    }
    appendFaults(node, *this, name);
}

void Table::appendVersionTo(Node& node, std::string_view name) const {
    if (const std::string version = versionText(*this); !version.empty()) {
        node.say(version.substr(1));
    }
    appendFaults(node, *this, name);
}

} // namespace inspect
