#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"

namespace inspect {

/// An AIT with its applications, or DSM-CC stream descriptors.
/// @param components of the service that the table belongs to; null when its PMT is not known
/// @param applications of which is said that they start
Node carriedNode(const Table& table, const Components* components, const Faults& faults,
                 const std::vector<ApplicationReport>& applications);

/// The time of day as the stream last gave it.
Node timeNode(const Table& tot, const Faults& faults);

/// The downloads that an SDTT announces for the receivers of a model.
Node downloadNode(const Table& sdtt, const Faults& faults);

} // namespace inspect
