#pragma once

#include "describing/Field.h"
#include "sections/Section.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace inspect {

/// Why the library does not take a section.
struct Rejection {
    std::uint16_t errorCode;
    std::string errorName;
    std::vector<std::string> logLines;
    Fields descriptors; ///< as describeDescriptors() gives them
    std::vector<std::uint8_t> section;
};

/// A section that says something new.
struct SectionReport {
    std::optional<Pid> pid; ///< nothing for a section that did not come in packets
    std::uint8_t tableId;
    std::string tableName;
    Position position;
    std::optional<LongHeader> header;
    bool sameVersion; ///< other bytes than before under the same version
    bool damaged;     ///< incomplete, or its CRC_32 is wrong
    Fields fields;    ///< when it was taken
    std::optional<Rejection> rejection;
};

/// How often something was found, and on which PIDs.
struct Finding {
    std::string singular;
    std::string plural;
    std::uint64_t count;
    std::vector<Pid> pids;
};

/// What is said when the input ends.
struct Summary {
    std::uint64_t packets;     ///< 0 when the input is no packets
    std::size_t packetSpacing; ///< from one to the next, in bytes
    std::size_t pids;          ///< on which sections were looked for, and packets found
    std::uint64_t sections;
    std::uint64_t shown;
    std::uint64_t rejected;
    std::vector<Finding> damages;
    std::uint64_t skippedBytes;
};

} // namespace inspect
