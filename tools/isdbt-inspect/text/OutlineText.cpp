#include "text/OutlineText.h"

#include "text/ValueText.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

/// What stands left of a line.
struct Branch {
    std::string_view first; ///< of the line of a node
    std::string_view rest;  ///< of all below it
};

constexpr Branch INNER{"├─ ", "│  "};
constexpr Branch LAST{"└─ ", "   "};

/// How much further right a line goes on that had to be broken.
constexpr std::size_t FURTHER = 4;
constexpr const char* MARK = "! ";

Line nameText(const Field& name) {
    Field plain = name;
    plain.unit.clear();
    const Line text(briefText(plain).text(), Ink::Heading);
    return name.unit.empty() ? text : text + fmt::format(" [{}]", name.unit);
}

Line factText(const Fact& fact, Extent extent) {
    if (std::holds_alternative<Absent>(fact.value.value)) {
        return fact.label;
    }
    const bool named = extent == Extent::Brief && !fact.value.codeName.empty();
    return fact.label + (fact.label.empty() ? "" : " ") +
           (named ? Line(fact.value.codeName, Ink::Remark) : briefText(fact.value));
}

/// "Service 0xE6A0 (59040) "Maré-Açu HD"  digital television (0x01), running, PMT PID 0x0101 version 0"
std::vector<Line> piecesOf(const Node& node, Extent extent) {
    Line heading{node.title, Ink::Heading};
    for (const Field& name : node.names) {
        heading += " " + nameText(name);
    }
    std::vector<Line> pieces;
    for (const Fact& fact : node.facts) {
        if (fact.extent <= extent) {
            if (!pieces.empty()) {
                pieces.back() += ",";
            }
            pieces.push_back(factText(fact, extent));
        }
    }
    pieces.insert(pieces.begin(), std::move(heading));
    return pieces;
}

/// "stream_event_descriptor (0x04)  event_id 0x0007  event_npt_l 780.000000 s"
std::vector<Line> piecesOf(const Detail& detail) {
    const std::string table = detail.table.empty() ? "" : detail.table + ' ';
    const auto* const object = std::get_if<Object>(&detail.field.value);
    if (object == nullptr) {
        std::vector<Line> pieces = briefPieces({detail.field});
        pieces.front() = table + pieces.front();
        return pieces;
    }
    std::vector<Line> pieces = briefPieces(besideHeading(object->fields));
    pieces.insert(pieces.begin(), table + headingOf(detail.field));
    return pieces;
}

void appendNode(Page& page, const Node& node, Extent extent, const Line& first, const Line& rest) {
    const Line below = rest + (node.children.empty() ? LAST.rest : INNER.rest);
    const Line further = below + blanks(FURTHER);
    std::vector<Line> pieces = piecesOf(node, extent);
    std::vector<Line> faults;
    for (const std::string& fault : node.faults) {
        (extent == Extent::Brief ? pieces : faults).emplace_back(MARK + fault, Ink::Fault);
    }
    appendPieces(page, first, further, pieces);
    for (const Line& fault : faults) {
        appendPieces(page, below, further, {fault});
    }
    if (extent == Extent::Full) {
        for (const Detail& detail : node.details) {
            appendPieces(page, below, further, piecesOf(detail));
        }
    }
    for (const Node& child : node.children) {
        const Branch& branch = &child == &node.children.back() ? LAST : INNER;
        appendNode(page, child, extent, rest + branch.first, rest + branch.rest);
    }
}

} // namespace

void appendOutline(Page& page, const std::vector<Node>& nodes, Extent extent) {
    for (const Node& node : nodes) {
        appendNode(page, node, extent, "", "");
        page.lines.emplace_back();
    }
}

} // namespace inspect
