#include "traffic/Continuity.h"

#include "packets/AdaptationField.h"

#include <algorithm>

namespace inspect {

namespace {

constexpr unsigned ROUND = 16;

/// On a PID without PCR, the flag stands in two packets at most.
constexpr std::uint8_t MOST_ANNOUNCEMENTS = 2;

} // namespace

Continuity::Step Continuity::take(const std::uint8_t* packet) {
    const bool hasPayload = ts_has_payload(packet);
    if (!hasPayload && !ts_has_adaptation(packet)) {
        return Step::Next; // reserved: decoders discard it
    }
    const bool announced = mayJump(packet);
    Step step = judge(packet, hasPayload);
    if (step == Step::Broken && announced) {
        step = Step::Announced;
    }
    m_wasRepeated = hasPayload && repeats(packet);
    m_counter = ts_get_cc(packet);
    m_isKnown = true;
    if (hasPayload && !m_wasRepeated) {
        remember(packet);
    }
    return step;
}

bool Continuity::takeNext(const std::uint8_t* packet) {
    const unsigned counter = ts_get_cc(packet);
    if (!m_isKnown || counter != (m_counter + 1U) % ROUND) {
        return false;
    }
    m_announcements = 0;
    m_wasRepeated = false;
    m_counter = static_cast<std::uint8_t>(counter);
    remember(packet);
    return true;
}

void Continuity::remember(const std::uint8_t* packet) {
    std::copy_n(packet, TS_SIZE, m_last.begin());
    m_hasLast = true;
}

Continuity::Step Continuity::judge(const std::uint8_t* packet, bool hasPayload) {
    const unsigned counter = ts_get_cc(packet);
    const unsigned expected = (m_counter + (hasPayload ? 1U : 0U)) % ROUND;
    if (!m_isKnown) {
        return Step::First;
    }
    if (counter == expected) {
        return Step::Next;
    }
    if (hasPayload && repeats(packet)) {
        m_lost = 0;
        return m_wasRepeated ? Step::Broken : Step::Duplicate;
    }
    m_lost = static_cast<std::uint8_t>((counter + ROUND - expected) % ROUND);
    return Step::Broken;
}

/// Whether it is the last one with payload. Its PCR may differ.
bool Continuity::repeats(const std::uint8_t* packet) const {
    if (!m_hasLast || !m_isKnown || ts_get_cc(packet) != m_counter) {
        return false;
    }
    if (!hasPcr(packet)) {
        return std::equal(m_last.begin(), m_last.end(), packet);
    }
    return std::equal(packet, packet + PCR_BEGIN, m_last.begin()) &&
           std::equal(packet + PCR_END, packet + TS_SIZE, m_last.begin() + PCR_END);
}

/// Whether a discontinuity_indicator allows the counter to jump.
bool Continuity::mayJump(const std::uint8_t* packet) {
    if (!ts_has_adaptation(packet)) {
        m_announcements = 0;
        return false;
    }
    m_hasPcr = m_hasPcr || hasPcr(packet);
    const bool announced = announcesDiscontinuity(packet);
    m_announcements = static_cast<std::uint8_t>(announced ? std::min(m_announcements + 1, 0xFF) : 0);
    return announced && (m_hasPcr || m_announcements <= MOST_ANNOUNCEMENTS);
}

} // namespace inspect
