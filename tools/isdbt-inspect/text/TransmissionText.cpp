#include "text/TransmissionText.h"

#include "text/Columns.h"

#include <fmt/format.h>

namespace inspect {

namespace {

constexpr const char* UNKNOWN = "-";

const std::vector<Column> COLUMNS{{"", "layer", Column::Kind::Name},
                                  {"", "modulation", Column::Kind::Name},
                                  {"code", "rate", Column::Kind::Name},
                                  {"time", "interleaving", Column::Kind::Number, 2},
                                  {"", "segments"},
                                  {"", "kbit/s", Column::Kind::Number, 1},
                                  {"", "packets", Column::Kind::Number, 3}};

std::string orCode(const std::string& name, unsigned code) {
    return name.empty() ? fmt::format("reserved ({})", code) : name;
}

std::string parametersText(const Transmission& transmission) {
    if (!transmission.parameters) {
        const std::uint64_t damaged = transmission.damagedInformation.count;
        return fmt::format("Transmission: {}, so that its parameters are not known",
                           damaged == 0   ? "no IIP came"
                           : damaged == 1 ? "the only IIP is not sound"
                                          : fmt::format("none of the {} IIPs is sound", damaged));
    }
    const TransmissionParameters& parameters = *transmission.parameters;
    std::string text =
        fmt::format("Transmission: {}, guard interval {}, {}partial reception",
                    parameters.mode == 0 ? "a reserved mode" : fmt::format("mode {}", parameters.mode),
                    guardIntervalName(parameters.guardInterval), parameters.partialReception ? "" : "no ");
    if (transmission.parameterChanges != 0) {
        text += fmt::format(" (changed {})", counted(transmission.parameterChanges, "time", "times"));
    }
    return text;
}

std::string framesText(const Transmission& transmission) {
    const std::uint64_t damaged = transmission.damagedInformation.count;
    const std::string packets = counted(transmission.informationPackets + damaged, "IIP", "IIPs") +
                                (damaged == 0 ? "" : fmt::format(" ({} damaged)", damaged));
    if (!transmission.trailers) {
        return packets + ", no ISDB-T information behind the packets";
    }
    const Trailers& trailers = *transmission.trailers;
    const std::optional<unsigned> length =
        transmission.parameters ? packetsPerFrame(*transmission.parameters) : std::nullopt;
    return fmt::format("{}{}, {}, {} lost by TSP_counter", counted(trailers.frames, "whole frame", "whole frames"),
                       length ? fmt::format(" of {} packets", *length) : "", packets,
                       counted(trailers.lost.packets, "packet", "packets"));
}

/// "0 in all IIPs"
std::string flagText(std::uint64_t set, std::uint64_t all, std::string_view carriers) {
    return set == 0 || set == all ? fmt::format("{} in all {}", set == 0 ? 0 : 1, carriers)
                                  : fmt::format("1 in {} of {} {}", set, all, carriers);
}

/// In the packets the flag says nothing as it stands: there are senders that always set it.
std::string emergencyText(const Transmission& transmission) {
    std::string text = "emergency flag";
    if (transmission.informationPackets != 0) {
        text += ' ' + flagText(transmission.emergencies, transmission.informationPackets,
                               transmission.damagedInformation.count == 0 ? "IIPs" : "sound IIPs");
        text += transmission.trailers ? "," : "";
    }
    if (transmission.trailers) {
        const Trailers& trailers = *transmission.trailers;
        text += ' ' + flagText(trailers.emergencies, trailers.packets, "packets");
        text += trailers.emergencyChanges == 0
                    ? " (no sign of an alert unless it changes)"
                    : fmt::format(" (changed {})", counted(trailers.emergencyChanges, "time", "times"));
    }
    return text;
}

Row rowOf(const Transmission& transmission, std::size_t at) {
    Row row{Line(layerName(LAYER_A + static_cast<unsigned>(at)), Ink::Name)};
    if (transmission.parameters) {
        const TransmissionParameters& parameters = *transmission.parameters;
        const LayerParameters& layer = parameters.layers.at(at);
        const std::optional<unsigned> interleaving = interleavingLength(parameters, layer);
        const std::optional<double> rate = bitRate(parameters, layer);
        row.emplace_back(orCode(modulationName(layer.modulation), layer.modulation));
        row.emplace_back(orCode(codeRateName(layer.codeRate), layer.codeRate));
        row.emplace_back(interleaving ? fmt::format("I = {}", *interleaving) : orCode("", layer.interleaving));
        row.emplace_back(std::to_string(layer.segments));
        row.emplace_back(rate ? fmt::format("{:.3f}", *rate / 1000) : UNKNOWN);
    } else {
        row.resize(COLUMNS.size() - 1, UNKNOWN);
    }
    row.emplace_back(transmission.trailers ? std::to_string(transmission.trailers->packetsOfLayers.at(at)) : UNKNOWN);
    return row;
}

bool isUsed(const Transmission& transmission, std::size_t at) {
    return (transmission.parameters && transmission.parameters->layers.at(at).isUsed()) ||
           (transmission.trailers && transmission.trailers->packetsOfLayers.at(at) != 0);
}

} // namespace

void appendTransmission(Page& page, const Summary& summary) {
    if (!summary.transmission) {
        return;
    }
    const Transmission& transmission = *summary.transmission;
    appendLine(page, parametersText(transmission), INDENT);
    appendLine(page, framesText(transmission), INDENT);
    appendLine(page, emergencyText(transmission), INDENT);
    std::vector<Row> rows;
    for (std::size_t at = 0; at < LAYER_COUNT; ++at) {
        if (isUsed(transmission, at)) {
            rows.push_back(rowOf(transmission, at));
        }
    }
    if (!rows.empty()) {
        appendRows(page, COLUMNS, std::move(rows));
    }
    page.lines.emplace_back();
}

} // namespace inspect
