#include "comparing/Keys.h"

#include "describing/FieldLookup.h"

#include <algorithm>
#include <fmt/format.h>
#include <fmt/ranges.h>
#include <set>

namespace inspect {

namespace {

/// Fields that identify what they stand in, those of the smallest things first: an entry that names a service and its
/// transport stream stands for the service.
constexpr std::string_view IDENTIFYING[] = {
    "elementary_pid", "program_number",  "application_identifier", "service_id",     "transport_stream_id",
    "hash_id",        "country_code",    "language_code",          "label",          "dii_identification",
    "module_id",      "logical_cell_id", "application_profile",    "descriptor_tag", "transmission_type_info",
    "start_time",
};

std::string textOf(const Field& field);

struct KeyText {
    std::string operator()(Absent /*value*/) const { return "none"; }
    std::string operator()(bool value) const { return value ? "yes" : "no"; }
    std::string operator()(const Text& text) const { return text.decoded; }
    std::string operator()(const Bytes& value) const { return fmt::format("{:02X}", fmt::join(value.bytes, " ")); }
    std::string operator()(const List& list) const { return joined(list.elements); }
    std::string operator()(const Object& object) const { return joined(object.fields); }

    std::string operator()(const Number& number) const {
        return number.hexDigits == 0
                   ? std::to_string(number.value)
                   : fmt::format("0x{:0{}X}", static_cast<std::uint64_t>(number.value), number.hexDigits);
    }

    /// "0x0000000A/0x0001"
    static std::string joined(const Fields& fields) {
        std::vector<std::string> texts;
        std::transform(fields.begin(), fields.end(), std::back_inserter(texts), textOf);
        return fmt::format("{}", fmt::join(texts, "/"));
    }
};

std::string textOf(const Field& field) {
    return std::visit(KeyText{}, field.value);
}

/// Whether each element has a value of its own in a field.
bool identifies(std::string_view name, const Fields& elements) {
    std::set<std::string> values;
    return std::all_of(elements.begin(), elements.end(), [name, &values](const Field& element) {
        const Field* const field = find(inner(element), name);
        return field != nullptr && values.insert(textOf(*field)).second;
    });
}

} // namespace

Keys::Keys(const Fields& before, const Fields& after) {
    const auto* const found =
        std::find_if(std::begin(IDENTIFYING), std::end(IDENTIFYING), [&before, &after](std::string_view name) {
            return identifies(name, before) && identifies(name, after);
        });
    if (found != std::end(IDENTIFYING)) {
        m_name = *found;
    }
}

std::string Keys::of(const Field& element, std::size_t position) const {
    if (!std::holds_alternative<Object>(element.value)) {
        return textOf(element);
    }
    const Field* const field = m_name.empty() ? nullptr : find(inner(element), m_name);
    return field == nullptr ? std::to_string(position) : textOf(*field);
}

} // namespace inspect
