#pragma once

#include "Node.h"
#include "QuorDefs.h"

#include <initializer_list>
#include <limits>
#include <list>
#include <pybind11/pybind11.h>
#include <string>
#include <utility>

/// What the generated binding of the public headers is written in.
namespace binding {

namespace py = pybind11;

/// What a Python object has of an object of the library.
class Handle {
public:
    explicit Handle(std::shared_ptr<Node> node, bool inherited = false)
        : m_node(std::move(node)), m_inherited(inherited) {}

    /// An object that was made without its constructor has nothing: see get().
    static void* operator new(std::size_t size);
    [[gnu::noinline]] static void operator delete(void* memory);
    static void* operator new(std::size_t /*size*/, void* place) { return place; }

    /// Throws when the object is gone, or of another class.
    template <class T> T& as() const { return static_cast<T&>(*as(typeid(T)).object); }

    /// What holds the object, if it is of the class; otherwise null.
    template <class T> T* holder() const { return static_cast<T*>(holder(typeid(T))); }

    const Found& get() const { return node().get(); }
    Node& node() const;
    bool inherited() const { return m_inherited; }

    /// An object that this one holds, as Python's.
    py::object child(const Found& found) const;

    /// The same of what this one may inherit from what holds it.
    /// @param get Found(int* inherited)
    template <class Get> py::object childOrInherited(const Get& get) const {
        int inherited = 0;
        const Found found = get(&inherited);
        return child(found, inherited != 0);
    }

private:
    Quor::TISDBTMemory* holder(const std::type_info& type) const;
    py::object child(const Found& found, bool inherited) const;
    const Found& as(const std::type_info& type) const;

    std::shared_ptr<Node> m_node;
    bool m_inherited;
};

/// What Python gets for a handle.
py::object wrap(Handle handle);

py::object number(std::int64_t value);
py::object flag(std::int64_t value);

/// A text with a character for each byte. Where it is broadcast in Latin America, they are the right ones.
py::object text(const std::string& value);

/// The bytes of such a text.
std::string raw(const py::str& text);

py::object bytes(const std::uint8_t* data, std::size_t size);
py::object numbers(const std::uint8_t* values, std::size_t count);
py::object numbers(const std::uint16_t* values, std::size_t count);

/// The member of an enumeration, or the number where there is none.
/// @param at which of the enumerations, see Class::enumeration()
py::object code(std::size_t at, std::int64_t value);

/// The same of one whose members are bits.
py::object flags(std::size_t at, std::int64_t value);

/// Elements that go by position, of which as many are there as the library can reach.
template <class Position, class Get> py::object sequence(std::uint64_t size, const Get& get) {
    py::list elements;
    for (std::uint64_t at = 0; at < size && at <= std::numeric_limits<Position>::max(); ++at) {
        elements.append(get(static_cast<Position>(at)));
    }
    return py::tuple(elements);
}

inline py::object key(const std::string& value) {
    return text(value);
}
inline py::object key(std::int64_t value) {
    return number(value);
}

/// The keys of a list that is the caller's.
template <class Key> py::object keys(std::list<Key>* list) {
    const std::unique_ptr<std::list<Key>> owned(list);
    py::list elements;
    for (const Key& each : *owned) {
        elements.append(key(each));
    }
    return py::tuple(elements);
}

py::object readOnly(const py::dict& mapping);

template <class Key, class Get> py::object mapping(std::list<Key>* list, const Get& get) {
    const std::unique_ptr<std::list<Key>> owned(list);
    py::dict elements;
    for (const Key& each : *owned) {
        elements[key(each)] = get(each);
    }
    return readOnly(elements);
}

/// Some of what an object holds, in a list that is the caller's.
template <class T> py::object chosen(const Handle& self, std::list<T*>* list) {
    const std::unique_ptr<std::list<T*>> owned(list);
    py::list elements;
    for (T* each : *owned) {
        elements.append(self.child(found(each)));
    }
    return elements;
}

/// All that an object holds in a list.
using Items = std::vector<Found> (*)(const Handle& self);

template <class Position, class Get> std::vector<Found> foundByPosition(std::uint64_t size, const Get& get) {
    std::vector<Found> all;
    for (std::uint64_t at = 0; at < size && at <= std::numeric_limits<Position>::max(); ++at) {
        all.push_back(found(get(static_cast<Position>(at))));
    }
    return all;
}

template <class Key, class Get> std::vector<Found> foundByKey(std::list<Key>* list, const Get& get) {
    const std::unique_ptr<std::list<Key>> owned(list);
    std::vector<Found> all;
    for (const Key& each : *owned) {
        all.push_back(found(get(each)));
    }
    return all;
}

template <class Add> void take(const Handle& self, const Handle& item, Items items, const Add& add) {
    self.node().take(
        item.node(), [&] { return items(self); }, add);
}

template <class Remove> bool drop(const Handle& self, Items items, const Remove& remove) {
    bool removed = false;
    self.node().drop([&] { return items(self); }, [&] { removed = remove(); });
    return removed;
}

/// Changes values that an object holds.
template <class Change> auto change(const Handle& self, const Change& change) {
    self.node().root().m_isAsParsed = false;
    return change();
}

/// What isdbt-inspect shows of what was parsed, as it is in its JSON.
py::object describeTable(const Handle& self);
py::object describeDescriptor(const Handle& self);

/// How standards call a descriptor.
py::object kindOf(const Handle& self);

/// What the standard reads in a descriptor where the receiver reads something else.
py::object readByStandard(const Handle& self);

Bytes copied(const py::buffer& buffer);

/// What a constructor of Python fills.
using Place = py::detail::value_and_holder;

void construct(Place& place, const Found& made, std::vector<Bytes> bytes = {});

using Getter = py::object (*)(const Handle& self);
using Parser = Found (*)(std::uint8_t* data, std::uint32_t size, std::uint16_t* errorCode, const Handle* previous);

/// What stands behind all classes: how an object came to be, and where it went.
void bindObject(py::module_& module);

/// A section of any table that the library knows.
void bindSections(py::module_& module);

/// A class of Python that is one of the library's.
class Class {
public:
    /// @param base null for a class without objects
    Class(py::module_& module, const char* name, const std::type_info& type, const std::type_info* base,
          const char* comment);

    void constant(const char* name, std::int64_t value);
    void property(const char* name, Getter get, const char* comment, py::cpp_function set = {});
    void parse(Parser parser, const char* comment, bool withPrevious);

    /// A member of IntEnum or IntFlag; its names become the class's, too.
    void enumeration(std::size_t at, const char* kind, const char* name,
                     std::initializer_list<std::pair<const char*, std::int64_t>> members);

    template <class Function, class... Extra>
    void method(const char* name, Function called, const char* comment, const Extra&... extra) {
        m_class.attr(name) = py::cpp_function(called, py::name(name), py::is_method(m_class),
                                              py::sibling(sibling(name)), comment, extra...);
    }

    template <class Function, class... Extra>
    void function(const char* name, Function called, const char* comment, const Extra&... extra) {
        addStatic(name, py::cpp_function(called, py::name(name), py::scope(m_class), py::sibling(sibling(name)),
                                         comment, extra...));
    }

    template <class Function, class... Extra>
    void constructor(Function called, const char* comment, const Extra&... extra) {
        method("__init__", called, comment, py::detail::is_new_style_constructor(), extra...);
    }

private:
    py::object sibling(const char* name) const;
    void addStatic(const char* name, const py::cpp_function& function);

    py::object m_class;
};

} // namespace binding
