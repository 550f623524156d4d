#pragma once

#include <cstdint>

/// A station that does not exist: one service for the living room, one for the phone.
namespace sample {

constexpr std::uint16_t NETWORK_ID = 0x0735;
constexpr std::uint16_t TRANSPORT_STREAM_ID = NETWORK_ID;

/// service_id: the low 11 bits of the network_id, 2 bits for the type of service, 3 bits for its number.
constexpr std::uint16_t serviceId(unsigned type, unsigned number) {
    return static_cast<std::uint16_t>((NETWORK_ID & 0x7FFU) << 5U | type << 3U | number);
}

constexpr std::uint16_t HD_SERVICE_ID = serviceId(0, 0);
constexpr std::uint16_t ONE_SEG_SERVICE_ID = serviceId(3, 0);

// PIDs with a fixed meaning
constexpr std::uint16_t PAT_PID = 0x0000;
constexpr std::uint16_t NIT_PID = 0x0010;
constexpr std::uint16_t TOT_PID = 0x0014;
constexpr std::uint16_t ONE_SEG_PMT_PID = 0x1FC8;

// PIDs of the station's own choice
constexpr std::uint16_t HD_PCR_PID = 0x0100;
constexpr std::uint16_t HD_PMT_PID = 0x0101;
constexpr std::uint16_t HD_VIDEO_PID = 0x0111;
constexpr std::uint16_t HD_AUDIO_PID = 0x0112;
constexpr std::uint16_t ONE_SEG_PCR_PID = 0x0200;
constexpr std::uint16_t ONE_SEG_VIDEO_PID = 0x0211;
constexpr std::uint16_t ONE_SEG_AUDIO_PID = 0x0212;

} // namespace sample
