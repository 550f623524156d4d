#pragma once

#include "describing/Field.h"

namespace Quor {
class TApplicationNameDescriptor;
class TPATTable;
} // namespace Quor

namespace inspect {

/// Says so when more elements of a list were sent than the library keeps.
/// @param key what it keeps one element for: "country"
Field keptOf(Field list, std::size_t sent, std::string_view key);

/// The names that were sent.
std::size_t namesIn(const Quor::TApplicationNameDescriptor& descriptor);

/// The programs that were sent.
std::size_t programsIn(const Quor::TPATTable& pat);

} // namespace inspect
