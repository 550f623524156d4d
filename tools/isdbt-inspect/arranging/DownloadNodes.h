#pragma once

#include "arranging/Table.h"

namespace inspect {

/// The downloads that an SDTT announces for the receivers of a model.
Node downloadNode(const Table& sdtt);

} // namespace inspect
