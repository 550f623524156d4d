#include "json/OutlineJson.h"

#include "text/ValueText.h"
#include "json/FieldJson.h"
#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

std::string factText(const Fact& fact) {
    const std::string value =
        std::holds_alternative<Absent>(fact.value.value) ? std::string() : briefText(fact.value).text();
    return fact.label + (fact.label.empty() || value.empty() ? "" : " ") + value;
}

Json detailJson(const Detail& detail) {
    return {{"table", orNull(detail.table)}, {"fields", fieldsJson({detail.field})}};
}

Json nodeJson(const Node& node);

/// What there is of a kind, each as JSON.
template <class All, class Of> Json arrayOf(const All& all, const Of& of) {
    Json array = Json::array();
    for (const auto& each : all) {
        array.push_back(of(each));
    }
    return array;
}

Json nodeJson(const Node& node) {
    return {{"title", node.title},
            {"names", arrayOf(node.names, [](const Field& name) { return briefText(name).text(); })},
            {"facts", arrayOf(node.facts, factText)},
            {"faults", node.faults},
            {"details", arrayOf(node.details, detailJson)},
            {"children", arrayOf(node.children, nodeJson)}};
}

} // namespace

std::string outlineLine(const std::string& source, const std::vector<Node>& nodes) {
    Json object = lineObject("outline", source);
    object["nodes"] = arrayOf(nodes, nodeJson);
    return jsonLine(object);
}

} // namespace inspect
