#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"

namespace inspect {

/// The downloads that an SDTT announces for the receivers of a model.
Node downloadNode(const Table& sdtt, const Faults& faults);

} // namespace inspect
