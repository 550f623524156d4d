#pragma once

#include "describing/Field.h"
#include "describing/OnWire.h"
#include "reports/Alarm.h"
#include "reports/Application.h"
#include "reports/Carousel.h"
#include "sections/Place.h"
#include "traffic/PidTraffic.h"
#include "transmission/Transmission.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace inspect {

class History;

/// Why the library does not take a section, or a descriptor that came by itself.
struct Rejection {
    std::uint16_t errorCode;
    std::string errorName;
    std::vector<std::string> logLines;
    std::vector<LoopOnWire> loops;
    std::vector<std::uint8_t> section; ///< all bytes
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
    std::uint32_t fingerprint;         ///< of its bytes
    std::string otherZone{};           ///< "UTC", by which its time of day rather goes; empty unless that is known
    std::vector<std::uint8_t> bytes{}; ///< all, when they are asked for, of one that was taken
};

inline Place placeOf(const SectionReport& report) {
    return Place::of(report.pid, report.tableId, report.header);
}

/// A descriptor that came by itself.
struct DescriptorReport {
    std::uint8_t tableId; ///< of the table that it comes from
    std::string tableName;
    DescriptorOnWire onWire;    ///< its offset is that in the bytes that were given
    std::optional<Field> taken; ///< as it stands in its table, when the library takes it
    std::optional<Rejection> rejection;
};

/// What can happen to a stream on its way.
enum class Damage { CrcError, Discontinuity, SectionCutShort, MalformedPacket, TransportError, InputLoss, NoData };

/// How often something was found, and on which PIDs.
struct Finding {
    std::string singular;
    std::string plural;
    std::uint64_t count;
    std::vector<Pid> pids;
    Damage damage = Damage::InputLoss;
    std::optional<Position> first = {}; ///< nothing where that is not known
};

/// How long it took from one to the next, in seconds by the stream's clock. What was before the first and behind the
/// last is open: it may have lasted longer than the stream.
struct Intervals {
    Spread between;
    std::optional<double> before; ///< from the stream's begin to the first
    std::optional<double> after;  ///< from the last to the stream's end
};

/// The longest of them, open or not.
struct LongestInterval {
    double seconds;
    std::optional<double> from; ///< nothing when it is open there
    std::optional<double> to;
};

/// @param end of the stream, by its clock
/// @return nothing when nothing was measured
std::optional<LongestInterval> longestOf(const Intervals& intervals, std::optional<double> end);

/// What came of one table on one PID. A place in a table is a table_id_extension, a section_number and a
/// current_next_indicator; a table with the short header has one place. Counts are of all that came, repetitions
/// included, unless they are called distinct.
struct TableStatistics {
    std::uint8_t tableId;
    std::string tableName;        ///< empty for a table that the library does not understand
    std::uint64_t sections;       ///< complete ones, sound or not
    std::uint64_t distinct;       ///< sound ones that differ from the one before at their place, or are its first
    std::uint64_t versionChanges; ///< current sections with another version_number than the current one before of their
                                  ///< table_id_extension
    std::map<std::uint8_t, std::uint64_t> versions; ///< sound sections of each version_number
    std::uint64_t crcErrors;                        ///< of the sections, those that are not sound
    std::uint64_t rejected;                         ///< of the sections, those that the library did not take
    std::uint64_t rejectedDistinct;                 ///< of the distinct ones, the same

    /// From a sound section to the next at the same place, whatever they say. A section that is lost makes a long
    /// interval of two. The last of a place is only looked for as long as its table has this place.
    Intervals intervals;

    std::uint64_t bytes;           ///< of its sections
    std::optional<double> bitRate; ///< of these; nothing without a clock
};

/// What came on one PID.
struct PidStatistics {
    std::optional<Pid> pid; ///< nothing for sections that did not come in packets
    std::string
        content; ///< what the program maps call it: "H.264 video"; else what it is known for, unless tables came
    std::optional<bool> announced; ///< by a table, or by a standard; nothing where not all tables came that may do so
    PidTraffic traffic;
    double share;                        ///< of all packets, 0 to 1
    std::optional<double> bitRate;       ///< of its packets of 188 bytes; nothing without a clock
    std::vector<TableStatistics> tables; ///< by table_id
    std::optional<LayerSet> layers = {}; ///< of its packets; nothing when they do not tell
};

/// How far a range of an input goes.
struct RangeReport {
    std::uint64_t packetsBefore;   ///< of the input
    std::uint64_t packetsUntil;    ///< those of the range included
    std::optional<double> seconds; ///< that they take
    bool ended;                    ///< with the input
    bool foundFault;               ///< in all of the input; what is at fault is known when it ends
};

/// What is said when the input ends, or the range of it that is asked for.
struct Summary {
    std::uint64_t packets;     ///< 0 when the input is no packets
    std::size_t packetSpacing; ///< from one to the next, in bytes
    std::size_t pids;          ///< on which sections were looked for, and packets found
    std::uint64_t sections;
    std::uint64_t shown;
    std::uint64_t rejected;
    std::vector<Finding> damages;
    std::uint64_t skippedBytes;
    std::optional<Position> firstSkipped;  ///< with the number of the packet behind them
    std::optional<double> seconds;         ///< from the first packet to the last, as far as the stream's clock tells
    std::vector<PidStatistics> statistics; ///< by PID; when only some tables are shown, of these alone
    std::uint64_t forgotten = 0;           ///< older current sections that are not in the multiplex
    std::uint64_t notChosen = 0;           ///< sections that said something new, too, and were not to be shown
    std::optional<Transmission> transmission = {}; ///< how it is to be sent; nothing when it does not say
    std::uint64_t unknown = 0; ///< sections that did not come in packets, of tables that the library does not know
    std::set<std::uint8_t> unknownTables;    ///< their table_ids
    std::vector<Alarm> alarms = {};          ///< that began, those of a check and place as one
    std::vector<CheckResult> checks = {};    ///< of the limits that are asked for
    PidTraffic traffic{};                    ///< of all PIDs, whichever tables are shown; without rates
    std::optional<WallTime> first = {};      ///< when the stream, or its clock, began
    Position last{};                         ///< that of the last packet
    std::optional<double> bitRate = {};      ///< of all packets of 188 bytes; nothing without a clock
    PidSet gathered = {};                    ///< on which carousels were looked for
    std::vector<CarouselPid> carousels = {}; ///< by PID, where carousels are looked at
    std::vector<ApplicationReport> applications = {};
    const History* history = nullptr;      ///< what came when, where that is asked for
    std::optional<RangeReport> range = {}; ///< whose statistics these are; nothing when they are of all
};

/// How often a kind of damage was found.
std::uint64_t countOf(const Summary& summary, Damage damage);

/// "1 packet", "2 packets".
std::string counted(std::uint64_t count, std::string_view singular, std::string_view plural);

} // namespace inspect
