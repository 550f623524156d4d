#pragma once

#include "describing/Field.h"
#include "text/Page.h"

namespace inspect {

/// Appends one descriptor: where it stands, its tag, name, length and bytes. What the library refuses, or what does not
/// fit, is marked.
/// @param descriptor as describeOnWire() gives it
void appendDescriptorLine(Page& page, const Field& descriptor, std::size_t indent);

/// Appends the descriptors of a rejected section, loop by loop.
/// @param loops as describeDescriptors() gives them
void appendDescriptorLines(Page& page, const Fields& loops, std::size_t indent);

} // namespace inspect
