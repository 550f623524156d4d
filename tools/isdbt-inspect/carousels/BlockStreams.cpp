#include "carousels/BlockStreams.h"

#include "describing/FieldLookup.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr std::size_t MOST_PROGRAMS = 64; // no stream has as many

} // namespace

void BlockStreams::learn(std::uint16_t program, const Fields& programMap) {
    Program learnt;
    for (const Field& element : elements(programMap, "elementary_streams")) {
        const Fields& fields = inner(element);
        const Component component{&fields, static_cast<Pid>(numberIn(fields, "elementary_pid").value_or(0)), 0,
                                  numberIn(inner(fields, "stream_identifier_descriptor"), "component_tag")};
        learnt.streams.push_back({component.pid, component.tag, associationTagsOf(component)});
    }
    learnt.deferred = deferredTagsOf(programMap);
    if (m_programs.size() < MOST_PROGRAMS || m_programs.count(program) != 0) {
        m_programs[program] = std::move(learnt);
    }
}

std::optional<Pid> BlockStreams::find(Pid carousel, std::uint16_t associationTag) const {
    for (const auto& [number, program] : m_programs) {
        const bool isIts = std::any_of(program.streams.begin(), program.streams.end(),
                                       [carousel](const Stream& each) { return each.pid == carousel; });
        const std::optional<Pid> found = isIts ? find(program, associationTag) : std::nullopt;
        if (found) {
            return found;
        }
    }
    return std::nullopt;
}

/// A program may leave a tag to another one.
std::optional<Pid> BlockStreams::find(const Program& program, std::uint16_t associationTag) const {
    if (const std::optional<Pid> found = own(program, associationTag)) {
        return found;
    }
    for (const DeferredTags& deferred : program.deferred) {
        const auto other = m_programs.find(deferred.service);
        const bool isMeant =
            std::find(deferred.tags.begin(), deferred.tags.end(), associationTag) != deferred.tags.end();
        if (isMeant && deferred.transportStream == m_transportStream && other != m_programs.end()) {
            return own(other->second, associationTag);
        }
    }
    return std::nullopt;
}

/// The stream that has the tag, else the one whose component_tag is its low byte.
std::optional<Pid> BlockStreams::own(const Program& program, std::uint16_t associationTag) {
    std::optional<Pid> byComponentTag;
    for (const Stream& each : program.streams) {
        if (std::find(each.associationTags.begin(), each.associationTags.end(), associationTag) !=
            each.associationTags.end()) {
            return each.pid;
        }
        if (!byComponentTag && each.componentTag == (associationTag & 0xFFU)) {
            byComponentTag = each.pid;
        }
    }
    return byComponentTag;
}

} // namespace inspect
