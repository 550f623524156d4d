#pragma once

#include "dsmcc/Carousel.h"
#include "dsmcc/Limits.h"

namespace dsmcc {

Tree treeOf(const Carousel& carousel, const Limits& limits);

} // namespace dsmcc
