#include "multiplex/PresentEvents.h"

#include "describing/Readings.h"
#include "sections/Bits.h"

#include <bitstream/mpeg/psi.h>
#include <bitstream/mpeg/ts.h>
#include <cmath>

namespace inspect {

namespace {

constexpr std::uint8_t PRESENT_AND_FOLLOWING = 0x4E; // of this transport stream

/// For fixed receivers, for mobile ones, and for those of one segment.
constexpr Pid PIDS[] = {0x0012, 0x0026, 0x0027};

/// Whether two things came at about the same time. Without a clock in the stream nothing tells that they did not.
bool areNear(const Position& one, const Position& other) {
    return !one.seconds || !other.seconds || std::abs(*one.seconds - *other.seconds) <= PresentEvents::TOLERANCE;
}

} // namespace

PresentEvents::PresentEvents() : m_gatherer(PRESENT_AND_FOLLOWING) {
    PidSet pids;
    for (const Pid pid : PIDS) {
        pids.set(pid);
    }
    m_gatherer.setPids(pids);
}

void PresentEvents::take(const std::uint8_t* packet, const Position& position) {
    if (!pids()[ts_get_pid(packet)]) {
        return;
    }
    for (const Section& section : m_gatherer.push(packet, position)) {
        take(section);
    }
}

/// The first section of a service has its present event, and none where there is a gap between two; others have what
/// follows.
void PresentEvents::take(const Section& section) {
    const std::optional<LongHeader> header = section.longHeader();
    if (!section.sound() || !header || !header->current || header->sectionNumber != 0) {
        return;
    }
    if (const std::optional<Event> event = firstIn(section)) {
        m_events.put(header->extension, *event);
    } else {
        m_events.erase(header->extension);
    }
}

/// Nothing when there is none, or when it has no time or no end: these then have all bits 1, which are no digits.
std::optional<PresentEvents::Event> PresentEvents::firstIn(const Section& section) {
    constexpr unsigned STREAM_AND_LAST_NUMBERS = 48;
    constexpr unsigned EVENT_ID = 16;
    Bits bits = section.body();
    bits.take(STREAM_AND_LAST_NUMBERS);
    bits.take(EVENT_ID);
    const std::optional<std::int32_t> start = wireTime(bits.take(40));
    const std::optional<std::int32_t> duration = bcdSeconds(bits.take32(24));
    if (bits.failed() || !start || !duration) {
        return std::nullopt;
    }
    const std::int64_t begin = static_cast<std::uint32_t>(*start);
    return Event{begin, begin + *duration, section.position()};
}

bool PresentEvents::have(std::int64_t unixTime, const Position& position) const {
    const auto& events = m_events.entries();
    return std::any_of(events.begin(), events.end(), [&](const auto& entry) {
        const Event& event = entry.second;
        return unixTime >= event.begin - TOLERANCE && unixTime < event.end + TOLERANCE && areNear(event.said, position);
    });
}

} // namespace inspect
