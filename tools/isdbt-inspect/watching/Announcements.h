#pragma once

#include "sections/Place.h"
#include "sections/Section.h"

#include <map>
#include <set>
#include <string_view>
#include <vector>

namespace inspect {

/// What the tables of a stream say that it carries, as they stand on the wire: whether or not a receiver takes them.
class Announcements {
public:
    struct Program {
        std::uint16_t number;
        Pid pid; ///< of its PMT

        /// A PMT for receivers of one segment.
        bool isOneSeg() const { return pid >= 0x1FC8 && pid <= 0x1FCF; }
        bool operator<(const Program& other) const { return std::tie(number, pid) < std::tie(other.number, other.pid); }
        bool operator==(const Program& other) const { return number == other.number && pid == other.pid; }
    };

    struct Component {
        Pid pid;
        bool isVideoOrAudio;
        bool isStill; ///< pictures that stay as long as they like

        bool operator==(const Component& other) const {
            return pid == other.pid && isVideoOrAudio == other.isVideoOrAudio && isStill == other.isStill;
        }
    };

    struct ProgramMap {
        Pid clock; ///< PID of its PCRs
        std::vector<Component> components;
        std::vector<Pid> keys; ///< PIDs of conditional access

        bool operator==(const ProgramMap& other) const {
            return clock == other.clock && components == other.components && keys == other.keys;
        }
    };

    /// Learns from a sound section of any table.
    /// @return whether programs, what they consist of, or services of another kind are not those of before
    bool learn(const Section& section);

    const std::set<Program>& programs() const { return m_programs; }

    /// The PMTs that came of them.
    const std::map<Program, ProgramMap>& maps() const { return m_maps; }

    /// Services for receivers themselves, for downloads.
    bool isEngineering(std::uint16_t program) const { return m_engineering.count(program) != 0; }

    bool knowsServices() const { return m_knowsServices; } ///< by an SDT
    bool knowsKeys() const { return m_knowsKeys; }         ///< by a CAT

    /// Whether any table says what is on a PID.
    bool names(Pid pid) const { return m_named[pid]; }

    /// Whether a PMT says that of a PID.
    bool isVideoOrAudio(Pid pid) const { return m_videoAndAudio[pid]; }

    /// Whether one says that it is of still pictures.
    bool isStill(Pid pid) const { return m_still[pid]; }

    bool isMapOrPat(Pid pid) const { return pid == 0x0000 || m_mapPids[pid]; }

private:
    bool learnPrograms(const Section& section, const LongHeader& header);
    bool learnMap(const Section& section, const LongHeader& header);
    bool learnServices(const Section& section);
    void combine();

    std::map<Place, std::vector<Program>> m_ofPat; ///< by section
    std::set<Program> m_programs;
    std::map<Program, ProgramMap> m_maps;
    std::set<std::uint16_t> m_engineering;
    std::set<Pid> m_managers; ///< PIDs that the CAT names
    bool m_knowsServices = false;
    bool m_knowsKeys = false;
    PidSet m_mapPids;
    PidSet m_named;
    PidSet m_videoAndAudio;
    PidSet m_still;
};

/// The cycles that a BIT declares for tables, by their checks, in seconds.
std::map<std::string_view, double> cyclesIn(const Section& bit);

} // namespace inspect
