#pragma once

#include "TISDBTTable.h"
#include "support/Parse.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <vector>

/// A table class as these tests see it.
struct TableClass {
    std::string name;
    QUOR_U32 minimum; ///< fewest bytes of a section
    QUOR_U32 header;  ///< bytes up to section_length, or up to last_section_number
    ByteVector full;  ///< a section with everything that the library knows in it
    Parsed<Quor::TISDBTTable> (*parse)(const ByteVector& wire, Quor::TISDBTTable* previous);
};

void PrintTo(const TableClass& table, std::ostream* out);

std::vector<TableClass> tableClasses();

/// A loop of descriptors in a table, and the tags that the library knows in it.
struct DescriptorLoop {
    std::string name;
    ByteVector known;
    ByteVector bodiless;   ///< those that are good without a body
    bool stuffing = false; ///< whether tag 0x42 goes unmentioned
    ByteVector (*section)(const ByteVector& descriptors);
    Parsed<Quor::TISDBTTable> (*parse)(const ByteVector& wire, Quor::TISDBTTable* previous);

    bool knows(QUOR_U8 tag) const;
};

void PrintTo(const DescriptorLoop& loop, std::ostream* out);

std::vector<DescriptorLoop> descriptorLoops();

template <class Case> std::string caseName(const testing::TestParamInfo<Case>& info) {
    return info.param.name;
}

/// 0, 1, ... 255, 0, ...
ByteVector counting(std::size_t count);

/// The good bytes up to @p size.
ByteVector cut(const ByteVector& good, std::size_t size);

/// A table with ERROR_OK and descriptors that can be read, or none with one of the library's codes and a line.
void expectTakenOrRefused(const Parsed<Quor::TISDBTTable>& parsed);

/// None, with this code and a line.
void expectRefused(const Parsed<Quor::TISDBTTable>& parsed, QUOR_U16 code);
