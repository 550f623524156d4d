#pragma once

#include "describing/Conventions.h"
#include "reports/Report.h"

namespace inspect {

/// What the library says to descriptors that came by themselves, one behind the other.
/// @param tableId of the table that they come from
std::vector<DescriptorReport> reportDescriptors(std::uint8_t tableId, const std::vector<std::uint8_t>& bytes,
                                                const Conventions& conventions);

} // namespace inspect
