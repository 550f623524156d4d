#ifndef QUOR_TSCHEDULE_INFO_H
#define QUOR_TSCHEDULE_INFO_H

#include "QuorDefs.h"
#include "QuorISDBTExport.h"

namespace Quor {

/// One slot of a download's schedule: when the software is broadcast, and for how long.
class QUOR_ISDBT_API TScheduleInfo {
public:
    /// A slot at 1970-01-01 of no duration.
    TScheduleInfo();
    virtual ~TScheduleInfo();

    /// Parses one slot of 8 bytes.
    /// @param sectionData  the slot.
    /// @param dataLength   bytes left in the schedule.
    /// @param parsedLength receives the bytes that the slot took, 8. May be null.
    /// @param errorCode    ERROR_OK or ERROR_INVALID_DATA_LENGTH. May be null.
    /// @return a new slot, which the caller deletes, or null.
    static TScheduleInfo* parse(QUOR_U8* sectionData, QUOR_U32 dataLength, QUOR_U32* parsedLength, QUOR_U16* errorCode);

    /// start_time, converted as if it were UTC: seconds since 1970-01-01 00:00:00 in 32 bits that wrap. A date before
    /// 1970-01-02 counts as 0, which leaves the time of day.
    QUOR_S32 getStartTime() const { return m_iStartTime; }

    /// duration: six BCD digits HHMMSS as they are on the wire, not converted. 1 h 30 min is 0x013000.
    QUOR_U32 getDuration() const { return m_iDuration; }

private:
    QUOR_S32 m_iStartTime;
    QUOR_U32 m_iDuration;
};

} // namespace Quor

#endif
