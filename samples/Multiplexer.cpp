#include "Multiplexer.h"

#include <algorithm>
#include <bitstream/mpeg/pes.h>
#include <bitstream/mpeg/psi.h>

namespace sample {

namespace {

/// The system clock counts 27 MHz: a base of 90 kHz and an extension from 0 to 299.
constexpr std::uint64_t CLOCK_RATE = 27000000;
constexpr std::uint64_t CLOCKS_PER_BASE = 300;
constexpr std::uint64_t CLOCK_AT_START = 10 * CLOCK_RATE;

/// What is decoded waits this long for its time.
constexpr std::uint64_t DECODER_DELAY = CLOCK_RATE / 2;

constexpr std::uint8_t CLOCK_ADAPTATION_LENGTH = TS_SIZE - TS_HEADER_SIZE - 1;
constexpr std::uint8_t FILLER = 0xFF;

std::uint64_t clockAt(unsigned slot) {
    return CLOCK_AT_START + slot * CLOCK_RATE / Multiplexer::SLOTS_PER_SECOND;
}

Bytes emptyPacket(std::uint16_t pid) {
    Bytes packet(TS_SIZE, FILLER);
    ts_init(packet.data());
    ts_set_pid(packet.data(), pid);
    return packet;
}

/// PES_packet_length counts what stands behind it.
constexpr std::uint16_t PES_SIZE = TS_SIZE - TS_HEADER_SIZE;
constexpr std::uint16_t PES_LENGTH = PES_SIZE - PES_HEADER_SIZE;

Bytes fillerPacket(std::uint16_t pid, std::uint8_t streamId, std::uint64_t clock) {
    Bytes packet = emptyPacket(pid);
    ts_set_unitstart(packet.data());
    ts_set_payload(packet.data());
    std::uint8_t* const pes = packet.data() + TS_HEADER_SIZE;
    pes_init(pes);
    pes_set_streamid(pes, streamId);
    pes_set_length(pes, PES_LENGTH);
    pes_set_headerlength(pes, PES_HEADER_SIZE_PTS - PES_HEADER_SIZE_NOPTS);
    pes_set_pts(pes, (clock + DECODER_DELAY) / CLOCKS_PER_BASE);
    return packet;
}

} // namespace

void Multiplexer::repeatSection(std::uint16_t pid, unsigned period, unsigned first,
                                std::function<Bytes(unsigned slot)> section) {
    m_repeated.push_back({period, first, [pid, section = std::move(section)](unsigned slot) {
                              const Bytes bytes = section(slot);
                              std::vector<Packet> packets;
                              std::uint16_t used = 0;
                              while (used < bytes.size()) {
                                  Packet packet{pid, emptyPacket(pid), false};
                                  std::uint8_t offset = 0;
                                  psi_split_section(packet.bytes.data(), &offset, bytes.data(), &used);
                                  psi_split_end(packet.bytes.data(), &offset);
                                  ts_set_pid(packet.bytes.data(), pid);
                                  packets.push_back(std::move(packet));
                              }
                              return packets;
                          }});
}

void Multiplexer::repeatClock(std::uint16_t pid, unsigned period, unsigned first) {
    m_repeated.push_back({period, first, [pid](unsigned /*slot*/) {
                              return std::vector<Packet>{{pid, emptyPacket(pid), true}};
                          }});
}

void Multiplexer::repeatFiller(std::uint16_t pid, unsigned period, unsigned first, std::uint8_t streamId) {
    m_repeated.push_back({period, first, [pid, streamId](unsigned slot) {
                              return std::vector<Packet>{{pid, fillerPacket(pid, streamId, clockAt(slot)), false}};
                          }});
}

Bytes Multiplexer::run(unsigned slots) {
    Bytes stream;
    for (unsigned slot = 0; slot < slots; ++slot) {
        for (const Repeated& each : m_repeated) {
            if (slot >= each.first && (slot - each.first) % each.period == 0) {
                std::vector<Packet> packets = each.packets(slot);
                std::move(packets.begin(), packets.end(), std::back_inserter(m_waiting));
            }
        }
        Bytes null(TS_SIZE);
        ts_pad(null.data());
        if (m_waiting.empty()) {
            stream.insert(stream.end(), null.begin(), null.end());
        } else {
            finish(m_waiting.front(), slot);
            stream.insert(stream.end(), m_waiting.front().bytes.begin(), m_waiting.front().bytes.end());
            m_waiting.pop_front();
        }
    }
    return stream;
}

/// Sets what is known only when a packet is sent.
void Multiplexer::finish(Packet& packet, unsigned slot) {
    std::uint8_t* const bytes = packet.bytes.data();
    std::uint8_t& continuity = m_continuity.try_emplace(packet.pid, std::uint8_t{0}).first->second;
    if (packet.isClock) {
        ts_set_adaptation(bytes, CLOCK_ADAPTATION_LENGTH);
        tsaf_set_pcr(bytes, clockAt(slot) / CLOCKS_PER_BASE);
        tsaf_set_pcrext(bytes, static_cast<std::uint16_t>(clockAt(slot) % CLOCKS_PER_BASE));
        ts_set_cc(bytes, (continuity - 1U) & 0x0FU); // counts packets with payload only
    } else {
        ts_set_cc(bytes, continuity);
        continuity = (continuity + 1U) & 0x0FU;
    }
}

} // namespace sample
