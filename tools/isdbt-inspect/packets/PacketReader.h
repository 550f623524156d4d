#pragma once

#include "packets/Event.h"
#include "packets/Input.h"

#include <optional>
#include <vector>

namespace inspect {

/// Cuts a byte stream into transport packets. Their spacing of 188, 192 (with time stamps) or 204 bytes (with a
/// trailer) is found from the stream itself, and found again behind bytes that are no packets. A single packet without
/// a sync byte is left out.
class PacketReader {
public:
    /// @param events where it tells what is wrong
    PacketReader(Input& input, Events& events);

    /// The next packet: 188 bytes, valid until the next call. Null at the end.
    /// @throws InputError when the input cannot be read, is empty, or holds no packets.
    const std::uint8_t* next();

    /// 188, 192 or 204; 0 before the first packet.
    std::size_t spacing() const { return m_spacing; }

    /// The 16 bytes behind the packet that next() returned; null when its stream has none, or the input ends before.
    const std::uint8_t* trailer() const { return m_trailer; }

    /// Packets so far, of whatever PID. The packet that next() returned is the last of them.
    std::uint64_t packets() const { return m_packets; }

    /// Where the packet that next() returned begins in the input, in bytes.
    std::uint64_t offset() const { return m_offset; }

    /// When the end of the packet that next() returned was received, as far as it is known.
    const std::optional<Arrival>& arrival() const { return m_arrival; }

    /// Bytes so far that were no packets.
    std::uint64_t skippedBytes() const { return m_skipped; }

    /// Where the first of them was, with the number of the next packet; nothing when there was none.
    const std::optional<Position>& firstSkipped() const { return m_firstSkipped; }

    /// After the end: what is there of a last packet that is not complete; 0 when the input was interrupted.
    std::size_t cutOffBytes() const { return m_cutOff; }

private:
    std::size_t available() const { return m_at < m_end ? m_end - m_at : 0; }
    bool refill();
    bool isAlone() const;
    void drop();
    void loseSync();
    void tellSkipped();
    void tell(EventKind kind, std::uint64_t offset, std::uint64_t amount);
    bool synchronise();
    std::size_t findSpacing(std::size_t at) const;
    std::size_t runLength(std::size_t at, std::size_t spacing) const;
    bool mayBeShort(std::size_t at, std::size_t spacing, std::size_t run) const;
    void synchroniseAt(std::size_t at, std::size_t spacing);
    void skipTo(std::size_t at);
    void skip(std::size_t count);
    void finish();

    Input& m_input;
    Events& m_events;
    std::vector<std::uint8_t> m_buffer;
    std::size_t m_at = 0;  ///< where the next packet should begin; beyond m_end when not all before it is read
    std::size_t m_end = 0; ///< end of the bytes in the buffer
    bool m_inputEnded = false;
    bool m_synchronised = false;
    std::size_t m_spacing = 0;
    std::size_t m_complete; ///< so many bytes make a packet with what belongs to it
    const std::uint8_t* m_trailer = nullptr;
    std::uint64_t m_packets = 0;
    std::optional<Arrival> m_arrival;
    std::uint64_t m_dropped = 0; ///< bytes of the input before those in the buffer
    std::uint64_t m_offset = 0;
    std::uint64_t m_skipped = 0;
    std::uint64_t m_toldSkipped = 0;
    std::optional<Position> m_firstSkipped;
    std::size_t m_cutOff = 0;
};

} // namespace inspect
