#include "transmission/TransmissionReader.h"

#include <bitstream/mpeg/ts.h>

namespace inspect {

namespace {

/// So many counters in a row are no accident.
constexpr unsigned RUN = 16;

/// Of a stream that loses packets again and again, so many may wait for such a run.
constexpr std::size_t MOST_WAITING = 1024;

} // namespace

void TransmissionReader::take(const std::uint8_t* packet, const std::uint8_t* trailer, const Position& position) {
    const Pid pid = ts_get_pid(packet);
    if (pid == INFORMATION_PID) {
        takeInformation(packet, position);
    }
    if (trailer != nullptr) {
        const Arrival arrival{pid, Trailer::of(trailer), position};
        if (m_isBroadcast) {
            count(arrival);
        } else {
            recognise(arrival);
        }
    }
}

void TransmissionReader::takeInformation(const std::uint8_t* packet, const Position& position) {
    const std::optional<InformationPacket> information = InformationPacket::of(packet);
    if (!information) {
        m_transmission.damagedInformation.add(position);
        return;
    }
    std::optional<TransmissionParameters>& last = m_transmission.parameters;
    const bool same = last && *last == information->current;
    m_transmission.parameterChanges += last && !same ? 1U : 0U;
    last = information->current;
    m_settled = same ? last : std::nullopt;
    ++m_transmission.informationPackets;
    m_transmission.emergencies += information->emergency ? 1U : 0U;
}

/// What other streams have behind their packets does not count them.
void TransmissionReader::recognise(const Arrival& arrival) {
    if (!arrival.trailer || m_waiting.size() == MOST_WAITING) {
        m_waiting.clear();
    }
    if (!arrival.trailer) {
        return;
    }
    const bool follows = !m_waiting.empty() && arrival.trailer->counter == m_waiting.back().trailer->counter + 1;
    m_run = follows ? m_run + 1 : 1;
    m_waiting.push_back(arrival);
    if (m_run == RUN) {
        m_isBroadcast = true;
        for (const Arrival& each : m_waiting) {
            count(each);
        }
        m_waiting = {};
    }
}

void TransmissionReader::count(const Arrival& arrival) {
    if (!arrival.trailer) {
        m_trailers.damaged.add(arrival.position);
        m_counter.skip(frameLength());
        m_tally.discard();
        return;
    }
    ++m_trailers.packets;
    const Trailer& trailer = *arrival.trailer;
    m_layersOfPids.at(arrival.pid).set(trailer.layer);
    if (trailer.layer >= LAYER_A && trailer.layer < LAYER_A + LAYER_COUNT) {
        ++m_trailers.packetsOfLayers.at(trailer.layer - LAYER_A);
    }
    m_trailers.emergencies += trailer.emergency ? 1U : 0U;
    m_trailers.emergencyChanges += m_emergency.value_or(trailer.emergency) != trailer.emergency ? 1U : 0U;
    m_emergency = trailer.emergency;
    const PacketCounter::Step step = m_counter.take(trailer, arrival.position, frameLength());
    m_tally.take(step, trailer, arrival.pid == INFORMATION_PID, arrival.position, m_settled);
}

FrameLength TransmissionReader::frameLength() const {
    const auto packets = [](const std::optional<TransmissionParameters>& parameters) {
        return parameters ? packetsPerFrame(*parameters) : std::nullopt;
    };
    return {packets(m_transmission.parameters), packets(m_settled)};
}

std::optional<Transmission> TransmissionReader::finish() {
    if (!m_isBroadcast && m_transmission.informationPackets == 0) {
        return std::nullopt;
    }
    if (m_isBroadcast) {
        if (m_transmission.parameterChanges == 0) {
            m_settled = m_transmission.parameters;
        }
        m_counter.finish(frameLength());
        m_tally.finish(m_settled, frameLength().latest,
                       m_transmission.informationPackets + m_transmission.damagedInformation.count != 0);
        m_trailers.frames = m_tally.frames();
        m_trailers.lost = m_counter.lost();
        m_trailers.wrongFrames = m_counter.wrongFrames();
        m_trailers.framesWithoutInformation = m_tally.withoutInformation();
        m_trailers.wrongLayers = m_tally.wrongLayers();
        m_transmission.trailers = m_trailers;
    }
    return m_transmission;
}

} // namespace inspect
