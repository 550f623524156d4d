#pragma once

#include "descriptors/TISDBTDescriptor.h"
#include "support/Bytes.h"

#include <list>
#include <string>

/// Objects as short lines of text, through their getters alone, so that a test can pin a whole table.

/// A number in hexadecimal digits.
std::string shownHex(unsigned long value, int digits);

/// A descriptor in a line of its own, by what recorded sections carry; "??" behind the tag for any other class.
std::string shown(const Quor::TISDBTDescriptor& descriptor);

/// The descriptors that a table or an entry holds, in the order of its tags, each in a line.
template <class Holder> std::string shownDescriptors(const Holder& holder) {
    std::string text;
    const std::unique_ptr<std::list<QUOR_U8>> tags(holder.getDescriptorTags());
    for (const QUOR_U8 tag : *tags) {
        text += "  " + shown(*holder.getDescriptor(tag)) + "\n";
    }
    return text;
}

/// The fields of the long header.
template <class Table> std::string shownHeader(const Table& table) {
    return shownHex(table.getGenericDataField(), 4) + " version " + std::to_string(table.getVersion()) +
           (table.getCurrentIndicator() ? "" : " (next)") + " section " + std::to_string(table.getSectionNumber()) +
           "/" + std::to_string(table.getLastSectionNumber());
}
