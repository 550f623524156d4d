#include "transmission/FrameTally.h"

namespace inspect {

namespace {

std::optional<unsigned> lengthOf(const std::optional<TransmissionParameters>& parameters) {
    return parameters ? packetsPerFrame(*parameters) : std::nullopt;
}

} // namespace

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
    const std::optional<unsigned> all = lengthOf(parameters);
    if (!m_whole) {
        return;
    }
    ++m_unjudged[m_packets];
    if (all) {
        judge(all);
    }
    if (all && m_packets != *all) {
        return;
    }
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

/// While parameters change, frames may be of those before or behind.
void FrameTally::judge(std::optional<unsigned> length) {
    for (const auto& [packets, frames] : m_unjudged) {
        m_frames += !length || packets == *length || packets == m_length ? frames : 0;
    }
    m_unjudged.clear();
    m_length = length;
}

void FrameTally::finish(const std::optional<TransmissionParameters>& parameters, std::optional<unsigned> length,
                        bool hasInformation) {
    const std::optional<unsigned> all = lengthOf(parameters);
    if (length && m_packets == *length) {
        end(parameters);
    }
    judge(all ? all : length);
    if (!hasInformation) {
        m_withoutInformation = m_perhapsWithout;
    }
}

} // namespace inspect
