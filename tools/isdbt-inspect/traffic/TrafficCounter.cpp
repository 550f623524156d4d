#include "traffic/TrafficCounter.h"

#include "packets/AdaptationField.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace inspect {

namespace {

constexpr double BITS_OF_PACKET = TS_SIZE * 8.0;

/// Of video and audio in packets of a packetized elementary stream (PES).
constexpr std::uint8_t FIRST_STREAM_ID = 0xC0;
constexpr std::uint8_t LAST_STREAM_ID = 0xEF;

/// The first bytes of a PES packet, up to the flags that say whether it has a PTS.
constexpr std::size_t PES_FLAGS_END = 8;

/// Whether video or audio begins here that has a PTS.
bool hasPts(const std::uint8_t* packet) {
    const std::size_t offset = TS_HEADER_SIZE + (ts_has_adaptation(packet) ? 1U + ts_get_adaptation(packet) : 0U);
    if (offset + PES_FLAGS_END > TS_SIZE) {
        return false;
    }
    const std::uint8_t* const pes = packet + offset;
    const bool begins = pes[0] == 0 && pes[1] == 0 && pes[2] == 1;
    return begins && pes[3] >= FIRST_STREAM_ID && pes[3] <= LAST_STREAM_ID && (pes[7] & 0x80U) != 0;
}

} // namespace

void TrafficCounter::take(const std::uint8_t* packet, const Position& position) {
    settle(); // this packet may open what the clock has just closed
    heedFrom(0);
    const std::size_t heeded = m_events.size();
    if (position.seconds && (!m_endOfSecond || *position.seconds >= *m_endOfSecond)) {
        passSeconds(*position.seconds);
    }
    const Pid pid = ts_get_pid(packet);
    Stream& stream = streamOf(pid, position);
    ++stream.traffic.packets;
    ++stream.inThisSecond;
    if (ts_get_transporterror(packet)) {
        if (stream.traffic.transportErrors++ == 0) {
            stream.traffic.firstTransportError = position;
        }
        stream.continuity.forget();
        tell(EventKind::TransportError, packet, position);
    } else if (pid != NULL_PID) {
        follow(stream, packet, position);
        lookForScrambling(stream, packet, position);
        lookForPts(stream, packet, position);
    }
    stream.traffic.last = position;
    settle();
    heedFrom(heeded);
}

bool TrafficCounter::takeNext(const std::uint8_t* packet, const Position& position) {
    const Pid pid = ts_get_pid(packet);
    Stream* const stream = m_ofPids.at(pid).get();
    if (stream == nullptr || (pid != NULL_PID && (stream->isScrambled != (ts_get_scrambling(packet) != 0) ||
                                                  !stream->continuity.takeNext(packet)))) {
        return false;
    }
    ++stream->traffic.packets;
    ++stream->inThisSecond;
    stream->traffic.scrambled += stream->isScrambled ? 1U : 0U;
    stream->traffic.last = position;
    return true;
}

void TrafficCounter::finish() {
    const std::size_t heeded = m_events.size();
    m_clock.finish();
    settle();
    heedFrom(heeded);
}

void TrafficCounter::beginPeriod() {
    for (const Pid pid : m_pids) {
        m_ofPids.at(pid)->traffic.beginPeriod();
    }
}

std::vector<std::pair<Pid, std::uint64_t>> TrafficCounter::news() {
    std::vector<std::pair<Pid, std::uint64_t>> news;
    for (const Pid pid : m_pids) {
        Stream& stream = *m_ofPids.at(pid);
        if (const std::uint64_t told = std::exchange(stream.told, stream.traffic.packets); told != stream.told) {
            news.emplace_back(pid, stream.told - told);
        }
    }
    return news;
}

TrafficCounter::Stream& TrafficCounter::streamOf(Pid pid, const Position& position) {
    std::unique_ptr<Stream>& stream = m_ofPids.at(pid);
    if (!stream) {
        stream = std::make_unique<Stream>();
        stream->traffic.first = position;
        m_pids.insert(std::lower_bound(m_pids.begin(), m_pids.end(), pid), pid);
    }
    return *stream;
}

/// What the reader and the clock say of this packet.
void TrafficCounter::heedFrom(std::size_t first) {
    for (std::size_t at = first; at < m_events.size(); ++at) {
        heed(Event(m_events[at])); // more may happen by it
    }
}

void TrafficCounter::heed(const Event& event) {
    if (event.kind == EventKind::SyncLost) {
        forget();
        m_clock.takeLossOfSync(event.at);
    } else if (event.kind == EventKind::PcrInterval || event.kind == EventKind::PcrJump) {
        PidTraffic& traffic = streamOf(*event.pid, event.at).traffic;
        if (event.kind == EventKind::PcrJump) {
            ++traffic.pcrJumps;
        } else {
            traffic.pcrIntervals.take(event.amount, event.at);
        }
    }
}

