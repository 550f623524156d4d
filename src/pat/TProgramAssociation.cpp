#include "pat/TProgramAssociation.h"

namespace Quor {

TProgramAssociation::TProgramAssociation(QUOR_U16 programNumber, QUOR_U16 programMapPid)
    : m_iProgramNumber(programNumber), m_iProgramMapPid(programMapPid) {}

TProgramAssociation::~TProgramAssociation() = default;

} // namespace Quor
