#pragma once

#include <bitstream/mpeg/ts.h>
#include <cstddef>
#include <cstdint>

namespace inspect {

/// Length of an adaptation field that has a PCR, behind adaptation_field_length.
constexpr std::size_t PCR_LENGTH = 7;

/// Where in a packet the PCR stands.
constexpr std::size_t PCR_BEGIN = 6;
constexpr std::size_t PCR_END = 12;

/// As the packet says, which may be more than it has room for.
inline std::size_t adaptationLength(const std::uint8_t* packet) {
    return ts_has_adaptation(packet) ? ts_get_adaptation(packet) : 0;
}

inline bool hasPcr(const std::uint8_t* packet) {
    return adaptationLength(packet) >= PCR_LENGTH && tsaf_has_pcr(packet);
}

/// Whether it has payload and nothing else, nothing begins in it, and nobody has marked it as damaged.
inline bool isPayloadAlone(const std::uint8_t* packet) {
    return !ts_get_unitstart(packet) && !ts_get_transporterror(packet) && ts_has_payload(packet) &&
           !ts_has_adaptation(packet);
}

/// The stream announces that its counters or its clock start anew.
inline bool announcesDiscontinuity(const std::uint8_t* packet) {
    return adaptationLength(packet) > 0 && tsaf_has_discontinuity(packet);
}

} // namespace inspect
