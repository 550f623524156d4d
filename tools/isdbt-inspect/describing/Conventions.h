#pragma once

#include "describing/Charset.h"
#include "describing/TimeZone.h"

namespace inspect {

/// How a station writes what its tables do not explain.
struct Conventions {
    Charset charset; ///< of its names and texts
    TimeZone zone;   ///< of its clock
};

} // namespace inspect
