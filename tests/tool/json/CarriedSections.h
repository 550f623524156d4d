#pragma once

#include "support/Bytes.h"

#include <vector>

/// A section out of packets, found without the tool.
struct CarriedSection {
    unsigned pid;
    std::size_t packet; ///< that completed it, from 1
    ByteVector bytes;
};

/// The sections on a PID of a stream without faults.
std::vector<CarriedSection> sectionsOn(unsigned pid, const ByteVector& stream);

/// A stream with the sections on one PID, each from a packet of its own on.
ByteVector streamOf(unsigned pid, const std::vector<ByteVector>& sections);
