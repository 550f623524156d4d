#pragma once

#include "describing/Field.h"

#include <optional>
#include <string_view>

namespace inspect {

/// The field of a name; null when there is none.
const Field* find(const Fields& fields, std::string_view name);

/// What an object of a name holds; nothing when there is none.
const Fields& inner(const Fields& fields, std::string_view name);

/// What an element of a list holds, if it is an object.
const Fields& inner(const Field& element);

/// The elements of the list of a name; none when there is none.
const Fields& elements(const Fields& fields, std::string_view name);

/// The number of a name; nothing when there is none.
std::optional<std::int64_t> numberIn(const Fields& fields, std::string_view name);

/// The bytes of the text of a name; none when there is no such text.
std::string textIn(const Fields& fields, std::string_view name);

/// Whether the flag of a name is there and set.
bool isSet(const Fields& fields, std::string_view name);

/// The numbers that the list of a name holds.
std::vector<std::int64_t> numbersIn(const Fields& fields, std::string_view name);

/// Takes the field of a name out of these; nothing when there is none.
std::optional<Field> take(Fields& fields, std::string_view name);

/// Takes the field of a name out of the object of a name. The object goes with the last of its fields.
std::optional<Field> take(Fields& fields, std::string_view object, std::string_view name);

} // namespace inspect
