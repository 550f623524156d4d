#pragma once

#include "support/Bytes.h"

/// The sections of a PID in transport packets, some of which may be missing.
std::vector<ByteVector> sectionsOf(const ByteVector& stream, unsigned pid);

/// The packets of a section, which has them to itself.
/// @param continuity counts the packets of the PID
std::vector<ByteVector> packetsOf(const ByteVector& section, unsigned pid, unsigned& continuity);
