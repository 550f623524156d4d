#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"
#include "multiplex/Multiplex.h"

namespace inspect {

/// Puts the services of a transport stream together.
class ServiceNodes {
public:
    ServiceNodes(const Multiplex& multiplex, const Faults& faults) : m_multiplex(multiplex), m_faults(faults) {}

    Node serviceNode(const Service& service) const;

private:
    void appendProgramMap(Node& node, const ProgramMap& pmt) const;
    Node componentNode(const Component& component) const;
    void appendCarried(Node& node, const Component& component, const Multiplex::Claim& claim) const;

    const Multiplex& m_multiplex;
    const Faults& m_faults;
};

/// An AIT, or DSM-CC stream descriptors.
/// @param components of the service that the table belongs to; null when its PMT is not known
Node carriedNode(const Table& table, const Components* components, const Faults& faults);

} // namespace inspect
