#include "transmission/FrameTally.h"

namespace inspect {

void FrameTally::take(PacketCounter::Step step, const Trailer& trailer, bool information, const Position& position,
                      const std::optional<TransmissionParameters>& parameters) {
    if (step == PacketCounter::Step::NewFrame) {
        end(parameters);
    } else if (step == PacketCounter::Step::Jump) {
        discard();
    }
    if (trailer.frameHead) {
        begin(position);
    }
    ++m_packets;
    if (trailer.layer >= LAYER_A && trailer.layer < LAYER_A + LAYER_COUNT) {
        ++m_ofLayers.at(trailer.layer - LAYER_A);
    }
    m_hasInformation = m_hasInformation || (information && trailer.layer == LAYER_OF_INFORMATION);
}

void FrameTally::begin(const Position& position) {
    m_whole = true;
    m_head = position;
    m_packets = 0;
    m_ofLayers = {};
    m_hasInformation = false;
}

void FrameTally::end(const std::optional<TransmissionParameters>& parameters) {
    const std::optional<unsigned> all = parameters ? packetsPerFrame(*parameters) : std::nullopt;
    if (!m_whole || (all && m_packets != *all)) {
        return;
    }
    ++m_frames;
    if (!m_hasInformation) {
        (all ? m_withoutInformation : m_perhapsWithout).add(m_head);
    }
    for (std::size_t at = 0; parameters && at < LAYER_COUNT; ++at) {
        const LayerParameters& layer = parameters->layers.at(at);
        const std::optional<unsigned> right = layer.isUsed() ? packetsPerFrame(*parameters, layer) : 0;
        if (right && m_ofLayers.at(at) != *right) {
            m_wrongLayers.at(at).add(m_head, m_ofLayers.at(at), *right);
        }
    }
}

void FrameTally::finish(const std::optional<TransmissionParameters>& parameters, bool hasInformation) {
    const std::optional<unsigned> all = parameters ? packetsPerFrame(*parameters) : std::nullopt;
    if (all && m_packets == *all) {
        end(parameters);
    }
    if (!hasInformation) {
        m_withoutInformation = m_perhapsWithout;
    }
}

} // namespace inspect
