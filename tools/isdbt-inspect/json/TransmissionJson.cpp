#include "json/TransmissionJson.h"

#include "json/JsonValues.h"

#include <nlohmann/json.hpp>

namespace inspect {

namespace {

using Json = nlohmann::ordered_json;

Json layerJson(const Transmission& transmission, std::size_t at) {
    const TransmissionParameters& parameters = *transmission.parameters;
    const LayerParameters& layer = parameters.layers.at(at);
    Json object{{"layer", layerName(LAYER_A + static_cast<unsigned>(at))}};
    object["modulation_scheme"] = layer.modulation;
    object["modulation_scheme_name"] = orNull(modulationName(layer.modulation));
    object["code_rate"] = layer.codeRate;
    object["code_rate_name"] = orNull(codeRateName(layer.codeRate));
    object["time_interleaving"] = orNull(interleavingLength(parameters, layer));
    object["segments"] = layer.segments;
    object["bit_rate"] = rounded(bitRate(parameters, layer));
    object["packets_per_frame"] = orNull(packetsPerFrame(parameters, layer));
    return object;
}

void addParameters(Json& object, const Transmission& transmission) {
    const std::optional<TransmissionParameters>& parameters = transmission.parameters;
    object["mode"] = parameters && parameters->mode != 0 ? Json(parameters->mode) : Json();
    object["guard_interval"] = parameters ? Json(guardIntervalName(parameters->guardInterval)) : Json();
    object["partial_reception"] = parameters ? Json(parameters->partialReception) : Json();
    object["packets_per_frame"] = parameters ? orNull(packetsPerFrame(*parameters)) : Json();
    object["parameter_changes"] = transmission.parameterChanges;
    object["layers"] = Json::array();
    for (std::size_t at = 0; parameters && at < LAYER_COUNT; ++at) {
        if (parameters->layers.at(at).isUsed()) {
            object["layers"].push_back(layerJson(transmission, at));
        }
    }
}

/// Null when packets have no ISDB-T information.
Json trailersJson(const std::optional<Trailers>& trailers) {
    if (!trailers) {
        return nullptr;
    }
    Json object{{"packets", trailers->packets}};
    object["damaged"] = trailers->damaged.count;
    object["whole_frames"] = trailers->frames;
    object["packets_of_layers"] = trailers->packetsOfLayers;
    object["packets_lost"] = trailers->lost.packets;
    object["gaps"] = trailers->lost.gaps.count;
    object["unmeasured_gaps"] = trailers->lost.unmeasured.count;
    object["emergency_packets"] = trailers->emergencies;
    object["emergency_changes"] = trailers->emergencyChanges;
    return object;
}

} // namespace

Json layersJson(const std::optional<LayerSet>& layers) {
    if (!layers) {
        return nullptr;
    }
    Json array = Json::array();
    for (unsigned indicator = 0; indicator < layers->size(); ++indicator) {
        if ((*layers)[indicator]) {
            array.push_back(layerName(indicator));
        }
    }
    return array;
}

std::string transmissionLine(const std::string& source, const Summary& summary) {
    if (!summary.transmission) {
        return {};
    }
    const Transmission& transmission = *summary.transmission;
    Json object = lineObject("transmission", source);
    addParameters(object, transmission);
    object["iips"] = transmission.informationPackets;
    object["damaged_iips"] = transmission.damagedInformation.count;
    object["emergency_iips"] = transmission.emergencies;
    object["trailers"] = trailersJson(transmission.trailers);
    addTime(object, summary.last);
    return jsonLine(object);
}

} // namespace inspect
