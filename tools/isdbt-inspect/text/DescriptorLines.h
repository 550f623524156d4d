#pragma once

#include "arranging/Outline.h"
#include "describing/OnWire.h"
#include "text/Page.h"

namespace inspect {

/// Appends one descriptor: where it stands, its tag, name, length and, unless in brief, bytes. What the library
/// refuses, or what does not fit, is marked.
void appendDescriptorLine(Page& page, const DescriptorOnWire& descriptor, std::size_t indent,
                          Extent extent = Extent::Full);

/// Appends the descriptors of a rejected section, loop by loop.
void appendDescriptorLines(Page& page, const std::vector<LoopOnWire>& loops, std::size_t indent);

} // namespace inspect
