#pragma once

#include "support/Bytes.h"

#include <vector>

/// Sections that between them have every field in every form that it takes: full ones, empty ones, some with
/// descriptors that the library leaves out, and some with the variants of a descriptor.
std::vector<ByteVector> exampleSections();
