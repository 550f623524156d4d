#pragma once

#include "Wire.h"

namespace sample {

/// The stream that is kept beside its program: two seconds of the multiplex.
Bytes shortSample();

} // namespace sample
