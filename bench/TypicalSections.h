#pragma once

#include "support/Bytes.h"

#include <vector>

/// One section of a table with every entry, descriptor and item that the library knows in it.
struct TypicalSection {
    const char* table;
    ByteVector bytes;
    /// Parses the section, descriptors included, and destroys the table. @return whether it was sound.
    bool (*parseAndDestroy)(QUOR_U8* data, QUOR_U32 size);
};

/// The section of each of the eight tables.
std::vector<TypicalSection> typicalSections();
