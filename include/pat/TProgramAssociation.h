#ifndef QUOR_TPROGRAM_ASSOCIATION_H
#define QUOR_TPROGRAM_ASSOCIATION_H

#include "QuorDefs.h"
#include "TISDBTMemory.h"

namespace Quor {

/// One entry of the program association table: a service and the PID of its program map table.
class QUOR_ISDBT_API TProgramAssociation : public TISDBTMemory {
public:
    /// @param programNumber program_number, the service_id of the service.
    /// @param programMapPid program_map_PID, 13 bits.
    TProgramAssociation(QUOR_U16 programNumber, QUOR_U16 programMapPid)
        : m_iProgramNumber(programNumber), m_iProgramMapPid(programMapPid) {}
    virtual ~TProgramAssociation();

    /// program_number, the service_id of the service.
    QUOR_U16 getProgramNumber() const { return m_iProgramNumber; }

    /// program_map_PID, 13 bits: where the sections of the service's program map table are.
    QUOR_U16 getProgramMapPid() const { return m_iProgramMapPid; }

private:
    QUOR_U16 m_iProgramNumber;
    QUOR_U16 m_iProgramMapPid;
};

} // namespace Quor

#endif
