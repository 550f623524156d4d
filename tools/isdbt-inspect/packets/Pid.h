#pragma once

#include <bitset>
#include <cstdint>

namespace inspect {

/// PIDs have 13 bits.
constexpr std::size_t PID_COUNT = 8192;

/// Packets of this PID fill up the stream and carry nothing.
constexpr std::uint16_t NULL_PID = 0x1FFF;

using Pid = std::uint16_t;
using PidSet = std::bitset<PID_COUNT>;

} // namespace inspect
