#pragma once

#include "packets/Pid.h"
#include "packets/Position.h"
#include "sections/Bits.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>

namespace inspect {

struct FreeMemory {
    void operator()(std::uint8_t* bytes) const { std::free(bytes); }
};

/// What the header of most sections says behind section_length.
struct LongHeader {
    std::uint16_t extension; ///< table_id_extension: transport_stream_id, program_number, network_id, ...
    std::uint8_t version;
    bool current;
    std::uint8_t sectionNumber;
    std::uint8_t lastSectionNumber;
};

/// One section, from table_id to its last byte.
class Section {
public:
    using Memory = std::unique_ptr<std::uint8_t[], FreeMemory>;

    /// A complete section out of packets.
    /// @param bytes the section as section_length measures it; at least its first three bytes. Allocated by malloc.
    Section(Pid pid, Memory bytes, const Position& position);

    /// A section that did not come in packets.
    /// @param data as much of it as there is, at least one byte
    Section(const std::uint8_t* data, std::size_t size, const Position& position);

    /// Nothing for a section that did not come in packets.
    std::optional<Pid> pid() const { return m_pid; }
    std::uint8_t tableId() const { return m_bytes[0]; }
    std::uint8_t* data() const { return m_bytes.get(); }
    std::size_t size() const { return m_size; }
    const Position& position() const { return m_position; }

    /// Nothing for sections with the short header.
    std::optional<LongHeader> longHeader() const;

    /// What stands between the long header and the CRC_32.
    Bits body() const;

    /// Whether it has as many bytes as section_length says.
    bool complete() const;

    /// Whether the section is complete and ends with the right CRC_32, or is of a kind that has none.
    bool sound() const { return m_sound; }

    /// A hash of all bytes, which tells different sections apart.
    std::uint32_t fingerprint() const;

private:
    bool isLong() const;
    bool hasCrc() const;
    bool checkBytes() const;

    std::optional<Pid> m_pid;
    Memory m_bytes;
    std::size_t m_size;
    Position m_position;
    bool m_sound;
};

} // namespace inspect
