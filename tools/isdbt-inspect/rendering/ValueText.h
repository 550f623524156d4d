#pragma once

#include "describing/Field.h"

#include <cstddef>
#include <string>

namespace inspect {

/// Lines longer than this are avoided.
constexpr std::size_t LINE_WIDTH = 100;

/// Whether a field holds others: a list or an object.
bool isNested(const Field& field);

/// What stands behind the name of a field that is not nested: "1 behind UTC", "10800 s = -03:00".
std::string valueText(const Field& field);

/// The columns that a text takes on a terminal.
std::size_t columns(const std::string& text);

/// Fills up with blanks.
std::string padded(const std::string& text, std::size_t width);

} // namespace inspect
