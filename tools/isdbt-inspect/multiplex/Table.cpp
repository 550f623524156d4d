#include "multiplex/Table.h"

#include "describing/FieldLookup.h"

#include <set>

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

} // namespace inspect
