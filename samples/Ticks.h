#pragma once

#include <cstdint>

namespace sample {

/// Of the system clock, which counts 27 MHz.
using Ticks = std::uint64_t;
constexpr Ticks SECOND = 27000000;

} // namespace sample
