#include "sections/SectionGatherer.h"

#include <algorithm>
#include <bitstream/mpeg/psi.h>
#include <new>
#include <utility>

namespace inspect {

namespace {

constexpr std::uint8_t STUFFING = 0xFF;

/// Whether adaptation_field_length and pointer_field of a packet with payload stay inside it. biTStream trusts them.
bool wellFormed(const std::uint8_t* packet) {
    std::size_t used = TS_HEADER_SIZE;
    if (ts_has_adaptation(packet)) {
        used += std::size_t{1} + ts_get_adaptation(packet);
    }
    return used < TS_SIZE && (!ts_get_unitstart(packet) || used + 1 + packet[used] <= TS_SIZE);
}

std::uint8_t payloadOffset(const std::uint8_t* packet) {
    const int adaptation = ts_has_adaptation(packet) ? 1 + ts_get_adaptation(packet) : 0;
    return static_cast<std::uint8_t>(TS_HEADER_SIZE + adaptation);
}

} // namespace

void SectionGatherer::Assembly::reset() {
    m_bytes.reset();
    m_used = 0;
    m_room = 0;
}

/// Room grows with what comes: a section may say that it is long, and never end.
void SectionGatherer::Assembly::append(const std::uint8_t* bytes, std::size_t count) {
    if (m_used + count > m_room) {
        m_room = std::max(2 * m_room, m_used + count);
        auto* const larger = static_cast<std::uint8_t*>(std::realloc(m_bytes.get(), m_room));
        if (larger == nullptr) {
            throw std::bad_alloc();
        }
        static_cast<void>(m_bytes.release());
        m_bytes.reset(larger);
    }
    std::copy_n(bytes, count, m_bytes.get() + m_used);
    m_used += count;
}

Section::Memory SectionGatherer::Assembly::feed(const std::uint8_t*& payload, std::uint8_t& length) {
    constexpr std::size_t LONGEST = PSI_PRIVATE_MAX_SIZE + PSI_HEADER_SIZE;
    const auto take = [&](std::size_t upTo) {
        const auto count = static_cast<std::uint8_t>(std::min<std::size_t>(length, upTo - m_used));
        append(payload, count);
        payload += count;
        length = static_cast<std::uint8_t>(length - count);
    };
    if (m_used < PSI_HEADER_SIZE) {
        take(PSI_HEADER_SIZE);
    }
    if (m_used < PSI_HEADER_SIZE) {
        return nullptr;
    }
    const std::size_t size = std::size_t{psi_get_length(m_bytes.get())} + PSI_HEADER_SIZE;
    if (size > LONGEST) {
        reset();
        length = 0;
        return nullptr;
    }
    take(size);
    if (m_used < size) {
        return nullptr;
    }
    Section::Memory section = std::move(m_bytes);
    reset();
    return section;
}

void SectionGatherer::setPids(const PidSet& pids) {
    const PidSet dropped = m_pids & ~pids;
    m_pids = pids;
    for (std::size_t pid = 0; pid < dropped.size(); ++pid) {
        if (dropped[pid]) {
            m_streams.erase(static_cast<Pid>(pid));
        }
    }
}

std::vector<Section>& SectionGatherer::push(const std::uint8_t* packet, const Position& position) {
    m_found.clear();
    const Pid pid = ts_get_pid(packet);
    Stream& stream = m_streams[pid];
    stream.pid = pid;
    PidCounts& counts = m_counts[pid];
    if (ts_get_transporterror(packet)) {
        stream.continuity.forget();
        stream.assembly.reset();
        return m_found;
    }
    const Continuity::Step step = stream.continuity.take(packet);
    if (step == Continuity::Step::Broken || step == Continuity::Step::Announced) {
        stream.assembly.reset(); // a packet of the section is missing
    }
    if (!ts_has_payload(packet) || ts_get_scrambling(packet) != 0 || step == Continuity::Step::Duplicate) {
        return m_found;
    }
    if (!wellFormed(packet)) {
        counts.addMalformedPacket(position);
        stream.assembly.reset();
        return m_found;
    }

    const std::uint8_t offset = payloadOffset(packet);
    const Payload payload{packet + offset, static_cast<std::uint8_t>(TS_SIZE - offset)};
    if (!ts_get_unitstart(packet)) {
        finishSection(stream, counts, payload, position);
        return m_found;
    }
    const std::uint8_t pointer = payload.data[0];
    finishSection(stream, counts, {payload.data + 1, pointer}, position);
    if (stream.assembly.begun()) {
        counts.addCutShort(position);
        stream.assembly.reset();
    }
    beginSections(stream, counts, {payload.data + 1 + pointer, static_cast<std::uint8_t>(payload.length - 1 - pointer)},
                  position);
    return m_found;
}

/// Takes the bytes of the section that an earlier packet began. No other section may begin among them.
void SectionGatherer::finishSection(Stream& stream, PidCounts& counts, Payload payload, const Position& position) {
    if (!stream.assembly.begun() || payload.length == 0) {
        return;
    }
    if (auto bytes = stream.assembly.feed(payload.data, payload.length)) {
        found(stream, counts, std::move(bytes), position);
    } else if (!stream.assembly.begun()) {
        counts.addCutShort(position);
    }
}

void SectionGatherer::beginSections(Stream& stream, PidCounts& counts, Payload payload, const Position& position) {
    while (payload.length != 0 && *payload.data != STUFFING) {
        if (auto bytes = stream.assembly.feed(payload.data, payload.length)) {
            found(stream, counts, std::move(bytes), position);
        } else if (!stream.assembly.begun()) {
            counts.addCutShort(position);
        }
    }
}

void SectionGatherer::found(const Stream& stream, PidCounts& counts, Section::Memory bytes, const Position& position) {
    if (m_only && bytes[0] != *m_only) {
        return;
    }
    const Section& section = m_found.emplace_back(stream.pid, std::move(bytes), position);
    ++counts.sections;
    if (!section.sound()) {
        counts.addCrcError(position);
    }
}

} // namespace inspect
