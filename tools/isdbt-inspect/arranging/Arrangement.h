#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"
#include "multiplex/Multiplex.h"

namespace inspect {

/// One outline of a multiplex: networks with their transport streams, services, components and applications; what no
/// PMT names; the time; downloads.
/// @param faults shown where they are
std::vector<Node> arrange(const Multiplex& multiplex, const Faults& faults);

} // namespace inspect
