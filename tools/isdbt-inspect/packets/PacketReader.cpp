#include "packets/PacketReader.h"

#include <algorithm>
#include <array>
#include <bitstream/mpeg/ts.h>

namespace inspect {

namespace {

// 188: the packet alone. 192: a time stamp of four bytes stands before each packet. 204: sixteen bytes follow, parity
// or what a transmitter is told of the packet.
constexpr std::array<std::size_t, 3> SPACINGS{188, 192, 204};
constexpr std::size_t WIDEST = 204;
constexpr std::size_t TRAILED = 204;
constexpr std::size_t STAMPED = 192;
constexpr std::size_t STAMP_SIZE = STAMPED - TS_SIZE;

/// So many packets in a row are no accident.
constexpr std::size_t RUN = 5;
constexpr std::size_t RUN_SIZE = RUN * WIDEST;

/// What begins with so many bytes without a packet is no transport stream.
constexpr std::uint64_t PATIENCE = std::uint64_t{1} << 20;

/// Large enough to make system calls rare, small enough to stay in the processor's cache.
constexpr std::size_t BUFFER_SIZE = std::size_t{1} << 18;

constexpr const char* NO_PACKETS = "not a transport stream: no packets of 188, 192 or 204 bytes found";

} // namespace

PacketReader::PacketReader(Input& input, Events& events)
    : m_input(input), m_events(events), m_buffer(BUFFER_SIZE), m_complete(TS_SIZE) {}

const std::uint8_t* PacketReader::next() {
    for (;;) {
        while (m_synchronised && available() >= m_complete) {
            const std::uint8_t* const packet = m_buffer.data() + m_at;
            if (!ts_validate(packet)) {
                if (available() <= m_spacing && !m_inputEnded) {
                    break; // what follows must tell
                }
                isAlone() ? drop() : loseSync();
                continue;
            }
            m_at += m_spacing;
            ++m_packets;
            m_offset = m_dropped + static_cast<std::uint64_t>(packet - m_buffer.data());
            m_trailer = m_spacing == TRAILED && m_at <= m_end ? packet + TS_SIZE : nullptr;
            return packet;
        }
        if (!m_synchronised && synchronise()) {
            continue;
        }
        if (!refill()) {
            finish();
            return nullptr;
        }
    }
}

/// Whether the packet that should be next is the only one without a sync byte.
bool PacketReader::isAlone() const {
    return available() > m_spacing && ts_validate(&m_buffer[m_at + m_spacing]);
}

/// Two wrong ones in a row would be a loss of sync.
void PacketReader::drop() {
    tell(EventKind::SyncByteError, m_dropped + m_at, 0);
    skip(m_spacing);
    m_toldSkipped = m_skipped;
}

void PacketReader::loseSync() {
    m_synchronised = false;
    tell(EventKind::SyncLost, m_dropped + m_at, 0);
}

/// Of those bytes that nobody knows of.
void PacketReader::tellSkipped() {
    if (const std::uint64_t count = m_skipped - m_toldSkipped; count != 0) {
        tell(EventKind::BytesSkipped, m_dropped + m_at - count, count);
        m_toldSkipped = m_skipped;
    }
}

/// The next packet is the first one that it matters for.
void PacketReader::tell(EventKind kind, std::uint64_t offset, std::uint64_t amount) {
    m_events.push_back({kind, std::nullopt, {m_packets + 1, offset, {}, {}}, static_cast<double>(amount)});
}

/// Moves what is left to the front and reads on. @return false at the end of the input.
bool PacketReader::refill() {
    if (m_inputEnded) {
        return false;
    }
    const std::size_t kept = available();
    std::copy_n(m_buffer.begin() + static_cast<std::ptrdiff_t>(m_end - kept), kept, m_buffer.begin());
    m_dropped += m_end - kept;
    m_at -= m_end - kept;
    m_end = kept;
    const std::size_t count = m_input.read(m_buffer.data() + m_end, m_buffer.size() - m_end);
    m_end += count;
    m_inputEnded = count == 0;
    m_arrival = m_input.arrival();
    if (m_inputEnded) {
        m_complete = TS_SIZE; // the last packet may come without its trailer
    }
    // At the end fewer packets in a row must do: another look.
    return !m_inputEnded || (!m_synchronised && available() > 0) || available() >= m_complete;
}

/// Looks for packets in the bytes at hand. @return whether some were found.
bool PacketReader::synchronise() {
    const std::size_t reach = m_inputEnded ? 1 : RUN_SIZE;
    std::size_t at = m_at;
    for (; at + reach <= m_end; ++at) {
        const std::size_t spacing = findSpacing(at);
        if (spacing != 0) {
            synchroniseAt(at, spacing);
            return true;
        }
    }
    if (!m_inputEnded) {
        skipTo(at);
    }
    if (m_packets == 0 && m_skipped > PATIENCE) {
        throw InputError(m_input.name(), NO_PACKETS);
    }
    return false;
}

/// The spacing of the packets that begin at a place; 0 when none do.
std::size_t PacketReader::findSpacing(std::size_t at) const {
    for (const std::size_t spacing : SPACINGS) {
        const std::size_t run = runLength(at, spacing);
        if (run == RUN || (run > 0 && mayBeShort(at, spacing, run))) {
            return spacing;
        }
    }
    return 0;
}

/// The number of packets in a row, at most RUN, as far as the bytes reach; 0 when a sync byte is missing.
std::size_t PacketReader::runLength(std::size_t at, std::size_t spacing) const {
    std::size_t run = 0;
    for (std::size_t place = at; run < RUN && place < m_end; place += spacing) {
        if (!ts_validate(&m_buffer[place])) {
            return 0;
        }
        ++run;
    }
    return run;
}

/// Whether a run may be that short. That comes at the end of the input only; it must then be where packets are
/// expected, and a single packet must end where the input ends.
bool PacketReader::mayBeShort(std::size_t at, std::size_t spacing, std::size_t run) const {
    const bool expected =
        m_packets != 0 ? spacing == m_spacing : m_skipped == 0 && at == (spacing == STAMPED ? STAMP_SIZE : 0);
    const std::size_t left = m_end - at;
    return expected && (run > 1 || left == TS_SIZE || left == spacing);
}

void PacketReader::synchroniseAt(std::size_t at, std::size_t spacing) {
    const bool atStart = m_packets == 0 && m_skipped == 0 && m_at == 0;
    // For half a second of each time stamp's round, the stamps begin with the sync byte, too.
    if (atStart && at == 0 && spacing == STAMPED && runLength(STAMP_SIZE, STAMPED) == RUN) {
        at = STAMP_SIZE;
    }
    if (atStart && spacing == STAMPED && at >= STAMP_SIZE) {
        m_at = STAMP_SIZE;
    }
    skipTo(at);
    tellSkipped();
    m_spacing = spacing;
    m_complete = spacing == TRAILED && !m_inputEnded ? TRAILED : TS_SIZE;
    m_synchronised = true;
}

void PacketReader::skipTo(std::size_t at) {
    if (at > m_at) {
        skip(at - m_at);
    }
}

void PacketReader::skip(std::size_t count) {
    if (!m_firstSkipped) {
        m_firstSkipped = {m_packets + 1, m_dropped + m_at, {}, {}};
    }
    m_skipped += count;
    m_at += count;
}

/// Says what the bytes behind the last packet are.
void PacketReader::finish() {
    if (m_input.interrupted()) {
        return;
    }
    const std::size_t left = available();
    if (m_packets == 0) {
        if (left == 0 && m_skipped == 0) {
            throw InputError(m_input.name(), "is empty");
        }
        const bool begun = m_skipped == 0 && left > 0 && left < TS_SIZE && ts_validate(&m_buffer[m_at]);
        throw InputError(m_input.name(), begun ? "cut off in its first packet" : NO_PACKETS);
    }
    const bool packetBegun = left == 0 || ts_validate(&m_buffer[m_at]);
    if (m_synchronised && packetBegun) {
        // With time stamps or parity, the last packet may come without what stands between the packets.
        const std::size_t behindPacket = m_end + m_spacing - TS_SIZE - m_at;
        m_cutOff = behindPacket == m_spacing - TS_SIZE ? 0 : behindPacket;
        m_at = m_end;
    }
    skipTo(m_end);
    tellSkipped();
}

} // namespace inspect
