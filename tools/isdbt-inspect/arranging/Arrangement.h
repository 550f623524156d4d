#pragma once

#include "arranging/Outline.h"
#include "checking/Fault.h"
#include "multiplex/Multiplex.h"

namespace inspect {

/// One outline of a multiplex: networks with their transport streams, services, components and applications; what no
/// PMT names; the time; downloads.
/// @param faults shown where they are
/// @param applications of which is said that they start
/// @param carousels of which is said how much has come
std::vector<Node> arrange(const Multiplex& multiplex, const Faults& faults,
                          const std::vector<ApplicationReport>& applications = {},
                          const std::vector<CarouselPid>& carousels = {});

} // namespace inspect
