#ifndef QUOR_TSCHEDULE_INFO_H
#define QUOR_TSCHEDULE_INFO_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// One slot of a download's schedule: when the software is broadcast, and for how long.
class QUOR_ISDBT_API TScheduleInfo : public TISDBTMemory {
public:
    /// A slot at 1970-01-01 of no duration.
    TScheduleInfo() = default;
    virtual ~TScheduleInfo();

    /// Parses one slot of 8 bytes.
    /// @param data         the slot.
    /// @param length       bytes left in the schedule.
    /// @param parsedLength receives the bytes that the slot took, 8. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new slot, which the caller deletes, or null.
    static TScheduleInfo* parse(QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// start_time, converted as if it were UTC: seconds since 1970-01-01 00:00:00 in 32 bits that wrap. A date before
    /// 1970-01-02 counts as 0, which leaves the time of day.
    QUOR_S32 getStartTime() const { return m_iStartTime; }

    /// duration: six BCD digits HHMMSS as they are on the wire, not converted. 1 h 30 min is 0x013000.
    QUOR_U32 getDuration() const { return m_iDuration; }

private:
    friend struct detail::Access;

    detail::Outcome decode(const detail::Bytes& left);

    QUOR_S32 m_iStartTime = 0;
    QUOR_U32 m_iDuration = 0;
};

} // namespace Quor

#endif
