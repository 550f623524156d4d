#pragma once

#include "support/Bytes.h"

#include <cstddef>
#include <vector>

/// A length field on the wire, and what it measures.
struct Length {
    enum class Field {
        Byte,  ///< eight bits
        Low12, ///< the lower twelve bits of two bytes
        High12 ///< the upper twelve bits of two bytes
    };

    Field field;
    std::size_t at;    ///< of the field
    std::size_t whole; ///< where the descriptor or the entry that it is the length of begins
    std::size_t begin; ///< of what it measures
    std::size_t end;

    void write(ByteVector& wire, std::size_t value) const;
};

/// The length fields of a section, outer ones before inner ones, as far as they lie in it.
std::vector<Length> lengthsOfSection(const ByteVector& wire);

/// The one of a descriptor.
std::vector<Length> lengthsOfDescriptor(const ByteVector& wire);

/// Replaces bytes, and corrects the lengths that measure them.
void splice(ByteVector& wire, const std::vector<Length>& lengths, std::size_t begin, std::size_t end,
            const ByteVector& with);
