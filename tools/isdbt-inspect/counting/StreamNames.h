#pragma once

#include "describing/Field.h"
#include "packets/Pid.h"

#include <map>
#include <string>

namespace inspect {

/// What the PIDs carry, as program maps say it.
class StreamNames {
public:
    /// Learns the names of the elementary streams from the fields of a program map.
    void learn(const Fields& programMap);

    /// "H.264 video"; empty for a PID that no program map names.
    std::string of(Pid pid) const;

private:
    std::map<Pid, std::string> m_names;
};

} // namespace inspect
