#pragma once

#include <array>
#include <bitstream/mpeg/ts.h>
#include <cstdint>

namespace inspect {

/// Whether the packets of one PID follow each other, as their continuity_counters tell.
class Continuity {
public:
    enum class Step {
        First,     ///< nothing is known of what came before
        Next,      ///< it follows the packet before
        Duplicate, ///< the packet before once more, as it may come
        Broken,    ///< it does not follow
        Announced  ///< the same, but discontinuity_indicator says so
    };

    /// @param packet 188 bytes that are not marked as damaged
    Step take(const std::uint8_t* packet);

    /// The same for a packet that has payload and no adaptation field, if it is the next one.
    /// @return whether it was; else nothing is taken
    bool takeNext(const std::uint8_t* packet);

    /// How many packets are missing at least where the last one did not follow.
    unsigned lost() const { return m_lost; }

    /// Nobody knows what came before the next packet.
    void forget() { m_isKnown = false; }

private:
    Step judge(const std::uint8_t* packet, bool hasPayload);
    bool repeats(const std::uint8_t* packet) const;
    bool mayJump(const std::uint8_t* packet);
    void remember(const std::uint8_t* packet);

    std::array<std::uint8_t, TS_SIZE> m_last{}; ///< with payload
    std::uint8_t m_counter = 0;
    std::uint8_t m_lost = 0;
    bool m_isKnown = false;
    bool m_hasLast = false;
    bool m_wasRepeated = false;
    bool m_hasPcr = false;
    std::uint8_t m_announcements = 0; ///< discontinuity_indicators in a row
};

} // namespace inspect
