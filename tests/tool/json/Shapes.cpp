#include "tool/json/Shapes.h"

#include "describing/StandardReadings.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace {

using Json = nlohmann::ordered_json;

Json reference(const std::string& name) {
    return {{"$ref", "#/$defs/" + name}};
}

/// An array with an element for each of another one.
Json arrayOf(const std::string& name) {
    return {{"type", "array"}, {"items", {{"anyOf", {reference(name), {{"type", "null"}}}}}}};
}

} // namespace

struct ValueShape::Taker {
    ValueShape& shape;
    Shapes& shapes;
    const std::string& name;

    void operator()(inspect::Absent /*value*/) const { shape.m_types.insert("null"); }
    void operator()(bool /*value*/) const { shape.m_types.insert("boolean"); }

    void operator()(const inspect::Number& number) const {
        shape.m_types.insert("integer");
        shape.m_hexDigits = number.hexDigits;
    }

    void operator()(const inspect::Text& /*value*/) const {
        shape.m_types.insert("string");
        shape.m_isText = true;
    }

    void operator()(const inspect::Bytes& /*value*/) const {
        shape.m_types.insert("string");
        shape.m_isBytes = true;
    }

    void operator()(const inspect::List& list) const {
        shape.m_types.insert("array");
        for (const inspect::Field& element : list.elements) {
            if (!shape.m_element) {
                shape.m_element = std::make_unique<ValueShape>();
            }
            shape.m_element->add(element, shapes);
        }
    }

    void operator()(const inspect::Object& object) const {
        shape.m_types.insert("object");
        if (!name.empty() && name != inspect::STANDARD) { // each descriptor has another one of that name
            shape.m_object = name;
            shapes.add(name, object.fields);
            return;
        }
        if (!shape.m_elementObject) {
            shape.m_elementObject = std::make_unique<ObjectShape>();
        }
        shape.m_elementObject->add(object.fields, shapes);
    }
};

void ValueShape::add(const inspect::Field& field, Shapes& shapes) {
    std::visit(Taker{*this, shapes, field.name}, field.value);
    m_isCode = m_isCode || field.isCode;
    m_isRead = m_isRead || !field.reading.empty();
    m_isTime = m_isTime || field.isTime;
    m_isDuration = m_isDuration || field.isDuration;
    m_unit = field.unit.empty() ? m_unit : field.unit;
}

void ValueShape::addTo(Json& object, const std::string& name, bool required) const {
    Json& properties = object["properties"];
    const auto add = [&](const std::string& member, Json schema, bool isRequired) {
        if (properties.contains(member)) {
            throw std::logic_error("two members of the name " + member);
        }
        properties[member] = std::move(schema);
        if (isRequired) {
            object["required"].push_back(member);
        }
    };
    Json value = schema();
    if (name == inspect::STANDARD) { // what the bytes have
        (value.contains("anyOf") ? value["anyOf"][0] : value).erase("required");
    }
    add(name, std::move(value), required);
    if (m_isCode) {
        add(name + "_name", reference("code_name"), required);
    }
    if (m_isText) {
        add(name + "_hex", reference("hex"), required);
    }
    if (m_isRead || m_isText || m_types.count("array") != 0) {
        add(name + "_reading", reference("reading"), false);
    }
    if (m_isDuration) {
        add(name + "_seconds", {{"type", {"integer", "null"}}, {"minimum", 0}}, required);
    }
    if (m_isTime) {
        add(name + "_instant", {{"type", "string"}, {"format", "date-time"}}, required);
    }
    if (m_element && m_element->m_isCode) {
        add(name + "_names", arrayOf("code_name"), false);
    }
    if (m_element && m_element->m_isText) {
        add(name + "_hex", arrayOf("hex"), false);
    }
    if (m_element && (m_element->m_isRead || m_element->m_isText)) {
        add(name + "_readings", arrayOf("reading"), false);
    }
}

Json ValueShape::schema() const {
    if (!m_object.empty()) {
        return m_types.count("null") == 0 ? reference(m_object)
                                          : Json{{"anyOf", {reference(m_object), {{"type", "null"}}}}};
    }
    if (m_isBytes) {
        return reference("hex");
    }
    if (m_elementObject) {
        return m_types.count("null") == 0 ? m_elementObject->schema()
                                          : Json{{"anyOf", {m_elementObject->schema(), {{"type", "null"}}}}};
    }
    Json schema;
    if (m_types.size() == 1) {
        schema["type"] = *m_types.begin();
    } else {
        schema["type"] = m_types;
    }
    if (m_hexDigits != 0) {
        schema["minimum"] = 0;
        schema["maximum"] = (std::uint64_t{1} << (4U * static_cast<unsigned>(m_hexDigits))) - 1;
    }
    if (!m_unit.empty()) {
        schema["description"] = "in " + m_unit;
    }
    if (m_types.count("array") != 0) {
        schema["items"] = m_element ? m_element->schema() : throw std::logic_error("a list that is always empty");
    }
    return schema;
}

ObjectShape::Member& ObjectShape::member(const std::string& name) {
    const auto found =
        std::find_if(m_members.begin(), m_members.end(), [&name](const Member& each) { return each.name == name; });
    return found != m_members.end() ? *found : m_members.emplace_back(Member{name, 0, {}});
}

void ObjectShape::add(const inspect::Fields& fields, Shapes& shapes) {
    ++m_seen;
    for (const inspect::Field& field : fields) {
        Member& each = member(field.name);
        ++each.seen;
        each.value.add(field, shapes);
    }
}

Json ObjectShape::schema() const {
    Json schema{{"type", "object"},
                {"properties", Json::object()},
                {"required", Json::array()},
                {"additionalProperties", false}};
    for (const Member& each : m_members) {
        each.value.addTo(schema, each.name, each.seen == m_seen && each.name != inspect::STANDARD);
    }
    return schema;
}

Json Shapes::schemas() const {
    Json schemas = Json::object();
    for (const auto& [name, shape] : m_shapes) {
        schemas[name] = shape.schema();
    }
    return schemas;
}
