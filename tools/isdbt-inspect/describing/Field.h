#pragma once

#include "naming/NameList.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace inspect {

struct Field;
using Fields = std::vector<Field>;

/// Nothing where something could be, such as a pointer that is null.
struct Absent {};

struct Number {
    std::int64_t value;
    int hexDigits; ///< 0 for quantities; for identifiers the digits to show

    std::string digits() const; ///< "0x0131", "12"
};

struct Text {
    enum Kind {
        Name,    ///< what viewers read
        Address, ///< what programs read: of a file, of a class
        IsoCode  ///< of a language or a country: of ASCII, whatever the character set of the broadcast
    };

    std::string raw;     ///< as it is broadcast
    std::string decoded; ///< as Charset::decode() gives it
    Kind kind;
};

struct Bytes {
    std::vector<std::uint8_t> bytes;
};

/// Elements without a name of their own.
struct List {
    Fields elements;
};

struct Object {
    Fields fields;
};

/// How a value stands to what the standard reads from the same bits.
enum class Agreement {
    Usual,     ///< it is the same
    Otherwise, ///< it differs: the standard's reading stands beside it
    InPieces,  ///< it is a piece of a value that stands whole beside it
    Unread,    ///< it is not what was sent, but what stands there before anything is read
};

/// A named value, as every view and every output shows it. The name is the one of the library's getter, without its
/// prefix, in snake_case.
struct Field {
    std::string name;
    std::variant<Absent, bool, Number, Text, Bytes, List, Object> value;
    bool isCode = false;  ///< whether the value stands for something
    std::string codeName; ///< what it stands for; empty when that has no name
    std::string unit;
    std::string reading;                      ///< the value, or a remark on it, in a form that suits a person
    bool isTime = false;                      ///< whether the number is a time as the library counts it
    std::string instant;                      ///< of a time, in ISO 8601
    bool isDuration = false;                  ///< whether the number is one in decimal digits
    std::optional<std::int32_t> seconds = {}; ///< of a duration; nothing when its digits are none
    Agreement agreement = Agreement::Usual;

    Field in(std::string_view unitName) &&;
    Field reads(std::string_view text) &&;
    Field standsFor(std::string_view meaning) &&;

    /// Says what the number stands for. A value that is not among the names stands for something without a name.
    Field named(const NameList& names) &&;
};

/// Whether a field holds others: a list or an object.
bool isNested(const Field& field);

Field absent(std::string_view name);
Field flag(std::string_view name, bool value);
Field number(std::string_view name, std::int64_t value);
Field text(std::string_view name, std::string_view raw);

/// The address of a file or of a class.
Field address(std::string_view name, std::string_view raw);

/// The code of a language or a country: "por", "BRA".
Field isoCode(std::string_view name, std::string_view raw);

Field bytes(std::string_view name, const std::uint8_t* data, std::size_t size);

/// A time as the library counts it, in seconds.
Field clockTime(std::string_view name, std::int32_t unixTime);

/// A duration of six BCD digits.
Field digitDuration(std::string_view name, std::uint32_t digits);
Field list(std::string_view name, Fields elements);
Field object(std::string_view name, Fields fields);

/// An identifier: a number that people know in hexadecimal.
Field identifier(std::string_view name, std::uint32_t value, int hexDigits);

/// The same with all the digits of its type.
template <class Value> Field identifier(std::string_view name, Value value) {
    return identifier(name, value, 2 * int{sizeof(Value)});
}

/// A number that stands for something.
/// A value without a name is shown as a number.
Field code(std::string_view name, std::int64_t value, const NameList& names);

} // namespace inspect
