#pragma once

#include "support/Parse.h"
#include "support/Recordings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// What a recorded section comes to: the table as text and the lines that its parse logs, or why it is rejected.
struct Pin {
    std::string file;
    std::string table; ///< empty when there is none
    Lines lines;
    QUOR_U16 error = Quor::TISDBTTable::ERROR_OK;
};

/// The lines about unknown descriptors of these tags.
inline Lines unknown(const std::string& place, const std::string& tags) {
    Lines lines;
    for (std::size_t at = 0; at < tags.size(); at += 3) {
        lines.push_back("ISDBTUtils: " + place + "::parse: Unknown descriptor: 0x" + tags.substr(at, 2) + ". Ignored!");
    }
    return lines;
}

inline Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// Parses every recorded section of a table_id; the pins stand in the order of the index. @param show a table as text
template <class Table, class Show> void expectPins(QUOR_U8 tableId, const std::vector<Pin>& pins, Show show) {
    const std::vector<RecordedSection> sections = recordedSections(tableId);
    ASSERT_EQ(sections.size(), pins.size());
    for (std::size_t i = 0; i < pins.size(); ++i) {
        const Pin& pin = pins[i];
        SCOPED_TRACE(sections[i].place);
        EXPECT_EQ(sections[i].place.substr(0, pin.file.size()), pin.file);
        const auto parsed = parseSection<Table>(sections[i].bytes);
        EXPECT_EQ(parsed.error, pin.error);
        EXPECT_EQ(parsed.lines, pin.lines);
        EXPECT_EQ(parsed.object == nullptr ? "" : "\n" + show(*parsed.object), pin.table);
    }
}
