#pragma once

#include "comparing/Comparison.h"
#include "text/Page.h"

#include <vector>

namespace inspect {

/// Appends what changed, each with a mark: + for what is new, - for what is gone, ~ for another value.
void appendChanges(Page& page, const std::vector<Change>& changes, std::size_t indent);

} // namespace inspect
