#pragma once

#include "describing/Field.h"

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

/// Where a section stands in its table.
struct Place {
    unsigned version;
    bool current;
    unsigned sectionNumber;
    unsigned lastSectionNumber;
};

/// A section that says something new.
struct SectionReport {
    std::uint16_t pid;
    std::uint8_t tableId;
    std::string tableName;
    std::uint64_t packet;       ///< number of the packet that completed it, from 1
    std::optional<Place> place; ///< for sections with the long header
    bool sameVersion;           ///< other bytes than before under the same version
    Fields fields;              ///< when it was taken
    std::optional<Rejection> rejection;
};

/// How often something was found, and on which PIDs.
struct Finding {
    std::string singular;
    std::string plural;
    std::uint64_t count;
    std::vector<std::uint16_t> pids;
};

/// What is said when the input ends.
struct Summary {
    std::uint64_t packets;
    std::size_t packetSpacing;
    std::size_t pids; ///< on which sections were looked for, and packets found
    std::uint64_t sections;
    std::uint64_t shown;
    std::uint64_t rejected;
    std::vector<Finding> damages;
    std::uint64_t skippedBytes;
};

} // namespace inspect
