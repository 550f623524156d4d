#include "sections/Section.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

namespace {

using inspect::Section;

std::vector<std::uint8_t> bodyOf(const std::string& bytes) {
    const ByteVector section = hex(bytes);
    return Section(section.data(), section.size(), {}).body().takeAll();
}

TEST(Section, HasABodyBetweenItsHeaderAndItsCrc) {
    EXPECT_EQ(bodyOf("42 F0 0C 07 35 C1 00 00  02 E1 FF  11 22 33 44"), hex("02 E1 FF"));
    EXPECT_EQ(bodyOf("42 F0 09 07 35 C1 00 00  11 22 33 44"), hex(""));
}

TEST(Section, HasNoBodyWhereItIsTooShort) {
    EXPECT_EQ(bodyOf("42 F0 05 07 35 C1 00 00"), hex(""));
    EXPECT_EQ(bodyOf("42 F0"), hex(""));
    EXPECT_EQ(bodyOf("42"), hex(""));
}

} // namespace
