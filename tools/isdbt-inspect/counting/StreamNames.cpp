#include "counting/StreamNames.h"

#include <algorithm>
#include <fmt/format.h>
#include <string_view>

namespace inspect {

namespace {

template <class Value> const Field* find(const Fields& fields, std::string_view name) {
    const auto found = std::find_if(fields.begin(), fields.end(), [name](const Field& field) {
        return field.name == name && std::holds_alternative<Value>(field.value);
    });
    return found == fields.end() ? nullptr : &*found;
}

std::int64_t numberIn(const Field& field) {
    return std::get<Number>(field.value).value;
}

Pid pidIn(const Field& field) {
    return static_cast<Pid>(numberIn(field));
}

} // namespace

void StreamNames::learn(const Fields& programMap) {
    if (const Field* const clock = find<Number>(programMap, "pcr_pid")) {
        m_names.emplace(pidIn(*clock), "PCR");
    }
    const Field* const streams = find<List>(programMap, "elementary_streams");
    if (streams == nullptr) {
        return;
    }
    for (const Field& stream : std::get<List>(streams->value).elements) {
        const Fields& fields = std::get<Object>(stream.value).fields;
        const Field* const pid = find<Number>(fields, "elementary_pid");
        const Field* const type = find<Number>(fields, "stream_type");
        if (pid != nullptr && type != nullptr) {
            m_names[pidIn(*pid)] =
                type->codeName.empty() ? fmt::format("stream_type 0x{:02X}", numberIn(*type)) : type->codeName;
        }
    }
}

std::string StreamNames::of(Pid pid) const {
    const auto found = m_names.find(pid);
    if (found != m_names.end()) {
        return found->second;
    }
    return pid == NULL_PID ? "null packets" : "";
}

} // namespace inspect
