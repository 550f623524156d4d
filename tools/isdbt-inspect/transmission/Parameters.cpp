#include "transmission/Parameters.h"

#include <tuple>

namespace inspect {

namespace {

constexpr std::uint8_t NO_SEGMENTS = 15;

constexpr std::array<const char*, 4> GUARD_INTERVALS{"1/32", "1/16", "1/8", "1/4"};

struct Modulation {
    const char* name;
    unsigned pairsOfBits; ///< of a carrier
};

constexpr std::array<Modulation, 4> MODULATIONS{{{"DQPSK", 1}, {"QPSK", 1}, {"16QAM", 2}, {"64QAM", 3}}};

struct CodeRate {
    const char* name;
    unsigned packets; ///< of a segment in a frame of mode 1, with two bits a carrier
};

constexpr std::array<CodeRate, 5> CODE_RATES{{{"1/2", 12}, {"2/3", 16}, {"3/4", 18}, {"5/6", 20}, {"7/8", 21}}};

/// Packets last as long in each mode and with each guard interval: a frame with more of them is longer.
constexpr double PACKET_TIME = 3213.0 / 64e6;
constexpr double PACKET_BITS = 188 * 8;

} // namespace

bool LayerParameters::isUsed() const {
    return segments != NO_SEGMENTS;
}

bool operator==(const TransmissionParameters& one, const TransmissionParameters& other) {
    const auto all = [](const TransmissionParameters& each) {
        return std::tuple(each.mode, each.guardInterval, each.isTelevision, each.partialReception);
    };
    bool equal = all(one) == all(other);
    for (std::size_t at = 0; at < LAYER_COUNT; ++at) {
        const auto ofLayer = [](const LayerParameters& layer) {
            return std::tuple(layer.modulation, layer.codeRate, layer.interleaving, layer.segments);
        };
        equal = equal && ofLayer(one.layers.at(at)) == ofLayer(other.layers.at(at));
    }
    return equal;
}

std::optional<unsigned> packetsPerFrame(const TransmissionParameters& parameters) {
    if (parameters.mode == 0) {
        return std::nullopt;
    }
    constexpr unsigned OF_MODE_1 = 1024;
    const unsigned withoutGuard = OF_MODE_1 << (parameters.mode - 1U);
    const unsigned shift = 5U - parameters.guardInterval;
    return withoutGuard + (withoutGuard >> shift);
}

std::optional<unsigned> packetsPerFrame(const TransmissionParameters& parameters, const LayerParameters& layer) {
    if (parameters.mode == 0 || layer.modulation >= MODULATIONS.size() || layer.codeRate >= CODE_RATES.size() ||
        layer.segments == 0 || layer.segments > SEGMENTS_OF_TELEVISION) {
        return std::nullopt;
    }
    return layer.segments * MODULATIONS.at(layer.modulation).pairsOfBits * CODE_RATES.at(layer.codeRate).packets
           << (parameters.mode - 1U);
}

std::optional<double> bitRate(const TransmissionParameters& parameters, const LayerParameters& layer) {
    const std::optional<unsigned> all = packetsPerFrame(parameters);
    const std::optional<unsigned> ofLayer = packetsPerFrame(parameters, layer);
    return all && ofLayer ? std::optional(*ofLayer * PACKET_BITS / (*all * PACKET_TIME)) : std::nullopt;
}

std::string guardIntervalName(std::uint8_t code) {
    return GUARD_INTERVALS.at(code);
}

std::string modulationName(std::uint8_t code) {
    return code < MODULATIONS.size() ? MODULATIONS.at(code).name : "";
}

std::string codeRateName(std::uint8_t code) {
    return code < CODE_RATES.size() ? CODE_RATES.at(code).name : "";
}

std::optional<unsigned> interleavingLength(const TransmissionParameters& parameters, const LayerParameters& layer) {
    constexpr std::uint8_t LONGEST = 3;
    if (parameters.mode == 0 || layer.interleaving > LONGEST) {
        return std::nullopt;
    }
    // 0, 4, 8, 16 in mode 1; half of it in each further one
    return layer.interleaving == 0 ? 0 : (2U << layer.interleaving) >> (parameters.mode - 1U);
}

} // namespace inspect
