#include "counting/StreamNames.h"

#include "describing/FieldLookup.h"

#include <fmt/format.h>

namespace inspect {

namespace {

/// With its number, if users agree on what that means.
std::string nameOf(const Field& streamType) {
    constexpr std::int64_t USER_PRIVATE = 0x80;
    const std::int64_t number = std::get<Number>(streamType.value).value;
    if (streamType.codeName.empty()) {
        return fmt::format("stream_type 0x{:02X}", number);
    }
    return number < USER_PRIVATE ? streamType.codeName : fmt::format("{} (0x{:02X})", streamType.codeName, number);
}

} // namespace

void StreamNames::learn(const Fields& programMap) {
    if (const std::optional<std::int64_t> clock = numberIn(programMap, "pcr_pid"); clock && clock != NULL_PID) {
        m_names.emplace(static_cast<Pid>(*clock), "PCR");
    }
    for (const Field& stream : elements(programMap, "elementary_streams")) {
        const std::optional<std::int64_t> pid = numberIn(inner(stream), "elementary_pid");
        const Field* const type = find(inner(stream), "stream_type");
        if (pid && type != nullptr) {
            m_names[static_cast<Pid>(*pid)] = nameOf(*type);
        }
    }
}

std::string StreamNames::of(Pid pid) const {
    const auto found = m_names.find(pid);
    return found == m_names.end() ? "" : found->second;
}

} // namespace inspect
