#pragma once

#include "support/Bytes.h"

#include <string>
#include <vector>

/// How a table carries descriptors and entries.
struct Shape {
    std::string name;
    QUOR_U8 tableId;

    /// A sound section with this in a loop of descriptors; null when the table has none.
    ByteVector (*withDescriptors)(const ByteVector& descriptors);

    /// A sound section with so many of the smallest entries; null when the table has none.
    ByteVector (*withEntries)(unsigned count);
    unsigned entrySize; ///< of one of them

    /// A sound section with so many entries as a broadcaster sends them.
    ByteVector (*usual)(unsigned count);
};

const std::vector<Shape>& shapes();

/// @p count times what is made of 0, 1, ...
template <class Make> ByteVector repeated(unsigned count, Make make) {
    ByteVector all;
    for (unsigned at = 0; at < count; ++at) {
        const ByteVector one = make(at);
        all.insert(all.end(), one.begin(), one.end());
    }
    return all;
}
