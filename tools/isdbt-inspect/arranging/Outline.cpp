#include "arranging/Outline.h"

#include "tables/TableKinds.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// Lists of descriptors that are in no object of the library. Each of these is told for itself.
struct LeftOut {
    std::string_view list;
    std::string_view element;
};

constexpr LeftOut LEFT_OUT[] = {
    {"unknown_descriptors", "unknown descriptor"},
    {"displaced_descriptors", "displaced descriptor"},
};

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
        say(version.substr(1));
    }
}

void Node::tell(std::string_view table, Fields fields) {
    for (Field& field : fields) {
        std::string_view element;
        for (const LeftOut& each : LEFT_OUT) {
            element = field.name == each.list ? each.element : element;
        }
        if (element.empty()) {
            details.push_back({std::string(table), std::move(field)});
            continue;
        }
        for (Field& each : std::get<List>(field.value).elements) {
            each.name = element;
            details.push_back({std::string(table), std::move(each)});
        }
    }
}

} // namespace inspect
