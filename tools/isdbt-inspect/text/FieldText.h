#pragma once

#include "describing/Field.h"
#include "text/Page.h"

namespace inspect {

/// Appends fields as indented lines. Lists of like objects become tables; what is short stands in one line.
void appendFields(Page& page, const Fields& fields, std::size_t indent);

/// Appends bytes in hexadecimal, sixteen a line.
void appendBytes(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent);

/// The same with the offset of each line.
void appendDump(Page& page, const std::vector<std::uint8_t>& bytes, std::size_t indent);

} // namespace inspect
