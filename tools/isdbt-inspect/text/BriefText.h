#pragma once

#include "describing/Field.h"
#include "text/Page.h"

#include <string>
#include <vector>

namespace inspect {

/// A value as briefly as a person wants it: "H.264 video (0x1B)", "587.142857 MHz". What is nested stands in braces.
std::string briefText(const Field& field, const Style& style);

/// Fields in one line, each behind its name, in pieces that had better stay together. The elements of a list are pieces
/// of their own.
std::vector<std::string> briefPieces(const Fields& fields, const Style& style);

} // namespace inspect
