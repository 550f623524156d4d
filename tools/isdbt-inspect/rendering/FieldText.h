#pragma once

#include "describing/Field.h"

#include <string>

namespace inspect {

/// Appends fields as indented lines, one field a line; lists of like objects become tables.
void appendFields(std::string& text, const std::vector<Field>& fields, std::size_t indent);

/// Appends bytes in hexadecimal, sixteen a line, with the offset of each line.
void appendDump(std::string& text, const std::vector<std::uint8_t>& bytes, std::size_t indent);

} // namespace inspect
