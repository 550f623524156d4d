#include "Multiplexer.h"

#include <bitstream/mpeg/pes.h>
#include <bitstream/mpeg/psi.h>

namespace sample {

namespace {

/// A program clock reference has a base of 90 kHz and an extension from 0 to 299.
constexpr Ticks TICKS_PER_BASE = 300;

/// What is decoded waits this long for its time.
constexpr Ticks DECODER_DELAY = SECOND / 2;

constexpr std::uint64_t BITS_PER_PACKET = TS_SIZE * 8;
constexpr std::size_t PIDS = 0x2000;
constexpr std::uint16_t NULL_PID = 0x1FFF;

constexpr std::uint8_t CLOCK_ADAPTATION_LENGTH = TS_SIZE - TS_HEADER_SIZE - 1;
constexpr std::uint8_t FILLER = 0xFF;

Packet emptyPacket(std::uint16_t pid) {
    Packet packet{};
    packet.fill(FILLER);
    ts_init(packet.data());
    ts_set_pid(packet.data(), pid);
    return packet;
}

/// The length of a PES packet counts what stands behind it; that of a longer one is left open.
std::uint16_t pesLength(unsigned packets) {
    const unsigned length = packets * (TS_SIZE - TS_HEADER_SIZE) - PES_HEADER_SIZE;
    return length <= UINT16_MAX ? static_cast<std::uint16_t>(length) : std::uint16_t{0};
}

Packet fillerPacket(std::uint16_t pid) {
    Packet packet = emptyPacket(pid);
    ts_set_payload(packet.data());
    return packet;
}

Packet fillerBegin(std::uint16_t pid, std::uint8_t streamId, unsigned packets, Ticks now) {
    Packet packet = fillerPacket(pid);
    ts_set_unitstart(packet.data());
    std::uint8_t* const pes = packet.data() + TS_HEADER_SIZE;
    pes_init(pes);
    pes_set_streamid(pes, streamId);
    pes_set_length(pes, pesLength(packets));
    pes_set_headerlength(pes, PES_HEADER_SIZE_PTS - PES_HEADER_SIZE_NOPTS);
    pes_set_pts(pes, (Multiplexer::CLOCK_AT_START + now + DECODER_DELAY) / TICKS_PER_BASE);
    return packet;
}

} // namespace

Multiplexer::Multiplexer(unsigned bitRate)
    : m_bitRate(bitRate), m_continuity(PIDS), m_changeSection([](Ticks, std::uint16_t, Bytes&) {}),
      m_changePacket([](Ticks, Packet&) {}) {}

void Multiplexer::repeatSection(std::uint16_t pid, Ticks period, Ticks first, std::function<Bytes(Ticks now)> section) {
    repeatSection(m_waiting, pid, period, first, std::move(section));
}

void Multiplexer::repeatSection(std::deque<Packet>& waiting, std::uint16_t pid, Ticks period, Ticks first,
                                std::function<Bytes(Ticks now)> section) {
    m_repeated.push_back({period, first, [this, &waiting, pid, section = std::move(section)](Ticks now) {
                              Bytes bytes = section(now);
                              m_changeSection(now, pid, bytes);
                              std::uint16_t used = 0;
                              while (used < bytes.size()) {
                                  Packet packet = emptyPacket(pid);
                                  std::uint8_t offset = 0;
                                  psi_split_section(packet.data(), &offset, bytes.data(), &used);
                                  psi_split_end(packet.data(), &offset);
                                  ts_set_pid(packet.data(), pid);
                                  waiting.push_back(packet);
                              }
                          }});
}

void Multiplexer::repeatCarousel(std::uint16_t pid, const CarouselWriter& carousel, Ticks announcements, Ticks turn,
                                 Ticks first) {
    for (const Bytes& each : carousel.announcements()) {
        repeatSection(m_yielding, pid, announcements, first, [each](Ticks) { return each; });
    }
    repeatSection(
        m_yielding, pid, turn / carousel.blocks().size(), first,
        [blocks = carousel.blocks(), at = std::size_t{0}](Ticks) mutable { return blocks[at++ % blocks.size()]; });
}

void Multiplexer::repeatClock(std::uint16_t pid, Ticks period, Ticks first) {
    Packet packet = emptyPacket(pid);
    ts_set_adaptation(packet.data(), CLOCK_ADAPTATION_LENGTH);
    setClock(packet, 0); // it is not known before the packet is sent
    m_repeated.push_back({period, first, [this, packet](Ticks /*now*/) { m_waiting.push_back(packet); }});
}

void Multiplexer::repeatFiller(std::uint16_t pid, Ticks period, Ticks first, std::uint8_t streamId, unsigned packets) {
    m_repeated.push_back({period / packets, first, [this, pid, streamId, packets, count = 0U](Ticks now) mutable {
                              m_waiting.push_back(count == 0 ? fillerBegin(pid, streamId, packets, now)
                                                             : fillerPacket(pid));
                              count = (count + 1) % packets;
                          }});
}

void Multiplexer::changeSections(std::function<void(Ticks now, std::uint16_t pid, Bytes& section)> change) {
    m_changeSection = std::move(change);
}

void Multiplexer::changePackets(std::function<void(Ticks now, Packet& packet)> change) {
    m_changePacket = std::move(change);
}

Ticks Multiplexer::now() const {
    const std::uint64_t bits = m_sent * BITS_PER_PACKET;
    return bits / m_bitRate * SECOND + bits % m_bitRate * SECOND / m_bitRate; // of months, too
}

Packet Multiplexer::next() {
    const Ticks time = now();
    for (Repeated& each : m_repeated) {
        for (; each.due <= time; each.due += each.period) {
            each.send(time);
        }
    }
    Packet packet = take();
    if (isClock(packet)) {
        setClock(packet, CLOCK_AT_START + time);
    }
    m_changePacket(time, packet);
    count(packet);
    ++m_sent;
    return packet;
}

Packet Multiplexer::take() {
    std::deque<Packet>& waiting = m_waiting.empty() ? m_yielding : m_waiting;
    if (waiting.empty()) {
        return nullPacket();
    }
    const Packet packet = waiting.front();
    waiting.pop_front();
    return packet;
}

/// Only packets with payload are counted.
void Multiplexer::count(Packet& packet) {
    const std::uint16_t pid = ts_get_pid(packet.data());
    if (pid == NULL_PID) {
        return;
    }
    std::uint8_t& continuity = m_continuity[pid];
    if (ts_has_payload(packet.data())) {
        ts_set_cc(packet.data(), continuity);
        continuity = (continuity + 1U) & 0x0FU;
    } else {
        ts_set_cc(packet.data(), (continuity - 1U) & 0x0FU);
    }
}

Packet nullPacket() {
    Packet packet{};
    ts_pad(packet.data());
    return packet;
}

bool isClock(const Packet& packet) {
    return ts_has_adaptation(packet.data()) && ts_get_adaptation(packet.data()) != 0 && tsaf_has_pcr(packet.data());
}

Ticks clockOf(const Packet& packet) {
    return tsaf_get_pcr(packet.data()) * TICKS_PER_BASE + tsaf_get_pcrext(packet.data());
}

void setClock(Packet& packet, Ticks clock) {
    tsaf_set_pcr(packet.data(), clock / TICKS_PER_BASE);
    tsaf_set_pcrext(packet.data(), static_cast<std::uint16_t>(clock % TICKS_PER_BASE));
}

std::uint8_t* timedPes(Packet& packet) {
    std::uint8_t* const pes = packet.data() + TS_HEADER_SIZE;
    const bool isTimed =
        ts_get_unitstart(packet.data()) && !ts_has_adaptation(packet.data()) && pes_validate(pes) && pes_has_pts(pes);
    return isTimed ? pes : nullptr;
}

} // namespace sample
