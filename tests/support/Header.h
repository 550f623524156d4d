#pragma once

#include "TISDBTVersionedTable.h"
#include "support/Parse.h"

#include <cstring>

/// All that a caller of a table's parseCommonHeader() sees.
struct Header {
    bool good = false;
    QUOR_U16 error = PRESET_ERROR;
    QUOR_U16 sectionLength = 0x7777;
    Lines lines;
};

/// Checks the header of a section, over an exact-size copy, in a table of the given class.
template <class Table>
Header parseHeader(Table& table, const ByteVector& wire, Quor::TISDBTTable* previous = nullptr, int checkCRC32 = 1) {
    const HeapBytes bytes(wire);
    Header header;
    const LogCapture log;
    Quor::TISDBTTable& base = table; // as every table's parse does, through the virtual slot
    header.good =
        base.parseCommonHeader(bytes.data(), bytes.size(), checkCRC32, &header.error, &header.sectionLength, previous);
    header.lines = log.lines();
    return header;
}

/// A table over nothing that accepts table_id 0x42 from @p minimum bytes on.
template <class Table> Table emptyTable(Quor::TISDBTTable::Type type, QUOR_U32 minimum = 3) {
    static QUOR_U8 nothing = 0;
    return Table(type, minimum, 0x42, &nothing, 0);
}

/// Where a virtual function stands among those of its class, counted in bytes.
template <class Function> std::ptrdiff_t slotOf(Function function) {
    std::ptrdiff_t place = 0;
    static_assert(sizeof function >= sizeof place, "a pointer to a member function begins with its place");
    std::memcpy(&place, &function, sizeof place);
    return place;
}
