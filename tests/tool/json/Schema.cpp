#include "tool/json/Schema.h"

#include "tool/json/Examples.h"
#include "tool/json/Shapes.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

constexpr int INDENT = 2;

/// "DSM-CC" is "dsm_cc_table".
std::string definitionOf(std::string table) {
    std::transform(table.begin(), table.end(), table.begin(),
                   [](unsigned char each) { return each == '-' ? '_' : static_cast<char>(std::tolower(each)); });
    return table + "_table";
}

/// The fields of a section are those of its table.
Json fieldsOf(const std::string& table) {
    return {{"if", {{"properties", {{"table", {{"const", table}}}}}}},
            {"then", {{"properties", {{"fields", {{"$ref", "#/$defs/" + definitionOf(table)}}}}}}}};
}

/// A descriptor that came by itself stands under its name.
void addDescriptors(Json& fields, const Json& shapes) {
    constexpr std::string_view END = "_descriptor";
    for (const auto& [name, shape] : shapes.items()) {
        if (name.size() > END.size() && name.compare(name.size() - END.size(), END.size(), END) == 0) {
            fields["properties"][name] = {{"$ref", "#/$defs/" + name}};
        }
    }
}

} // namespace

std::string schemaText() {
    Shapes shapes;
    std::set<std::string> tables;
    for (const Example& example : examples()) {
        tables.insert(example.table);
        shapes.add(definitionOf(example.table), example.fields);
    }
    Json schema = Json::parse(std::ifstream(SCHEMA_FRAME));
    Json& section = schema["$defs"]["section"];
    for (const std::string& table : tables) {
        section["allOf"].push_back(fieldsOf(table));
    }
    addDescriptors(schema["$defs"]["descriptor"]["properties"]["fields"], shapes.schemas());
    schema["$defs"].update(shapes.schemas());
    return schema.dump(INDENT) + '\n';
}
