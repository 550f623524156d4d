#include "describing/LatinAmericanText.h"

#include <gtest/gtest.h>

namespace {

using inspect::readLatinAmerican;

TEST(LatinAmericanText, IsOneCharacterForEachByte) {
    EXPECT_EQ(readLatinAmerican("TV INTEGRA\xC7\xC3O").characters, "TV INTEGRA\xC7\xC3O");
    EXPECT_EQ(readLatinAmerican("Est?reo").characters, "Est?reo"); // the broadcaster lost the accent
    EXPECT_EQ(readLatinAmerican("\xA0\xFF").characters, "\xA0\xFF");
    EXPECT_EQ(readLatinAmerican("TV INTEGRA\xC7\xC3O").leftOut, 0U);
}

TEST(LatinAmericanText, LosesASelectorInFrontOfIt) {
    EXPECT_EQ(readLatinAmerican("\x05MA\xD1").characters, "MA\xD1");
    EXPECT_EQ(readLatinAmerican("\x05MA\xD1").leftOut, 1U);
    EXPECT_EQ(readLatinAmerican(std::string_view("\x10\0\x0FMA", 5)).characters, "MA");
    EXPECT_EQ(readLatinAmerican("\x1F\x41MA").characters, "MA");
    EXPECT_EQ(readLatinAmerican("\x0DMA").characters, "MA");
    for (const std::string_view cut : {"\x10", "\x10\x01", "\x1F"}) {
        EXPECT_EQ(readLatinAmerican(cut).characters, "");
        EXPECT_EQ(readLatinAmerican(cut).leftOut, 1U);
    }
}

TEST(LatinAmericanText, LosesDesignationsOfSets) {
    EXPECT_EQ(readLatinAmerican("\x1B\x28\x4A\x41\x1B\x7E\x42").characters, "AB");
    EXPECT_EQ(readLatinAmerican("\x1B$)BA").characters, "A");
    EXPECT_EQ(readLatinAmerican("A\x1B").characters, "A");
    EXPECT_EQ(readLatinAmerican("A\x1B(").characters, "A");
    EXPECT_EQ(readLatinAmerican("A\x1B\xC7").characters, "A\xC7"); // no part of a designation
    EXPECT_EQ(readLatinAmerican("\x1B~A").leftOut, 0U);
}

TEST(LatinAmericanText, HasLines) {
    EXPECT_EQ(readLatinAmerican("A\rB\nC\x8A\x44").characters, "A\nB\nC\nD");
}

TEST(LatinAmericanText, LosesSizes) {
    EXPECT_EQ(readLatinAmerican("A\x88\x42\x8A\x43").characters, "ABC");
    EXPECT_EQ(readLatinAmerican("\x89\x41\x8A\x42").characters, "AB");
    EXPECT_EQ(readLatinAmerican("A\x8A\x42\x89\x43\x8A\x44").characters, "A\nBCD");
    EXPECT_EQ(readLatinAmerican("\x89\x41\x8A").leftOut, 0U);
}

TEST(LatinAmericanText, LosesControlsWithoutMeaning) {
    EXPECT_EQ(readLatinAmerican("A\x07\x7F\x80\x9F\x42").characters, "AB");
    EXPECT_EQ(readLatinAmerican("A\x07\x7F\x80\x9F\x42").leftOut, 4U);
}

TEST(LatinAmericanText, EndsBeforeItsPadding) {
    EXPECT_EQ(readLatinAmerican(std::string_view("A B \0 \0", 7)).characters, "A B");
    EXPECT_EQ(readLatinAmerican(" ").characters, "");
    EXPECT_EQ(readLatinAmerican(std::string_view("\0\0", 2)).leftOut, 0U);
    EXPECT_EQ(readLatinAmerican("").characters, "");
}

} // namespace
