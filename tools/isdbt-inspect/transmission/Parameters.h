#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

namespace inspect {

/// How a layer of the signal is sent, as coded in the TMCC information.
struct LayerParameters {
    std::uint8_t modulation;   ///< modulation_scheme, 3 bits
    std::uint8_t codeRate;     ///< coding_rate_of_inner_code, 3 bits
    std::uint8_t interleaving; ///< length_of_time_interleaving, 3 bits
    std::uint8_t segments;     ///< number_of_segments, 4 bits

    bool isUsed() const;
};

/// Layers A, B and C.
constexpr std::size_t LAYER_COUNT = 3;

/// Those of a signal, which its layers share.
constexpr unsigned SEGMENTS_OF_TELEVISION = 13;

/// How the signal is sent.
struct TransmissionParameters {
    std::uint8_t mode;          ///< 1 to 3; 0 is reserved
    std::uint8_t guardInterval; ///< as coded, 2 bits
    bool isTelevision;          ///< by system_identifier; else sound, or reserved
    bool partialReception;      ///< layer A can be received by itself
    std::array<LayerParameters, LAYER_COUNT> layers;
};

bool operator==(const TransmissionParameters& one, const TransmissionParameters& other);

/// The packets from one frame's head to the next; nothing in a reserved mode.
std::optional<unsigned> packetsPerFrame(const TransmissionParameters& parameters);

/// Those of them that are a layer's; nothing for reserved values.
std::optional<unsigned> packetsPerFrame(const TransmissionParameters& parameters, const LayerParameters& layer);

/// What a layer carries in a channel of 6 MHz, in bit/s of packets of 188 bytes; nothing for reserved values.
std::optional<double> bitRate(const TransmissionParameters& parameters, const LayerParameters& layer);

/// "1/16"
std::string guardIntervalName(std::uint8_t code);

/// "64QAM"; empty for a reserved value, as the next one.
std::string modulationName(std::uint8_t code);

/// "3/4"
std::string codeRateName(std::uint8_t code);

/// I, which depends on the mode; nothing for reserved values.
std::optional<unsigned> interleavingLength(const TransmissionParameters& parameters, const LayerParameters& layer);

} // namespace inspect
