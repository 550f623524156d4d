#pragma once

#include "arranging/Tables.h"

namespace inspect {

/// Puts the tables together as one outline: networks with their transport streams, services, components and
/// applications; what no PMT names; the time; downloads.
std::vector<Node> arrange(const Tables& tables);

} // namespace inspect
