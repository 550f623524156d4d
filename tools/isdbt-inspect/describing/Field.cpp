#include "describing/Field.h"

#include "describing/Conversion.h"
#include "describing/Readings.h"

#include <fmt/format.h>

namespace inspect {

namespace {

template <class Value> Field field(std::string_view name, Value value) {
    Field made{};
    made.name = name;
    made.value = std::move(value);
    return made;
}

} // namespace

std::string Number::digits() const {
    return hexDigits == 0 ? std::to_string(value)
                          : fmt::format("0x{:0{}X}", static_cast<std::uint64_t>(value), hexDigits);
}

Field Field::in(std::string_view unitName) && {
    unit = unitName;
    return std::move(*this);
}

Field Field::reads(std::string_view text) && {
    reading = text;
    return std::move(*this);
}

Field Field::standsFor(std::string_view meaning) && {
    isCode = true;
    codeName = meaning;
    return std::move(*this);
}

Field Field::named(const NameList& names) && {
    return std::move(*this).standsFor(names.of(std::get<Number>(value).value));
}

bool isNested(const Field& field) {
    return std::holds_alternative<List>(field.value) || std::holds_alternative<Object>(field.value);
}

Field absent(std::string_view name) {
    return field(name, Absent{});
}

Field flag(std::string_view name, bool value) {
    return field(name, value);
}

Field number(std::string_view name, std::int64_t value) {
    return field(name, Number{value, 0});
}

Field identifier(std::string_view name, std::uint32_t value, int hexDigits) {
    return field(name, Number{value, hexDigits});
}

Field code(std::string_view name, std::int64_t value, const NameList& names) {
    return number(name, value).named(names);
}

Field text(std::string_view name, std::string_view raw) {
    return field(name, Text{std::string(raw), {}, Text::Name});
}

Field address(std::string_view name, std::string_view raw) {
    return field(name, Text{std::string(raw), {}, Text::Address});
}

Field isoCode(std::string_view name, std::string_view raw) {
    return field(name, Text{std::string(raw), Conversion("ASCII").shown(raw), Text::IsoCode});
}

Field bytes(std::string_view name, const std::uint8_t* data, std::size_t size) {
    return field(name, Bytes{data == nullptr ? std::vector<std::uint8_t>{} : std::vector(data, data + size)});
}

Field clockTime(std::string_view name, std::int32_t unixTime) {
    Field counted = number(name, unixTime);
    counted.isTime = true;
    return counted;
}

Field digitDuration(std::string_view name, std::uint32_t digits) {
    Field duration = number(name, digits).reads(bcdDuration(digits));
    duration.isDuration = true;
    duration.seconds = bcdSeconds(digits);
    return duration;
}

Field list(std::string_view name, Fields elements) {
    return field(name, List{std::move(elements)});
}

Field object(std::string_view name, Fields fields) {
    return field(name, Object{std::move(fields)});
}

} // namespace inspect
