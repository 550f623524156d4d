#pragma once

#include "support/Bytes.h"

#include <string>
#include <vector>

/// What a stream says of its applications, from the PMT to their files: a line for each thing that is there, as often
/// as it may come.
std::vector<std::string> chainOf(const ByteVector& stream);
