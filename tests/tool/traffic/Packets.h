#pragma once

#include <array>
#include <cstdint>

using Packet = std::array<std::uint8_t, 188>;

constexpr std::uint16_t VIDEO_PID = 0x0111;

/// A packet with payload alone.
inline Packet packetOf(unsigned counter, std::uint8_t content = 0, std::uint16_t pid = VIDEO_PID) {
    Packet packet{};
    packet.fill(content);
    packet[0] = 0x47;
    packet[1] = static_cast<std::uint8_t>(pid >> 8U);
    packet[2] = static_cast<std::uint8_t>(pid);
    packet[3] = static_cast<std::uint8_t>(0x10U | (counter & 0x0FU));
    return packet;
}

/// The same with an adaptation field of so many bytes, whose first one has flags.
inline Packet adapted(unsigned counter, std::uint8_t flags, std::uint8_t content = 0, std::uint16_t pid = VIDEO_PID) {
    Packet packet = packetOf(counter, content, pid);
    packet[3] |= 0x20U;
    packet[4] = 7;
    packet[5] = flags;
    return packet;
}

/// One without payload.
inline Packet withoutPayload(unsigned counter, std::uint8_t flags = 0) {
    Packet packet = adapted(counter, flags);
    packet[3] &= 0xEFU;
    packet[4] = 183;
    return packet;
}

constexpr std::uint8_t DISCONTINUITY = 0x80;
constexpr std::uint8_t WITH_PCR = 0x10;
