#ifndef QUOR_EXAMPLES_UPDATE_H
#define QUOR_EXAMPLES_UPDATE_H

#include "TISDBTTable.h"

#include <cstdio>
#include <memory>

/// Parses a section, and puts a new version of the table in the place of the newest one so far, which is deleted.
/// @return whether there was a new version. What was taken from the old one is not valid any more.
template <class Table> bool update(std::unique_ptr<Table>& newest, QUOR_U8* section, QUOR_U32 length) {
    QUOR_U16 error = Quor::TISDBTTable::ERROR_OK;
    std::unique_ptr<Table> table(Table::parse(section, length, 0, 0, &error, newest.get()));
    if (!table) {
        // Sections are repeated several times a second, so that most of them bring nothing new.
        if (error != Quor::TISDBTTable::ERROR_TABLE_NOT_UPDATED) {
            std::fprintf(stderr, "section rejected with 0x%04X\n", unsigned{error});
        }
        return false;
    }
    newest = std::move(table);
    return true;
}

#endif
