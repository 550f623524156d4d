#include "pages/KeptSections.h"

#include <gtest/gtest.h>

namespace {

inspect::Place place(std::uint16_t extension) {
    return {{0x0010, 0x40, extension}, 0};
}

} // namespace

TEST(KeptSections, AreInTheOrderInWhichTheyCame) {
    inspect::KeptSections sections(10000);
    sections.take(place(1), "a");
    sections.take(place(2), "b");
    sections.take(place(1), "c");
    EXPECT_EQ(sections.text(), "abc");
    EXPECT_EQ(sections.leftOut(), 0U);
}

/// Each takes its text and 256 bytes.
TEST(KeptSections, AreTheCurrentOnesWhereThereIsNoRoomForAll) {
    inspect::KeptSections sections(1000);
    sections.take(place(1), "a");
    for (const char* const text : {"b", "c", "d", "e"}) {
        sections.take(place(2), text);
    }
    EXPECT_EQ(sections.text(), "ade");
    EXPECT_EQ(sections.leftOut(), 2U);
}

TEST(KeptSections, AreTheLastWhereThereAreTooManyPlaces) {
    inspect::KeptSections sections(600);
    for (std::uint16_t each = 0; each < 10; ++each) {
        sections.take(place(each), std::to_string(each));
    }
    EXPECT_EQ(sections.text(), "89");
    sections.take(place(0), "0");
    EXPECT_EQ(sections.text(), "90");
    EXPECT_EQ(sections.leftOut(), 9U);
}

TEST(KeptSections, AreNoneWhereThereIsNoRoom) {
    inspect::KeptSections sections(100);
    sections.take(place(1), "a");
    EXPECT_EQ(sections.text(), "");
    EXPECT_EQ(sections.leftOut(), 1U);
}
