#pragma once

#include "text/Page.h"

#include <string>
#include <vector>

namespace inspect {

/// Pieces of text in one line: set apart by two blanks, or by one behind a comma or colon.
std::string joined(const std::vector<std::string>& pieces);

/// Appends such a line. Where it has to be broken, it is broken between them if possible.
/// @param first what stands left of the line
/// @param rest what stands left of the lines on which it goes on
void appendPieces(Page& page, const std::string& first, const std::string& rest,
                  const std::vector<std::string>& pieces);

} // namespace inspect
