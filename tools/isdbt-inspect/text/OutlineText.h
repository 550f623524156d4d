#pragma once

#include "arranging/Outline.h"
#include "text/Page.h"

namespace inspect {

/// Appends the parts of a multiplex as a tree.
void appendOutline(Page& page, const std::vector<Node>& nodes, Extent extent);

} // namespace inspect
