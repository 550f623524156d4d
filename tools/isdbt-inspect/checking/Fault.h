#pragma once

#include "multiplex/Table.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// What does not fit together in a multiplex.
enum class FaultKind {
    ChangedSilently,
    Damaged,
    Rejected,
    SectionMissing,
    TableMissing,
    TableEmpty,
    WrongPid,
    NotInNit,
    NotInPat,
    NotInSdt,
    NotInTsInformation,
    NetworksDiffer,
    TagTwice,
    PidTwice,
    PidUnannounced,
    ApplicationTableMissing,
    DescriptorMissing,
    LabelUnknown,
    CarouselMissing,
    CarouselIsNone,
};

/// How bad it is for a receiver.
enum class Severity {
    Error,  ///< something is not found, or does not start
    Warning ///< tables contradict each other, or one of them is not what it should be
};

/// Where in the stream.
struct FaultPlace {
    std::optional<Pid> pid;
    std::optional<std::uint8_t> tableId;
    std::optional<std::uint16_t> extension; ///< table_id_extension
};

struct Fault {
    FaultKind kind;
    FaultPlace place;
    std::string text;
    std::optional<Position> since; ///< of the section that shows it; nothing when none does

    Severity severity() const;

    /// "table_missing"
    std::string_view name() const;
};

/// What was found, each about a part of a multiplex.
class Faults {
public:
    /// @param part the Network, TransportStream, Service, ..., by its address
    void add(const void* part, Fault fault);

    /// The texts of those about a part.
    std::vector<std::string> of(const void* part) const;

    const std::vector<Fault>& all() const { return m_all; }

private:
    std::vector<Fault> m_all;
    std::multimap<const void*, std::size_t> m_byPart; ///< their places among all
};

} // namespace inspect
