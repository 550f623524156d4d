#include "text/OutlineText.h"

#include "describing/StandardReadings.h"
#include "text/BriefText.h"
#include "text/Pieces.h"

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
constexpr std::size_t INDENT = 4;
constexpr std::string_view MARK = "! ";

constexpr std::string_view TAG = "descriptor_tag";

std::string nameText(const Field& name, const Style& style) {
    Field plain = name;
    plain.unit.clear();
    const std::string text = style.paint(Ink::Heading, briefText(plain, style));
    return name.unit.empty() ? text : fmt::format("{} [{}]", text, name.unit);
}

std::string factText(const Fact& fact, const Style& style) {
    if (std::holds_alternative<Absent>(fact.value.value)) {
        return fact.label;
    }
    const std::string value = briefText(fact.value, style);
    return fact.label.empty() ? value : fact.label + ' ' + value;
}

/// "Service 0xE6A0 (59040) "Maré-Açu HD"  digital television (0x01), running, PMT PID 0x0101 version 0"
std::vector<std::string> piecesOf(const Node& node, const Style& style) {
    std::string heading = style.paint(Ink::Heading, node.title);
    for (const Field& name : node.names) {
        heading += ' ' + nameText(name, style);
    }
    std::vector<std::string> pieces;
    for (const Fact& fact : node.facts) {
        if (style.full || fact.extent == Extent::Overview) {
            if (!pieces.empty()) {
                pieces.back() += ',';
            }
            pieces.push_back(factText(fact, style));
        }
    }
    pieces.insert(pieces.begin(), std::move(heading));
    return pieces;
}

/// "stream_event_descriptor (0x04)  event_id 0x0007  event_npt_l 780.000000 s"
std::vector<std::string> piecesOf(const Detail& detail, const Style& style) {
    const std::string table = detail.table.empty() ? "" : detail.table + ' ';
    const auto* const object = std::get_if<Object>(&detail.field.value);
    if (object == nullptr) {
        std::vector<std::string> pieces = briefPieces({detail.field}, style);
        pieces.front().insert(0, table);
        return pieces;
    }
    std::string heading = table + style.paint(Ink::Name, detail.field.name);
    Fields fields = object->fields;
    const auto tag = std::find_if(fields.begin(), fields.end(), [](const Field& each) { return each.name == TAG; });
    if (tag != fields.end()) {
        heading += fmt::format(" (0x{:02X}{}{})", std::get<Number>(tag->value).value, tag->codeName.empty() ? "" : ", ",
                               tag->codeName);
        fields.erase(tag);
    }
    std::vector<std::string> pieces = briefPieces(standardFirst(fields), style);
    pieces.insert(pieces.begin(), std::move(heading));
    return pieces;
}

void appendNode(Page& page, const Node& node, const std::string& first, const std::string& rest) {
    const std::string below = rest + std::string(node.children.empty() ? LAST.rest : INNER.rest);
    const std::string further = below + std::string(INDENT, ' ');
    appendPieces(page, first, further, piecesOf(node, page.style));
    for (const std::string& fault : node.faults) {
        appendPieces(page, below, further, {page.style.paint(Ink::Fault, std::string(MARK) + fault)});
    }
    if (page.style.full) {
        for (const Detail& detail : node.details) {
            appendPieces(page, below, further, piecesOf(detail, page.style));
        }
    }
    for (const Node& child : node.children) {
        const Branch& branch = &child == &node.children.back() ? LAST : INNER;
        appendNode(page, child, rest + std::string(branch.first), rest + std::string(branch.rest));
    }
}

} // namespace

void appendOutline(Page& page, const std::vector<Node>& nodes) {
    for (const Node& node : nodes) {
        appendNode(page, node, "", "");
        page.text += '\n';
    }
}

} // namespace inspect
