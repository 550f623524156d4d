#include "json/FieldJson.h"

#include "json/JsonValues.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

struct ValueJson {
    Json operator()(Absent /*value*/) const { return nullptr; }
    Json operator()(bool value) const { return value; }
    Json operator()(const Number& number) const { return number.value; }
    Json operator()(const Text& text) const { return text.decoded; }
    Json operator()(const Bytes& value) const { return hexJson(value.bytes); }
    Json operator()(const Object& object) const { return fieldsJson(object.fields); }

    Json operator()(const List& list) const {
        Json array = Json::array();
        for (const Field& element : list.elements) {
            array.push_back(std::visit(*this, element.value));
        }
        return array;
    }
};

/// What stands beside a value.
struct Companion {
    const char* suffix;
    const char* suffixOfElements;
    bool (*has)(const Field& field);
    Json (*of)(const Field& field);
};

Json rawBytes(const Field& field) {
    const auto* const text = std::get_if<Text>(&field.value);
    return text == nullptr ? Json() : hexJson({text->raw.begin(), text->raw.end()});
}

constexpr Companion COMPANIONS[] = {
    {"_name", "_names", [](const Field& field) { return field.isCode; },
     [](const Field& field) { return orNull(field.codeName); }},
    {"_hex", "_hex", [](const Field& field) { return std::holds_alternative<Text>(field.value); }, rawBytes},
    {"_reading", "_readings", [](const Field& field) { return !field.reading.empty(); },
     [](const Field& field) { return orNull(field.reading); }},
    {"_instant", "_instants", [](const Field& field) { return field.isTime; },
     [](const Field& field) { return orNull(field.instant); }},
    {"_seconds", "_seconds", [](const Field& field) { return field.isDuration; },
     [](const Field& field) { return orNull(field.seconds); }},
};

void addCompanions(Json& object, const Field& field) {
    for (const Companion& companion : COMPANIONS) {
        if (companion.has(field)) {
            object[field.name + companion.suffix] = companion.of(field);
        }
    }
}

void addCompanionsOfElements(Json& object, const std::string& name, const Fields& elements) {
    for (const Companion& companion : COMPANIONS) {
        if (std::any_of(elements.begin(), elements.end(), companion.has)) {
            Json& array = object[name + companion.suffixOfElements] = Json::array();
            std::transform(elements.begin(), elements.end(), std::back_inserter(array), companion.of);
        }
    }
}

Json placeJson(const Field& field, const FieldPlace& place) {
    if (const auto* const object = std::get_if<Object>(&field.value)) {
        return placesJson(object->fields, place.parts);
    }
    if (const auto* const list = std::get_if<List>(&field.value)) {
        Json array = Json::array();
        for (std::size_t at = 0; at < list->elements.size(); ++at) {
            array.push_back(placeJson(list->elements[at], place.parts[at]));
        }
        return array;
    }
    return rangesJson(place.bytes);
}

} // namespace

Json hexJson(const std::vector<std::uint8_t>& bytes) {
    return fmt::format("{:02X}", fmt::join(bytes, ""));
}

Json fieldsJson(const Fields& fields) {
    Json object = Json::object();
    for (const Field& field : fields) {
        object[field.name] = std::visit(ValueJson{}, field.value);
        addCompanions(object, field);
        if (const auto* const list = std::get_if<List>(&field.value)) {
            addCompanionsOfElements(object, field.name, list->elements);
        }
    }
    return object;
}

Json placesJson(const Fields& fields, const FieldPlaces& places) {
    Json object = Json::object();
    for (std::size_t at = 0; at < fields.size(); ++at) {
        object[fields[at].name] = placeJson(fields[at], places[at]);
    }
    return object;
}

} // namespace inspect
