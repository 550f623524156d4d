#include "counting/StreamNames.h"

#include "describing/FieldLookup.h"
#include "tables/TableKinds.h"

#include <algorithm>
#include <fmt/format.h>

namespace inspect {

namespace {

constexpr std::uint8_t CAT = 0x01;
constexpr std::size_t HEADER_SIZE = 8;
constexpr std::size_t CRC_SIZE = 4;

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

void StreamNames::learn(std::uint8_t tableId, const Fields& fields) {
    if (tableId == PAT) {
        learnPrograms(fields);
    } else if (tableId == PMT) {
        learnStreams(fields);
    }
}

void StreamNames::learnPrograms(const Fields& pat) {
    announce(numberIn(pat, "network_pid").value_or(0));
    for (const Field& program : elements(pat, "programs")) {
        const std::int64_t pid = numberIn(inner(program), "program_map_pid").value_or(NULL_PID);
        announce(pid);
        m_programMaps.set(static_cast<Pid>(pid));
        m_programs.insert(numberIn(inner(program), "program_number").value_or(0));
    }
}

void StreamNames::learnStreams(const Fields& programMap) {
    m_described.insert(numberIn(programMap, "program_number").value_or(0));
    if (const std::optional<std::int64_t> clock = numberIn(programMap, "pcr_pid"); clock && *clock != NULL_PID) {
        m_names.emplace(static_cast<Pid>(*clock), "PCR");
        announce(*clock);
    }
    for (const Field& stream : elements(programMap, "elementary_streams")) {
        const std::optional<std::int64_t> pid = numberIn(inner(stream), "elementary_pid");
        const Field* const type = find(inner(stream), "stream_type");
        if (pid && type != nullptr) {
            m_names[static_cast<Pid>(*pid)] = nameOf(*type);
            announce(*pid);
        }
    }
}

void StreamNames::learnKeys(const Section& section) {
    if (section.tableId() == CAT) {
        const std::size_t end = section.size() - std::min(section.size(), CRC_SIZE);
        for (const RawDescriptor& each : descriptorsIn({PMT, {}}, section.data(), HEADER_SIZE, end)) {
            learnKeys(each, "EMM");
        }
    } else if (section.tableId() == PMT) {
        for (const DescriptorLoop& loop : descriptorLoops(section.data(), section.size())) {
            for (const RawDescriptor& each : loop.descriptors) {
                learnKeys(each, "ECM");
            }
        }
    }
}

/// Both kinds have a system's identifier of two bytes, and then the PID.
void StreamNames::learnKeys(const RawDescriptor& descriptor, const char* name) {
    constexpr std::uint8_t CONDITIONAL_ACCESS = 0x09;
    constexpr std::uint8_t ACCESS_CONTROL = 0xF6;
    constexpr std::size_t PID_AT = 2;
    const std::vector<std::uint8_t>& body = descriptor.body;
    if ((descriptor.tag == CONDITIONAL_ACCESS || descriptor.tag == ACCESS_CONTROL) && body.size() >= PID_AT + 2) {
        const auto pid = static_cast<Pid>((unsigned{body[PID_AT]} << 8U | body[PID_AT + 1]) & 0x1FFFU);
        m_names.emplace(pid, name);
        announce(pid);
    }
}

void StreamNames::announce(std::int64_t pid) {
    if (pid > 0 && pid < NULL_PID) {
        m_announced.set(static_cast<Pid>(pid));
    }
}

std::optional<bool> StreamNames::announces(Pid pid) const {
    if (m_announced[pid]) {
        return true;
    }
    const bool allCame = !m_programs.empty() &&
                         std::includes(m_described.begin(), m_described.end(), m_programs.begin(), m_programs.end());
    return allCame ? std::optional(false) : std::nullopt;
}

std::string StreamNames::of(Pid pid) const {
    const auto found = m_names.find(pid);
    return found == m_names.end() ? "" : found->second;
}

} // namespace inspect
