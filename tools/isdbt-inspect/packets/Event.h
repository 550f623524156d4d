#pragma once

#include "packets/Pid.h"
#include "packets/Position.h"

#include <vector>

namespace inspect {

/// What can happen among the packets of a stream.
enum class EventKind {
    BytesSkipped,       ///< bytes that are no packets; amount: how many
    SyncByteError,      ///< a packet, which was dropped, with another first byte than the sync byte
    SyncLost,           ///< so many wrong sync bytes that packets had to be looked for again
    Discontinuity,      ///< wrong continuity_counter; amount: packets that are missing at least
    DiscontinuityKnown, ///< the same, announced by discontinuity_indicator
    TransportError,     ///< transport_error_indicator
    Scrambled,          ///< the first scrambled packet of a PID, or of a PID that was clear before
    PcrInterval,        ///< a PCR followed another; amount: seconds between them by their values
    PcrJump,            ///< a PCR that does not follow from the one before; from, to: their values in seconds
    PcrSplice,          ///< the same, announced by discontinuity_indicator
    PcrFrozen,          ///< a PCR comes with the same value for the third time
    PcrCeased,          ///< the PID that the clock followed has no PCR any more; amount: seconds since the last one
    PtsInterval,        ///< a PTS of video or audio followed another; amount: seconds between them by stream time
    Loss,               ///< packets of many PIDs are missing at once, and the time that they took; amount: seconds
    Pause,              ///< nothing came for a while, then the PCRs went on where they were; amount: seconds
    SlowClock,          ///< the clock falls behind the arrival; from: in so many seconds; amount: by this part of them
    NewStream,          ///< all is new: another source, or a file that begins again
    Looped              ///< the stream began again; amount: seconds that it is long
};

/// Something that happened, or was measured, at one moment.
struct Event {
    EventKind kind;
    std::optional<Pid> pid;
    Position at;
    double amount = 0; ///< as the kind says
    double from = 0;
    double to = 0;
    std::uint64_t before = 0; ///< of a Discontinuity: number of the packet of this PID before
};

/// What happened since somebody looked.
using Events = std::vector<Event>;

} // namespace inspect
