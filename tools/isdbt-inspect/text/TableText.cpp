#include "text/TableText.h"

#include "text/Columns.h"
#include "text/ValueText.h"

#include <algorithm>

namespace inspect {

namespace {

/// Whether the elements are objects of the same simple fields.
bool isTable(const List& list) {
    const auto* const first = list.elements.empty() ? nullptr : std::get_if<Object>(&list.elements.front().value);
    return first != nullptr && std::all_of(list.elements.begin(), list.elements.end(), [first](const Field& element) {
               const auto* const other = std::get_if<Object>(&element.value);
               return other != nullptr && std::equal(first->fields.begin(), first->fields.end(), other->fields.begin(),
                                                     other->fields.end(), [](const Field& one, const Field& another) {
                                                         return one.name == another.name && !isNested(another);
                                                     });
           });
}

std::vector<Row> tableRows(const List& list) {
    std::vector<Row> rows(1);
    for (const Field& field : std::get<Object>(list.elements.front().value).fields) {
        rows.front().emplace_back(field.name, Ink::Name);
    }
    for (const Field& element : list.elements) {
        const Fields& fields = std::get<Object>(element.value).fields;
        std::transform(fields.begin(), fields.end(), std::back_inserter(rows.emplace_back()), valueText);
    }
    return rows;
}

} // namespace

bool appendTable(Page& page, const List& list, std::size_t indent) {
    constexpr std::size_t GAP = 2;
    if (!isTable(list)) {
        return false;
    }
    std::vector<Row> rows = tableRows(list);
    std::vector<Column::Kind> kinds(rows.front().size(), Column::Kind::Name);
    const Grid grid(std::move(kinds), std::move(rows));
    if (indent + grid.width(GAP) > page.style.width) {
        return false;
    }
    grid.append(page, GAP, indent);
    return true;
}

} // namespace inspect
