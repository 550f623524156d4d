#pragma once

#include "describing/Field.h"

#include <string>

namespace inspect {

/// Appends fields as indented lines. Lists of like objects become tables; what is short stands in one line.
void appendFields(std::string& text, const Fields& fields, std::size_t indent);

/// Appends bytes in hexadecimal, sixteen a line.
void appendBytes(std::string& text, const std::vector<std::uint8_t>& bytes, std::size_t indent);

/// The same with the offset of each line.
void appendDump(std::string& text, const std::vector<std::uint8_t>& bytes, std::size_t indent);

} // namespace inspect
