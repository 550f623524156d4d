#pragma once

#include "support/Bytes.h"

#include <memory>

/// What the library makes of bytes, which live as long as it: descriptors point into them.
template <class T> struct Taken {
    HeapBytes bytes;
    std::unique_ptr<T> object;
};

/// A descriptor; null when the library refuses it.
template <class Descriptor> Taken<Descriptor> takenDescriptor(const ByteVector& wire) {
    Taken<Descriptor> taken{HeapBytes(wire), nullptr};
    taken.object.reset(Descriptor::parse(taken.bytes.data(), taken.bytes.size(), nullptr, nullptr));
    return taken;
}

/// A section; null when the library refuses it.
template <class Table> Taken<Table> takenSection(const ByteVector& wire) {
    Taken<Table> taken{HeapBytes(wire), nullptr};
    taken.object.reset(Table::parse(taken.bytes.data(), taken.bytes.size(), 1, 1, nullptr, nullptr));
    return taken;
}
