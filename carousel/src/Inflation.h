#pragma once

#include "dsmcc/Bytes.h"

namespace dsmcc {

/// Inflates a module (RFC 1950), and never to more than the announced size. Throws Refused.
Bytes inflated(ByteView bytes, std::uint32_t originalSize);

} // namespace dsmcc
