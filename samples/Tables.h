#pragma once

#include "Wire.h"

/// The tables of the sample, one function each: complete sections.
namespace sample {

/// Program association table: both services and the PID of the network information table.
Bytes pat();

/// Time offset table: a Sunday evening, and the time zones of Brazil.
/// @param second seconds since the sample began, 0 to 59.
Bytes tot(unsigned second);

} // namespace sample
