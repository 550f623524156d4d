#pragma once

#include "Wire.h"

#include <deque>
#include <functional>
#include <map>

namespace sample {

/// Puts packets one behind the other at a constant rate: one packet a slot, null packets where nothing is to be sent.
class Multiplexer {
public:
    static constexpr unsigned SLOTS_PER_SECOND = 240;

    /// Sends a section again and again.
    /// @param period  slots from one sending to the next.
    /// @param first   slot of the first sending.
    /// @param section makes the section that is sent in a slot.
    void repeatSection(std::uint16_t pid, unsigned period, unsigned first, std::function<Bytes(unsigned slot)> section);

    /// Sends packets that carry nothing but the clock of a service.
    void repeatClock(std::uint16_t pid, unsigned period, unsigned first);

    /// Sends PES packets of one transport packet each, with nothing to see or hear in them.
    void repeatFiller(std::uint16_t pid, unsigned period, unsigned first, std::uint8_t streamId);

    /// The packets of the first slots. What is due in the same slot is sent in the order of the calls above.
    Bytes run(unsigned slots);

private:
    struct Packet {
        std::uint16_t pid;
        Bytes bytes;
        bool isClock;
    };

    struct Repeated {
        unsigned period;
        unsigned first;
        std::function<std::vector<Packet>(unsigned slot)> packets;
    };

    void finish(Packet& packet, unsigned slot);

    std::vector<Repeated> m_repeated;
    std::deque<Packet> m_waiting;
    std::map<std::uint16_t, std::uint8_t> m_continuity;
};

} // namespace sample
