#pragma once

#include "checking/Fault.h"
#include "multiplex/Components.h"

namespace inspect {

/// What is wrong with a table that a component carries: an AIT, and why its applications may not start, or DSM-CC
/// stream descriptors.
/// @param components of the service that the table belongs to; null when its PMT is not known
void checkCarried(Faults& faults, const Table& table, const Components* components);

} // namespace inspect
