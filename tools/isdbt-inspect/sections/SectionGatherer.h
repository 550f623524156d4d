#pragma once

#include "sections/Section.h"
#include "traffic/Continuity.h"

#include <map>
#include <vector>

namespace inspect {

/// What sections came in on a PID, and what of them was damaged.
struct PidCounts {
    std::uint64_t sections = 0; ///< complete ones, sound or not
    std::uint64_t crcErrors = 0;
    std::uint64_t malformedPackets = 0; ///< adaptation field or pointer_field beyond the packet
    std::uint64_t cutShort = 0;         ///< sections that another one interrupted, or that are too long
    std::optional<Position> firstCrcError;
    std::optional<Position> firstMalformedPacket;
    std::optional<Position> firstCutShort;

    void addCrcError(const Position& at) { add(crcErrors, firstCrcError, at); }
    void addMalformedPacket(const Position& at) { add(malformedPackets, firstMalformedPacket, at); }
    void addCutShort(const Position& at) { add(cutShort, firstCutShort, at); }

private:
    static void add(std::uint64_t& count, std::optional<Position>& first, const Position& at) {
        if (count++ == 0) {
            first = at;
        }
    }
};

/// Gathers the sections of a set of PIDs from transport packets.
class SectionGatherer {
public:
    /// @param only the table_id of those that are wanted, if not all are; others are dropped without a look at their
    ///             CRC_32, which takes longer than all the rest
    explicit SectionGatherer(std::optional<std::uint8_t> only = std::nullopt) : m_only(only) {}

    /// From now on gathers these PIDs. What is begun on others is dropped; their counts stay.
    void setPids(const PidSet& pids);
    const PidSet& pids() const { return m_pids; }

    /// Takes one packet of one of the PIDs.
    /// @param packet 188 bytes.
    /// @param position of the packet in the stream.
    /// @return the sections that it completes, sound or not; valid until the next call.
    std::vector<Section>& push(const std::uint8_t* packet, const Position& position);

    const std::map<Pid, PidCounts>& counts() const { return m_counts; }

private:
    /// A section in the making.
    class Assembly {
    public:
        bool begun() const { return m_bytes != nullptr; }
        void reset();

        /// Takes bytes of the section, and begins one if none is begun.
        /// @return the section, once it is complete. @p payload then stands behind it, else at its end.
        Section::Memory feed(const std::uint8_t*& payload, std::uint8_t& length);

    private:
        void append(const std::uint8_t* bytes, std::size_t count);

        Section::Memory m_bytes;
        std::size_t m_used = 0;
        std::size_t m_room = 0;
    };

    /// What is remembered of a PID from packet to packet.
    struct Stream {
        Assembly assembly;
        Continuity continuity;
        Pid pid = NULL_PID;
    };

    /// Bytes of a packet.
    struct Payload {
        const std::uint8_t* data;
        std::uint8_t length;
    };

    void finishSection(Stream& stream, PidCounts& counts, Payload payload, const Position& position);
    void beginSections(Stream& stream, PidCounts& counts, Payload payload, const Position& position);
    void found(const Stream& stream, PidCounts& counts, Section::Memory bytes, const Position& position);

    std::optional<std::uint8_t> m_only;
    PidSet m_pids;
    std::map<Pid, Stream> m_streams;
    std::map<Pid, PidCounts> m_counts;
    std::vector<Section> m_found;
};

} // namespace inspect
