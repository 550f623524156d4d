#pragma once

#include "Target.h"

#include <random>

using Random = std::minstd_rand;

/// Changes a section, most of the time so that its lengths and its CRC_32 remain right.
void mutateSection(ByteVector& wire, std::size_t maxSize, Random& random);

/// Changes a fuzzer's input, a section, a descriptor or an item behind the bytes that choose the class. @return its
/// size.
std::size_t mutateInput(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed, Target::Group group);
