#pragma once

#include "describing/Field.h"
#include "packets/Pid.h"
#include "sections/Section.h"
#include "walking/DescriptorLoops.h"

#include <map>
#include <optional>
#include <set>
#include <string>

namespace inspect {

/// What the PIDs carry, as PAT, CAT and program maps say it.
class StreamNames {
public:
    /// Learns from the fields of a PAT or a program map.
    void learn(std::uint8_t tableId, const Fields& fields);

    /// Learns where the keys of a program map or a CAT come.
    void learnKeys(const Section& section);

    /// "H.264 video"; empty for a PID that no program map names.
    std::string of(Pid pid) const;

    /// Whether a table says that the PID is in use; nothing as long as not all program maps came which may do so.
    std::optional<bool> announces(Pid pid) const;

    /// Whether packets should come on it.
    bool isExpected(Pid pid) const { return m_announced[pid]; }

    bool isProgramMap(Pid pid) const { return m_programMaps[pid]; }

private:
    void learnPrograms(const Fields& pat);
    void learnStreams(const Fields& programMap);
    void learnKeys(const RawDescriptor& descriptor, const char* name);
    void announce(std::int64_t pid);

    std::map<Pid, std::string> m_names;
    PidSet m_announced;
    PidSet m_programMaps;
    std::set<std::int64_t> m_programs;  ///< that the PAT has, by program_number
    std::set<std::int64_t> m_described; ///< whose program map came
};

} // namespace inspect
