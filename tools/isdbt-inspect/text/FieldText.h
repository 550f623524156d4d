#pragma once

#include "describing/Field.h"
#include "text/Page.h"

namespace inspect {

/// Appends fields as indented lines. Lists of like objects become tables; what is short stands in one line.
void appendFields(Page& page, const Fields& fields, std::size_t indent);

/// Appends bytes in hexadecimal, sixteen a line.
/// @param offsets whether the one of each line stands before it
void appendBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent, bool offsets = false);

} // namespace inspect
