#include "counting/StreamNames.h"

#include "describing/FieldLookup.h"

#include <fmt/format.h>

namespace inspect {

void StreamNames::learn(const Fields& programMap) {
    if (const std::optional<std::int64_t> clock = numberIn(programMap, "pcr_pid"); clock && clock != NULL_PID) {
        m_names.emplace(static_cast<Pid>(*clock), "PCR");
    }
    for (const Field& stream : elements(programMap, "elementary_streams")) {
        const std::optional<std::int64_t> pid = numberIn(inner(stream), "elementary_pid");
        const Field* const type = find(inner(stream), "stream_type");
        if (pid && type != nullptr) {
            m_names[static_cast<Pid>(*pid)] =
                type->codeName.empty()
                    ? fmt::format("stream_type 0x{:02X}", numberIn(inner(stream), "stream_type").value_or(0))
                    : type->codeName;
        }
    }
}

std::string StreamNames::of(Pid pid) const {
    const auto found = m_names.find(pid);
    return found == m_names.end() ? "" : found->second;
}

} // namespace inspect
