#pragma once

#include "CarouselWriter.h"
#include "Ticks.h"

#include <array>
#include <bitstream/mpeg/ts.h>
#include <deque>
#include <functional>

namespace sample {

using Packet = std::array<std::uint8_t, TS_SIZE>;

/// Puts packets one behind the other at a constant rate: null packets where nothing is to be sent.
class Multiplexer {
public:
    static constexpr Ticks CLOCK_AT_START = 10 * SECOND;

    explicit Multiplexer(unsigned bitRate);
    Multiplexer(const Multiplexer&) = delete; // what it repeats knows it
    Multiplexer& operator=(const Multiplexer&) = delete;

    /// Sends a section again and again.
    /// @param period  from one sending to the next.
    /// @param first   time of the first sending.
    /// @param section makes the section that is sent at a time.
    void repeatSection(std::uint16_t pid, Ticks period, Ticks first, std::function<Bytes(Ticks now)> section);

    /// Sends the announcements of a carousel again and again, and its blocks one after the other. They wait for all
    /// else.
    /// @param turn all its blocks take.
    void repeatCarousel(std::uint16_t pid, const CarouselWriter& carousel, Ticks announcements, Ticks turn,
                        Ticks first);

    /// Sends packets that carry nothing but the clock of a service.
    void repeatClock(std::uint16_t pid, Ticks period, Ticks first);

    /// Sends PES packets with nothing to see or hear in them.
    /// @param packets of each PES packet, spread evenly over the period.
    void repeatFiller(std::uint16_t pid, Ticks period, Ticks first, std::uint8_t streamId, unsigned packets = 1);

    /// Takes each section before it is sent, and may change it; an empty one is not sent.
    void changeSections(std::function<void(Ticks now, std::uint16_t pid, Bytes& section)> change);

    /// Takes each packet before it is counted, and may change it.
    void changePackets(std::function<void(Ticks now, Packet& packet)> change);

    /// When the next packet is sent, from the beginning.
    Ticks now() const;

    /// What is due at the same time is sent in the order of the calls above.
    Packet next();

private:
    struct Repeated {
        Ticks period;
        Ticks due;
        std::function<void(Ticks now)> send;
    };

    void repeatSection(std::deque<Packet>& waiting, std::uint16_t pid, Ticks period, Ticks first,
                       std::function<Bytes(Ticks now)> section);
    Packet take();
    void count(Packet& packet);

    unsigned m_bitRate;
    std::uint64_t m_sent = 0;
    std::vector<Repeated> m_repeated;
    std::deque<Packet> m_waiting;
    std::deque<Packet> m_yielding;          ///< sent where nothing else waits
    std::vector<std::uint8_t> m_continuity; ///< of the next packet of each PID
    std::function<void(Ticks now, std::uint16_t pid, Bytes& section)> m_changeSection;
    std::function<void(Ticks now, Packet& packet)> m_changePacket;
};

Packet nullPacket();

/// Whether a packet carries a program clock reference.
bool isClock(const Packet& packet);
Ticks clockOf(const Packet& packet);
void setClock(Packet& packet, Ticks clock);

/// The PES packet with a presentation time stamp that begins in a packet; nullptr when none does.
std::uint8_t* timedPes(Packet& packet);

} // namespace sample
