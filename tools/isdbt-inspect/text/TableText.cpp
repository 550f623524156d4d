#include "text/TableText.h"

#include "text/ValueText.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::size_t GAP = 2;

using Row = std::vector<std::string>;

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

std::vector<Row> tableRows(const List& list, const Style& style) {
    std::vector<Row> rows(1);
    for (const Field& field : std::get<Object>(list.elements.front().value).fields) {
        rows.front().push_back(style.paint(Ink::Name, field.name));
    }
    for (const Field& element : list.elements) {
        Row row;
        for (const Field& field : std::get<Object>(element.value).fields) {
            row.push_back(valueText(field, style));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

std::vector<std::size_t> columnWidths(const std::vector<Row>& rows) {
    std::vector<std::size_t> widths(rows.front().size());
    for (const Row& row : rows) {
        for (std::size_t column = 0; column < row.size(); ++column) {
            widths[column] = std::max(widths[column], columns(row[column]) + GAP);
        }
    }
    return widths;
}

} // namespace

bool appendTable(Page& page, const List& list, std::size_t indent) {
    if (!isTable(list)) {
        return false;
    }
    const std::vector<Row> rows = tableRows(list, page.style);
    const std::vector<std::size_t> widths = columnWidths(rows);
    std::size_t width = indent;
    for (const std::size_t column : widths) {
        width += column;
    }
    if (width > page.style.width + GAP) {
        return false;
    }
    for (const Row& row : rows) {
        std::string line(indent, ' ');
        for (std::size_t column = 0; column < row.size(); ++column) {
            line += padded(row[column], widths[column]);
        }
        page.text += line.substr(0, line.find_last_not_of(' ') + 1) + '\n';
    }
    return true;
}

} // namespace inspect
