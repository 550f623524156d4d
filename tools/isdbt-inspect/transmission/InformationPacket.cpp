#include "transmission/InformationPacket.h"

#include "sections/Bits.h"

#include <algorithm>
#include <bitstream/mpeg/psi.h>
#include <bitstream/mpeg/ts.h>

namespace inspect {

namespace {

constexpr std::size_t POINTER_SIZE = 2;
constexpr std::size_t CONFIGURATION_SIZE = 20; ///< with its CRC_32

/// Over bytes with their CRC_32 at the end, it comes to 0.
std::uint32_t crcOver(const std::uint8_t* bytes, std::size_t size) {
    std::uint32_t crc = 0xFFFFFFFF;
    std::for_each(bytes, bytes + size,
                  [&crc](std::uint8_t byte) { crc = (crc << 8U) ^ p_psi_crc_table[(crc >> 24U) ^ byte]; });
    return crc;
}

std::uint8_t next(Bits& bits, unsigned width) {
    return static_cast<std::uint8_t>(bits.take(width));
}

LayerParameters layer(Bits& bits) {
    LayerParameters parameters{};
    parameters.modulation = next(bits, 3);
    parameters.codeRate = next(bits, 3);
    parameters.interleaving = next(bits, 3);
    parameters.segments = next(bits, 4);
    return parameters;
}

/// modulation_control_configuration_information, as far as it is about the present:
///
///     TMCC_synchronization_word 1 | AC_data_effective_position 1 | reserved 2 | initialization_timing_indicator 4
///     current_mode 2 | current_guard_interval 2 | next_mode 2 | next_guard_interval 2
///     system_identifier 2 | count_down_index 4 | switch-on_control_flag_used_for_alert_broadcasting 1
///     current_configuration_information: partial_reception_flag 1 | layers A, B, C 13 each
InformationPacket configuration(Bits bits) {
    InformationPacket information{};
    bits.take(8);
    information.current.mode = next(bits, 2);
    information.current.guardInterval = next(bits, 2);
    bits.take(4);
    information.current.isTelevision = next(bits, 2) == 0;
    bits.take(4);
    information.emergency = next(bits, 1) != 0;
    information.current.partialReception = next(bits, 1) != 0;
    for (LayerParameters& each : information.current.layers) {
        each = layer(bits);
    }
    return information;
}

} // namespace

std::optional<InformationPacket> InformationPacket::of(const std::uint8_t* packet) {
    const std::uint8_t* const payload = packet + TS_HEADER_SIZE;
    if (ts_get_transporterror(packet) || ts_get_scrambling(packet) != 0 || !ts_has_payload(packet) ||
        ts_has_adaptation(packet) || crcOver(payload + POINTER_SIZE, CONFIGURATION_SIZE) != 0) {
        return std::nullopt;
    }
    return configuration(Bits(payload + POINTER_SIZE, CONFIGURATION_SIZE));
}

} // namespace inspect
