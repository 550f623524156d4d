#pragma once

#include "packets/Pid.h"

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

/// One complete section, from table_id to its last byte.
class Section {
public:
    /// @param bytes  the section as section_length measures it; at least its first three bytes. Allocated by malloc.
    /// @param packet the number of the packet that completed it, from 1.
    Section(Pid pid, std::unique_ptr<std::uint8_t[], FreeMemory> bytes, std::uint64_t packet);

    Pid pid() const { return m_pid; }
    std::uint8_t tableId() const { return m_bytes[0]; }
    std::uint8_t* data() const { return m_bytes.get(); }
    std::size_t size() const;
    std::uint64_t packet() const { return m_packet; }

    /// Nothing for sections with the short header.
    std::optional<LongHeader> longHeader() const;

    /// Whether the section ends with the right CRC_32, or is of a kind that has none.
    bool sound() const;

    /// A hash of all bytes, which tells different sections apart.
    std::uint32_t fingerprint() const;

private:
    bool isLong() const;
    bool hasCrc() const;

    Pid m_pid;
    std::unique_ptr<std::uint8_t[], FreeMemory> m_bytes;
    std::uint64_t m_packet;
};

} // namespace inspect
