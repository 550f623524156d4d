#pragma once

#include "packets/Pid.h"

#include <cstdint>
#include <optional>

namespace inspect {

/// The time in a stream, which its program clock references (PCR) count. It begins with the first of them and goes on
/// evenly where they jump, begin anew or change to another PID.
class StreamClock {
public:
    /// Takes one packet that has an adaptation field.
    /// @param packet 188 bytes
    /// @param number of the packet in the stream, from 1
    void take(const std::uint8_t* packet, std::uint64_t number);

    /// When a packet was sent, in seconds; nothing before two references have told the packet rate.
    std::optional<double> seconds(std::uint64_t number) const;

    /// How long so many packets from the stream's first on take, in seconds; those before the first reference as the
    /// others do on average.
    std::optional<double> duration(std::uint64_t packets) const;

private:
    bool hasEnded(std::uint64_t number) const;
    void follow(Pid pid, std::uint64_t reference, std::uint64_t number);
    double estimate(std::uint64_t number) const;

    Pid m_pid = NULL_PID;
    std::uint64_t m_start = 0;     ///< number of the packet at which the time begins
    std::uint64_t m_reference = 0; ///< the last PCR, in units of 27 MHz
    std::uint64_t m_number = 0;    ///< of the packet that carried it
    double m_elapsed = 0;          ///< when it was sent
    double m_packetTime = 0;       ///< seconds from packet to packet
};

} // namespace inspect
