#include "Binding.h"
#include "TISDBTTable.h"
#include "describing/Describing.h"
#include "describing/StandardReadings.h"
#include "descriptors/TISDBTDescriptor.h"
#include "parsing/LogLines.h"
#include "parsing/SectionParser.h"
#include "tables/TableKinds.h"
#include "json/FieldJson.h"

#include <algorithm>
#include <cstdlib>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <typeindex>
#include <unordered_map>

namespace binding {

namespace {

/// The charset of the broadcasts of Latin America, in which each byte is a character.
constexpr const char* CHARSET = "iso8859-15";

struct Known {
    py::handle type;
    const std::type_info* base;
};

/// Never given back: Python asks for classes until it ends.
std::unordered_map<std::type_index, Known>& classes() {
    static auto* const CLASSES = new std::unordered_map<std::type_index, Known>;
    return *CLASSES;
}

std::vector<py::handle>& enumerations() {
    static auto* const ENUMERATIONS = new std::vector<py::handle>;
    return *ENUMERATIONS;
}

bool isA(const std::type_info& type, const std::type_info& base) {
    const std::type_info* each = &type;
    while (each != nullptr && *each != base) {
        const auto known = classes().find(*each);
        each = known == classes().end() ? nullptr : known->second.base;
    }
    return each != nullptr;
}

std::string nameOf(const std::type_info& type) {
    const auto known = classes().find(type);
    return known == classes().end() ? "object" : py::str(known->second.type.attr("__name__"));
}

[[noreturn]] void refuse(std::uint16_t errorCode, const std::vector<std::string>& logLines) {
    py::list lines;
    for (const std::string& line : logLines) {
        lines.append(text(line));
    }
    const py::object refused = py::module_::import("quor_isdbt.refusal").attr("Refused");
    const std::string_view name = inspect::errorName(errorCode);
    PyErr_SetObject(refused.ptr(), refused(errorCode, py::str(name.data(), name.size()), py::tuple(lines)).ptr());
    throw py::error_already_set();
}

py::object parsed(const py::buffer& data, Parser parse, const Handle* previous) {
    const Bytes bytes = copied(data);
    inspect::LogLines log;
    std::uint16_t errorCode = Quor::TISDBTTable::ERROR_OK;
    const Found made = parse(bytes.data(), bytes.size(), &errorCode, previous);
    if (made.object == nullptr) {
        refuse(errorCode, log.take());
    }
    auto node = std::make_shared<Node>(made, std::vector{bytes});
    node->m_isAsParsed = true;
    return wrap(Handle(std::move(node)));
}

Found parseSection(std::uint8_t* data, std::uint32_t size, std::uint16_t* errorCode, const Handle* /*previous*/) {
    const inspect::TableKind* const kind = size == 0 ? nullptr : inspect::tableKind(data[0]);
    if (kind == nullptr) {
        throw py::value_error(size == 0 ? "a section of no bytes"
                                        : fmt::format("no table of the library has the table_id 0x{:02X}", data[0]));
    }
    return found(kind->parse(data, size, errorCode));
}

/// What is told of an object is read from its bytes, too, which say no more of one that was changed.
template <class T> const T& asParsed(const Handle& self) {
    const T& object = self.as<T>();
    if (!self.node().root().m_isAsParsed) {
        throw py::value_error("only what was parsed, and not changed since, is described");
    }
    return object;
}

py::object python(const inspect::Fields& fields) {
    return py::module_::import("json").attr("loads")(inspect::fieldsJson(fields).dump());
}

} // namespace

void* Handle::operator new(std::size_t size) {
    if (void* const memory = std::calloc(1, size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void Handle::operator delete(void* memory) {
    std::free(memory);
}

Node& Handle::node() const {
    if (!m_node) {
        PyErr_SetString(PyExc_ReferenceError, "it was never constructed");
        throw py::error_already_set();
    }
    return *m_node;
}

const Found& Handle::as(const std::type_info& type) const {
    const Found& found = get();
    if (!isA(*found.type, type)) {
        throw py::type_error(nameOf(*found.type) + " is no " + nameOf(type));
    }
    return found;
}

Quor::TISDBTMemory* Handle::holder(const std::type_info& type) const {
    const std::shared_ptr<Node> holder = node().holder();
    return holder && isA(*holder->get().type, type) ? holder->get().object : nullptr;
}

py::object Handle::child(const Found& found) const {
    return found.object == nullptr ? py::none() : wrap(Handle(node().child(found)));
}

py::object Handle::child(const Found& found, bool inherited) const {
    if (!inherited || found.object == nullptr) {
        return child(found);
    }
    return wrap(Handle(node().holder()->child(found), true));
}

py::object wrap(Handle handle) {
    auto* const type = reinterpret_cast<PyTypeObject*>(classes().at(*handle.get().type).type.ptr());
    auto made = py::reinterpret_steal<py::object>(type->tp_new(type, py::tuple().ptr(), nullptr));
    if (!made) {
        throw py::error_already_set();
    }
    auto* const instance = reinterpret_cast<py::detail::instance*>(made.ptr());
    Place place = instance->get_value_and_holder(py::detail::get_type_info(typeid(Handle)));
    place.value_ptr() = new Handle(std::move(handle));
    place.type->init_instance(instance, nullptr);
    return made;
}

void construct(Place& place, const Found& made, std::vector<Bytes> bytes) {
    place.value_ptr() = new Handle(std::make_shared<Node>(made, std::move(bytes)));
}

py::object number(std::int64_t value) {
    return py::int_(value);
}

py::object flag(std::int64_t value) {
    return py::bool_(value != 0);
}

py::object text(const std::string& value) {
    PyObject* const decoded = PyUnicode_Decode(value.data(), static_cast<Py_ssize_t>(value.size()), CHARSET, nullptr);
    if (decoded == nullptr) {
        throw py::error_already_set();
    }
    return py::reinterpret_steal<py::object>(decoded);
}

std::string raw(const py::str& text) {
    const auto encoded = py::reinterpret_steal<py::object>(PyUnicode_AsEncodedString(text.ptr(), CHARSET, nullptr));
    if (!encoded) {
        throw py::error_already_set();
    }
    return py::reinterpret_borrow<py::bytes>(encoded);
}

py::object bytes(const std::uint8_t* data, std::size_t size) {
    return py::bytes(reinterpret_cast<const char*>(data), data == nullptr ? 0 : size);
}

py::object numbers(const std::uint8_t* values, std::size_t count) {
    return sequence<std::size_t>(values == nullptr ? 0 : count, [&](std::size_t at) { return number(values[at]); });
}

py::object numbers(const std::uint16_t* values, std::size_t count) {
    return sequence<std::size_t>(values == nullptr ? 0 : count, [&](std::size_t at) { return number(values[at]); });
}

py::object code(std::size_t at, std::int64_t value) {
    const py::object plain = number(value);
    return enumerations()[at].attr("_value2member_map_").attr("get")(plain, plain);
}

py::object flags(std::size_t at, std::int64_t value) {
    return enumerations()[at](value);
}

py::object readOnly(const py::dict& mapping) {
    return py::reinterpret_steal<py::object>(PyDictProxy_New(mapping.ptr()));
}

Bytes copied(const py::buffer& buffer) {
    Py_buffer view;
    if (PyObject_GetBuffer(buffer.ptr(), &view, PyBUF_SIMPLE) != 0) {
        throw py::error_already_set();
    }
    Bytes bytes(view.buf, static_cast<std::size_t>(view.len));
    PyBuffer_Release(&view);
    return bytes;
}

Class::Class(py::module_& module, const char* name, const std::type_info& type, const std::type_info* base,
             const char* comment) {
    py::object of = base == nullptr ? py::module_::import("builtins").attr("object")
                                    : py::reinterpret_borrow<py::object>(classes().at(*base).type);
    py::dict members;
    members["__doc__"] = comment;
    members["__module__"] = "quor_isdbt";
    members["__slots__"] = py::tuple();
    m_class = py::type::of(of)(name, py::make_tuple(of), members);
    classes().emplace(type, Known{m_class.inc_ref(), base});
    module.attr(name) = m_class;
}

void Class::constant(const char* name, std::int64_t value) {
    m_class.attr(name) = value;
}

void Class::property(const char* name, Getter get, const char* comment, py::cpp_function set) {
    const py::object setter = set ? py::object(std::move(set)) : py::none();
    m_class.attr(name) =
        py::module_::import("builtins").attr("property")(py::cpp_function(get), setter, py::none(), comment);
}

void Class::parse(Parser parser, const char* comment, bool withPrevious) {
    if (withPrevious) {
        function(
            "parse",
            [parser](const py::buffer& data, const Handle* previous) { return parsed(data, parser, previous); },
            comment, py::arg("data"), py::arg("previous") = py::none());
    } else {
        function(
            "parse", [parser](const py::buffer& data) { return parsed(data, parser, nullptr); }, comment,
            py::arg("data"));
    }
}

void Class::enumeration(std::size_t at, const char* kind, const char* name,
                        std::initializer_list<std::pair<const char*, std::int64_t>> members) {
    py::list values;
    for (const auto& [member, value] : members) {
        values.append(py::make_tuple(member, value));
    }
    const std::string qualified = py::str(m_class.attr("__name__")).cast<std::string>() + "." + name;
    const py::object made = py::module_::import("enum").attr(kind)(name, values, py::arg("module") = "quor_isdbt",
                                                                   py::arg("qualname") = qualified);
    m_class.attr(name) = made;
    for (const auto& [member, value] : members) {
        m_class.attr(member) = made.attr(member);
    }
    enumerations().resize(std::max(enumerations().size(), at + 1));
    enumerations()[at] = made;
    made.inc_ref();
}

py::object Class::sibling(const char* name) const {
    return py::getattr(m_class, name, py::none());
}

void Class::addStatic(const char* name, const py::cpp_function& function) {
    m_class.attr(name) = py::staticmethod(function);
}

void bindObject(py::module_& module) {
    py::class_<Handle> object(
        module, "ISDBTMemory",
        "An object of the library. It keeps alive what holds it. Two of them are equal when they are the same object.");
    object.def("__eq__", [](const Handle& self, const py::object& other) {
        return py::isinstance<Handle>(other) && &self.node() == &other.cast<const Handle&>().node();
    });
    object.def("__hash__", [](const Handle& self) { return std::hash<const void*>()(&self.node()); });
    object.attr("__module__") = "quor_isdbt";
    classes().emplace(typeid(Quor::TISDBTMemory), Known{object.inc_ref(), nullptr});
}

py::object describeTable(const Handle& self) {
    return python(inspect::describe(asParsed<Quor::TISDBTTable>(self)));
}

namespace {

inspect::Field described(const Handle& self) {
    return inspect::describe(asParsed<Quor::TISDBTDescriptor>(self));
}

} // namespace

py::object describeDescriptor(const Handle& self) {
    return python(std::get<inspect::Object>(described(self).value).fields);
}

py::object kindOf(const Handle& self) {
    return text(described(self).name);
}

py::object readByStandard(const Handle& self) {
    return describeDescriptor(self).attr("get")(py::str(std::string(inspect::STANDARD)));
}

void bindSections(py::module_& module) {
    module.def(
        "parse_section", [](const py::buffer& data) { return parsed(data, parseSection, nullptr); },
        "Parses a section, from table_id to CRC_32, of any table that the library knows.", py::arg("data"));
}

} // namespace binding
