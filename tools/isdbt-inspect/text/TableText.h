#pragma once

#include "describing/Field.h"
#include "text/Page.h"

namespace inspect {

/// Appends a list as a table, a line for each element below a line with the names of their fields.
/// @return whether it did: the elements must be objects of the same fields, none of them nested, and the lines must not
///         become too long
bool appendTable(Page& page, const List& list, std::size_t indent);

} // namespace inspect
