#include "checking/Checks.h"

#include "describing/FieldLookup.h"
#include "tables/TableKinds.h"
#include "transmission/InformationPacket.h"

#include <fmt/format.h>
#include <numeric>

namespace inspect {

namespace {

constexpr FaultPlace NOWHERE{std::nullopt, std::nullopt, std::nullopt};
constexpr FaultPlace OF_INFORMATION{INFORMATION_PID, std::nullopt, std::nullopt};

/// Finds what is wrong with the packets themselves.
class TrailerChecker {
public:
    TrailerChecker(Faults& faults, const Transmission& transmission)
        : m_faults(faults), m_transmission(transmission), m_trailers(*transmission.trailers) {}

    void checkAll() {
        const LostPackets& lost = m_trailers.lost;
        add(faults::PACKETS_LOST, NOWHERE, lost.gaps,
            fmt::format("{} lost in {} by TSP_counter", counted(lost.packets, "packet", "packets"),
                        counted(lost.gaps.count, "place", "places")));
        add(faults::PACKETS_LOST, NOWHERE, lost.unmeasured,
            fmt::format("TSP_counter goes back in {}: how many packets are lost there is not known",
                        counted(lost.unmeasured.count, "place", "places")));
        add(faults::TRAILERS_DAMAGED, NOWHERE, m_trailers.damaged,
            fmt::format("what stands behind {} is no ISDB-T information",
                        counted(m_trailers.damaged.count, "packet", "packets")));
        const WrongCounts& wrong = m_trailers.wrongFrames;
        add(faults::FRAME_LENGTH, NOWHERE, wrong.frames,
            fmt::format("{} with {} packets, where mode and guard interval give {}", framesLike(wrong.frames.count),
                        wrong.found, wrong.expected));
        add(faults::IIP_MISSING, OF_INFORMATION, m_trailers.framesWithoutInformation,
            fmt::format("no IIP in {} of {}", m_trailers.framesWithoutInformation.count,
                        counted(m_trailers.frames, "whole frame", "whole frames")));
        for (std::size_t at = 0; at < LAYER_COUNT; ++at) {
            const WrongCounts& ofLayer = m_trailers.wrongLayers.at(at);
            add(faults::LAYER_PACKETS, NOWHERE, ofLayer.frames,
                fmt::format("{} with {} packets of layer {}, where its parameters give {}",
                            framesLike(ofLayer.frames.count), ofLayer.found,
                            layerName(LAYER_A + static_cast<unsigned>(at)), ofLayer.expected));
        }
    }

private:
    /// Others than the first may have other numbers.
    static std::string framesLike(std::uint64_t count) {
        return count == 1 ? "1 frame" : fmt::format("{} frames, the first", count);
    }

    void add(FaultKind kind, const FaultPlace& place, const Occurrences& where, std::string text) {
        if (where.count != 0) {
            m_faults.add({&m_transmission, "Transmission"}, {kind, place, std::move(text), where.first});
        }
    }

    Faults& m_faults;
    const Transmission& m_transmission;
    const Trailers& m_trailers;
};

void checkSegments(Faults& faults, const Transmission& transmission) {
    std::vector<unsigned> ofLayers;
    for (const LayerParameters& layer : transmission.parameters->layers) {
        if (layer.isUsed()) {
            ofLayers.push_back(layer.segments);
        }
    }
    const unsigned all = std::accumulate(ofLayers.begin(), ofLayers.end(), 0U);
    if (transmission.parameters->isTelevision && all != SEGMENTS_OF_TELEVISION) {
        faults.add({&transmission, "Transmission"},
                   {faults::SEGMENTS, OF_INFORMATION,
                    fmt::format("layers with {} segments, where television has {}",
                                ofLayers.empty() ? "0" : fmt::format("{}", fmt::join(ofLayers, " + ")),
                                SEGMENTS_OF_TELEVISION),
                    std::nullopt});
    }
}

/// Finds where the NIT contradicts the IIP.
class NetworkChecker {
public:
    NetworkChecker(Faults& faults, const Table& nit, const TransportStream& stream)
        : m_faults(faults), m_nit(nit), m_stream(stream),
          m_delivery(inner(*stream.entry, "terrestrial_delivery_system_descriptor")) {}

    /// transmission_mode counts from 0, the IIP's mode from 1.
    void checkMode(std::uint8_t mode) {
        const std::optional<std::int64_t> said = numberIn(m_delivery, "transmission_mode");
        if (said && mode != 0 && *said + 1 != mode) {
            add(fmt::format("the NIT says transmission mode {}, the IIP {}", *said + 1, mode));
        }
    }

    void checkGuardInterval(std::uint8_t guardInterval) {
        const std::optional<std::int64_t> said = numberIn(m_delivery, "guard_interval");
        if (said && *said != guardInterval) {
            add(fmt::format("the NIT says guard interval {}, the IIP {}",
                            guardIntervalName(static_cast<std::uint8_t>(*said)), guardIntervalName(guardInterval)));
        }
    }

    void checkPartialReception(bool partial) {
        const bool described = find(*m_stream.entry, "partial_reception_descriptor") != nullptr;
        if (described != partial) {
            add(partial ? "the IIP says partial reception, but the NIT has no partial_reception_descriptor"
                        : "the NIT has a partial_reception_descriptor, but the IIP says no partial reception");
        }
    }

private:
    void add(std::string text) {
        addShown(m_faults, subject(m_stream), faults::NIT_CONTRADICTS_IIP, m_nit, std::move(text));
    }

    Faults& m_faults;
    const Table& m_nit;
    const TransportStream& m_stream;
    const Fields& m_delivery;
};

void checkNetwork(Faults& faults, const Network& network, const TransmissionParameters& parameters) {
    for (const TransportStream& stream : network.streams) {
        if (stream.isThisOne && stream.entry != nullptr && !stream.isRepeated) {
            NetworkChecker checker(faults, *network.nit, stream);
            checker.checkMode(parameters.mode);
            checker.checkGuardInterval(parameters.guardInterval);
            checker.checkPartialReception(parameters.partialReception);
        }
    }
}

} // namespace

void checkTransmission(Faults& faults, const Transmission& transmission, const Multiplex& multiplex) {
    if (transmission.trailers) {
        TrailerChecker(faults, transmission).checkAll();
    }
    if (const Occurrences& damaged = transmission.damagedInformation; damaged.count != 0) {
        faults.add({&transmission, "Transmission"},
                   {faults::IIP_DAMAGED, OF_INFORMATION,
                    fmt::format("{} with a wrong CRC_32", counted(damaged.count, "IIP", "IIPs")), damaged.first});
    }
    if (transmission.parameters) {
        checkSegments(faults, transmission);
        for (const Network& network : multiplex.networks()) {
            checkNetwork(faults, network, *transmission.parameters);
        }
    }
}

} // namespace inspect
