#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"
#include "multiplex/Components.h"

namespace inspect {

/// An AIT with its applications.
/// @param components of the service that the AIT belongs to; null when its PMT is not known
Node applicationTableNode(const Table& ait, const Components* components, const Faults& faults);

} // namespace inspect