/// Once the clock has judged, discontinuities are what they seem to be, or the signs of another stream.
void TrafficCounter::settle() {
    if (m_streams != m_clock.newStreams()) {
        m_streams = m_clock.newStreams();
        m_open.clear();
        forget();
    }
    if (m_open.empty() || m_clock.isJudging()) {
        return;
    }
    for (const Event& event : m_open) {
        PidTraffic& traffic = m_ofPids.at(*event.pid)->traffic;
        if (traffic.discontinuities++ == 0) {
            traffic.firstDiscontinuity = event.at;
        }
        traffic.lost += static_cast<std::uint64_t>(event.amount);
        m_events.push_back(event);
    }
    m_open.clear();
}

void TrafficCounter::forget() {
    for (const Pid pid : m_pids) {
        m_ofPids.at(pid)->continuity.forget();
    }
}

/// The first second is not whole: the clock, or a PID, began somewhere in it.
void TrafficCounter::passSeconds(double now) {
    const double end = std::floor(now) + 1;
    // More than a minute without a packet tells no more than two seconds without.
    constexpr double MOST = 60;
    const double passed = m_endOfSecond ? std::min(end - *m_endOfSecond, MOST) : 0;
    for (int each = 0; each < passed; ++each) {
        endSecond();
    }
    m_endOfSecond = end;
}

void TrafficCounter::endSecond() {
    for (const Pid pid : m_pids) {
        Stream& stream = *m_ofPids.at(pid);
        PidTraffic& traffic = stream.traffic;
        const double bitRate = static_cast<double>(std::exchange(stream.inThisSecond, 0)) * BITS_OF_PACKET;
        if (std::exchange(stream.isWhole, true)) {
            traffic.lowestBitRate = std::min(traffic.lowestBitRate.value_or(bitRate), bitRate);
            traffic.highestBitRate = std::max(traffic.highestBitRate.value_or(bitRate), bitRate);
        }
    }
}

void TrafficCounter::follow(Stream& stream, const std::uint8_t* packet, const Position& position) {
    PidTraffic& traffic = stream.traffic;
    switch (stream.continuity.take(packet)) {
    case Continuity::Step::First:
        break;
    case Continuity::Step::Next:
        if (m_clock.isJudging() && ts_has_payload(packet)) {
            m_clock.takeStep(ts_get_pid(packet), false, position);
        }
        break;
    case Continuity::Step::Duplicate:
        ++traffic.duplicates;
        break;
    case Continuity::Step::Announced:
        ++traffic.announcedJumps;
        tell(EventKind::DiscontinuityKnown, packet, position, stream.continuity.lost());
        break;
    case Continuity::Step::Broken:
        m_open.push_back({EventKind::Discontinuity, ts_get_pid(packet), position,
                          static_cast<double>(stream.continuity.lost()), 0, 0, traffic.last.packet});
        m_clock.takeStep(ts_get_pid(packet), true, position);
    }
    if (hasPcr(packet)) {
        ++traffic.pcrs;
        traffic.lastPcr = position;
    }
}

void TrafficCounter::lookForScrambling(Stream& stream, const std::uint8_t* packet, const Position& position) {
    if (!ts_has_payload(packet)) {
        return;
    }
    const bool isScrambled = ts_get_scrambling(packet) != 0;
    stream.traffic.scrambled += isScrambled ? 1U : 0U;
    if (isScrambled && !stream.isScrambled) {
        tell(EventKind::Scrambled, packet, position);
    }
    stream.isScrambled = isScrambled;
}

/// Pictures come in another order than they are shown: the clock measures, not the values.
void TrafficCounter::lookForPts(Stream& stream, const std::uint8_t* packet, const Position& position) {
    if (!ts_get_unitstart(packet) || !ts_has_payload(packet) || stream.isScrambled || !hasPts(packet)) {
        return;
    }
    std::optional<Position>& last = stream.traffic.lastPts;
    if (last && last->seconds && position.seconds) {
        const double interval = std::max(0.0, *position.seconds - *last->seconds);
        stream.traffic.ptsIntervals.take(interval, position);
        tell(EventKind::PtsInterval, packet, position, interval);
    }
    last = position;
}

void TrafficCounter::tell(EventKind kind, const std::uint8_t* packet, const Position& position, double amount) {
    m_events.push_back({kind, ts_get_pid(packet), position, amount});
}

} // namespace inspect
