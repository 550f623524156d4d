#pragma once

#include "arranging/Components.h"

namespace inspect {

/// An AIT with its applications, and why they may not start.
/// @param components of the service that the AIT belongs to; null when its PMT is not known
Node applicationTableNode(const Table& ait, const Components* components);

} // namespace inspect
