#include "transmission/InformationPacket.h"

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

/// Reads fields one behind the other.
class Bits {
public:
    explicit Bits(const std::uint8_t* bytes) : m_bytes(bytes) {}

    std::uint8_t next(unsigned count) {
        unsigned value = 0;
        for (; count > 0; --count, ++m_at) {
            value = value << 1U | (static_cast<unsigned>(m_bytes[m_at / 8]) >> (7U - m_at % 8) & 1U);
        }
        return static_cast<std::uint8_t>(value);
    }

    void skip(unsigned count) { m_at += count; }

private:
    const std::uint8_t* m_bytes;
    std::size_t m_at = 0;
};

LayerParameters layer(Bits& bits) {
    LayerParameters parameters{};
    parameters.modulation = bits.next(3);
    parameters.codeRate = bits.next(3);
    parameters.interleaving = bits.next(3);
    parameters.segments = bits.next(4);
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
    bits.skip(8);
    information.current.mode = bits.next(2);
    information.current.guardInterval = bits.next(2);
    bits.skip(4);
    information.current.isTelevision = bits.next(2) == 0;
    bits.skip(4);
    information.emergency = bits.next(1) != 0;
    information.current.partialReception = bits.next(1) != 0;
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
    return configuration(Bits(payload + POINTER_SIZE));
}

} // namespace inspect
