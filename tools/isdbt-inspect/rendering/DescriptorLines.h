#pragma once

#include "describing/Field.h"
#include "rendering/Page.h"

namespace inspect {

/// Appends the descriptors of a rejected section, loop by loop: where each stands, its tag, name, length and bytes.
/// Those that the library refuses are marked.
/// @param loops as describeDescriptors() gives them
void appendDescriptorLines(Page& page, const Fields& loops, std::size_t indent);

} // namespace inspect
