#include "arranging/Outline.h"

#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>
#include <iterator>

namespace inspect {

namespace {

/// Lists of descriptors that are in no object of the library. Each of these is told for itself.
struct LeftOut {
    std::string_view list;
    std::string_view element; ///< what it is called that has no name
    std::string_view why;
};

constexpr LeftOut LEFT_OUT[] = {
    {"unknown_descriptors", "unknown descriptor", "skipped by the receiver"},
    {"displaced_descriptors", "displaced descriptor", "displaced by a later one"},
};

/// The descriptor under its name, if it has one, with the reason in its place.
Field toldForItself(Field descriptor, const LeftOut& list) {
    Fields& fields = std::get<Object>(descriptor.value).fields;
    const auto tag =
        std::find_if(fields.begin(), fields.end(), [](const Field& each) { return each.name == "descriptor_tag"; });
    descriptor.name = tag->codeName.empty() ? list.element : tag->codeName;
    tag->codeName = list.why;
    return descriptor;
}

/// Whether a person sees what a value is without its name: "AUTOSTART", but not "171".
bool speaksForItself(const Field& value) {
    return !std::holds_alternative<Number>(value.value) || !value.codeName.empty() || !value.reading.empty();
}

std::string versionText(const Table& table) {
    return table.taken.empty() || !table.taken.front()->header
               ? ""
               : fmt::format(" version {}", table.taken.front()->header->version);
}

} // namespace

void Node::say(std::string_view label, std::optional<Field> value, Extent extent) {
    if (value) {
        const std::string_view needed = label.empty() && !speaksForItself(*value) ? value->name : label;
        facts.push_back({std::string(needed), std::move(*value), extent});
    }
}

void Node::say(std::string_view words, Extent extent) {
    facts.push_back({std::string(words), absent({}), extent});
}

void Node::sayVersion(const Table& table, Extent extent) {
    const std::string_view name = tableName(table.key.tableId);
    const std::string version = versionText(table);
    if (table.key.pid) {
        say(fmt::format("{} PID 0x{:04X}{}", name, *table.key.pid, version), extent);
    } else if (!version.empty()) {
        say(fmt::format("{}{}", name, version), extent);
    }
}

void Node::sayVersionOnly(const Table& table) {
    if (const std::string version = versionText(table); !version.empty()) {
        say(version.substr(1), Extent::Overview);
    }
}

void Node::tell(std::string_view table, Fields fields) {
    for (Field& field : fields) {
        const auto* const leftOut = std::find_if(std::begin(LEFT_OUT), std::end(LEFT_OUT),
                                                 [&field](const LeftOut& each) { return each.list == field.name; });
        if (leftOut == std::end(LEFT_OUT)) {
            details.push_back({std::string(table), std::move(field)});
            continue;
        }
        for (Field& each : std::get<List>(field.value).elements) {
            details.push_back({std::string(table), toldForItself(std::move(each), *leftOut)});
        }
    }
}

void Node::join(Joining joining) {
    std::vector<Node> left;
    std::vector<std::pair<std::string, std::string>> joined; // of each kind the marks
    std::size_t counted = 0;
    for (Node& child : children) {
        child.join(joining);
        if (child.kind.empty() || !child.faults.empty()) {
            left.push_back(std::move(child));
            continue;
        }
        if (joining == Joining::ByCount && child.isComponent) {
            ++counted;
        } else {
            auto alike = std::find_if(joined.begin(), joined.end(),
                                      [&child](const auto& each) { return each.first == child.kind; });
            alike = alike != joined.end() ? alike : joined.insert(alike, {child.kind, {}});
            alike->second += ' ' + child.mark;
        }
        std::move(child.children.begin(), child.children.end(), std::back_inserter(left));
    }
    if (counted != 0) {
        say(fmt::format("{} {}", counted, counted == 1 ? "component" : "components"));
    }
    for (const auto& [what, which] : joined) {
        say(what + which);
    }
    children = std::move(left);
}

} // namespace inspect
