#pragma once

#include <bitset>
#include <cstdint>
#include <optional>
#include <string>

namespace inspect {

/// layer_indicator has four bits.
using LayerSet = std::bitset<16>;

constexpr unsigned LAYER_A = 1;
constexpr unsigned LAYER_OF_INFORMATION = 8;

/// "A"; "none" for packets that are not sent, "IIP", "AC"; a number for those that a provider may use as it likes.
std::string layerName(unsigned indicator);

/// What the first half of a trailer tells of its packet in a broadcast transport stream (BTS): ISDB-T information.
///
///     TMCC_identifier 2 | reserved 1 | buffer_reset_control_flag 1 | switch-on_control_flag_for_emergency_broadcasting
///     1 | initialization_timing_head_packet_flag 1 | frame_head_packet_flag 1 | frame_indicator 1 layer_indicator 4 |
///     count_down_index 4 AC_data_invalid_flag 1 | AC_data_effective_bytes 2 | TSP_counter 13 AC_data 32
struct Trailer {
    bool emergency;
    bool frameHead;
    bool frameIndicator; ///< other in the next frame
    unsigned layer;
    unsigned counter; ///< from 0 at the frame's head

    /// @param bytes behind a packet, at least 4
    /// @return nothing for those that are no information of terrestrial television
    static std::optional<Trailer> of(const std::uint8_t* bytes);
};

} // namespace inspect
