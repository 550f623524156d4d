#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace inspect {

struct Field;

/// Nothing where something could be, such as a pointer that is null.
struct Absent {};

struct Number {
    std::int64_t value;
    int hexDigits; ///< 0 for quantities; for identifiers the digits to show
};

/// Text as it is broadcast, in the character set of the broadcast.
struct Text {
    std::string raw;
};

struct Bytes {
    std::vector<std::uint8_t> bytes;
};

/// Elements without a name of their own.
struct List {
    std::vector<Field> elements;
};

struct Object {
    std::vector<Field> fields;
};

/// A named value, as every view and every output shows it. The name is the one of the library's getter, without its
/// prefix, in snake_case.
struct Field {
    std::string name;
    std::variant<Absent, bool, Number, Text, Bytes, List, Object> value;
    std::string codeName; ///< what the value stands for, when it is a code
    std::string unit;
    std::string reading; ///< the value, or a remark on it, in a form that suits a person

    Field in(std::string_view unitName) &&;
    Field reads(std::string_view text) &&;
};

Field absent(std::string_view name);
Field flag(std::string_view name, bool value);
Field number(std::string_view name, std::int64_t value);
Field text(std::string_view name, std::string_view raw);
Field bytes(std::string_view name, const std::uint8_t* data, std::size_t size);
Field list(std::string_view name, std::vector<Field> elements);
Field object(std::string_view name, std::vector<Field> fields);

/// An identifier: a number that people know in hexadecimal.
Field identifier(std::string_view name, std::uint32_t value, int hexDigits);

/// The name of one value of a code.
struct CodeName {
    std::int64_t value;
    std::string_view name;
};

/// A number that stands for something.
/// @param names an array of CodeName. A value without a name is shown as a number.
template <std::size_t N> Field code(std::string_view name, std::int64_t value, const CodeName (&names)[N]) {
    Field field = number(name, value);
    for (const CodeName& each : names) {
        if (each.value == value) {
            field.codeName = each.name;
        }
    }
    return field;
}

} // namespace inspect
