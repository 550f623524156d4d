#pragma once

#include "Ticks.h"

#include <string_view>

/// A station that does not exist: one service for the living room, one for the phone.
namespace sample {

/// In ISO 8859-15, as all text of the multiplex.
constexpr std::string_view STATION_NAME = "TV Mar\xE9-A\xE7u";

constexpr unsigned REMOTE_CONTROL_KEY = 33;

/// 2025-06-15 as a Modified Julian Date.
constexpr unsigned BROADCAST_DAY = 60841;

/// The multiplex begins at half past six in the evening.
/// @param onAir since then
constexpr unsigned secondOfDay(Ticks onAir) {
    return (18 * 60 + 30) * 60 + static_cast<unsigned>(onAir / SECOND);
}

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
constexpr std::uint16_t SDT_PID = 0x0011;
constexpr std::uint16_t EIT_PID = 0x0012;
constexpr std::uint16_t TOT_PID = 0x0014;
constexpr std::uint16_t SDTT_PID = 0x0023;
constexpr std::uint16_t BIT_PID = 0x0024;
constexpr std::uint16_t ONE_SEG_EIT_PID = 0x0027;
constexpr std::uint16_t ONE_SEG_PMT_PID = 0x1FC8;

// PIDs of the station's own choice
constexpr std::uint16_t HD_PCR_PID = 0x0100;
constexpr std::uint16_t HD_PMT_PID = 0x0101;
constexpr std::uint16_t HD_VIDEO_PID = 0x0111;
constexpr std::uint16_t HD_AUDIO_PID = 0x0112;
constexpr std::uint16_t HD_CAPTIONS_PID = 0x0116;
constexpr std::uint16_t AIT_PID = 0x0130;
constexpr std::uint16_t CAROUSEL_PID = 0x0140;
constexpr std::uint16_t EVENTS_PID = 0x0150;
constexpr std::uint16_t ONE_SEG_PCR_PID = 0x0200;
constexpr std::uint16_t ONE_SEG_VIDEO_PID = 0x0211;
constexpr std::uint16_t ONE_SEG_AUDIO_PID = 0x0212;
constexpr std::uint16_t ONE_SEG_CAPTIONS_PID = 0x0216;

// stream_ids
constexpr std::uint8_t VIDEO_STREAM = 0xE0;
constexpr std::uint8_t AUDIO_STREAM = 0xC0;
constexpr std::uint8_t PRIVATE_STREAM = 0xBD;

// component_tags, by which other tables name a stream
constexpr std::uint8_t HD_VIDEO_TAG = 0x00;
constexpr std::uint8_t HD_AUDIO_TAG = 0x10;
constexpr std::uint8_t HD_CAPTIONS_TAG = 0x30;
constexpr std::uint8_t CAROUSEL_TAG = 0x40;
constexpr std::uint8_t EVENTS_TAG = 0x50;
constexpr std::uint8_t DOWNLOAD_TAG = 0x79;
constexpr std::uint8_t ONE_SEG_VIDEO_TAG = 0x81;
constexpr std::uint8_t ONE_SEG_AUDIO_TAG = 0x83;
constexpr std::uint8_t ONE_SEG_CAPTIONS_TAG = 0x87;

// the carousel of the applications
constexpr std::uint32_t CAROUSEL_ID = 1;
constexpr std::uint16_t CAROUSEL_DII = 2; ///< identification of its DII

/// The event of the stream event object.
constexpr std::uint16_t GOAL_EVENT = 7;

} // namespace sample
