#pragma once

#include "support/Bytes.h"

#include <string>
#include <vector>

/// The sections of a PID in a file of transport packets.
std::vector<ByteVector> sectionsOf(const std::string& file, unsigned pid);
