#pragma once

#include "describing/Field.h"

#include <map>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <set>
#include <string>
#include <utility>
#include <vector>

class Shapes;

/// What all the values of a field that were seen are like.
class ValueShape {
public:
    /// @param shapes takes the objects that have a name
    void add(const inspect::Field& field, Shapes& shapes);

    /// Adds the field's members, and requires those that are never left out.
    void addTo(nlohmann::ordered_json& object, const std::string& name, bool required) const;

    nlohmann::ordered_json schema() const;

private:
    struct Taker;

    std::set<std::string> m_types; ///< as a schema calls them
    int m_hexDigits = 0;
    bool m_isText = false;
    bool m_isBytes = false;
    bool m_isCode = false;
    bool m_isRead = false;
    bool m_isTime = false;
    bool m_isDuration = false;
    std::string m_unit;
    std::string m_object; ///< the name of the shape of the objects; empty for the elements of a list
    std::unique_ptr<class ObjectShape> m_elementObject;
    std::unique_ptr<ValueShape> m_element;
};

/// The members that objects of one kind had.
class ObjectShape {
public:
    void add(const inspect::Fields& fields, Shapes& shapes);
    nlohmann::ordered_json schema() const;

private:
    struct Member {
        std::string name;
        std::size_t seen = 0;
        ValueShape value;
    };

    Member& member(const std::string& name);

    std::vector<Member> m_members; ///< in the order in which they were first seen
    std::size_t m_seen = 0;
};

/// The shapes of the objects that have a name, under it.
class Shapes {
public:
    void add(const std::string& name, const inspect::Fields& fields) { m_shapes[name].add(fields, *this); }
    nlohmann::ordered_json schemas() const;

private:
    std::map<std::string, ObjectShape> m_shapes;
};
