#include "describing/JapaneseText.h"

#include "describing/Charset.h"

#include <gtest/gtest.h>
#include <random>

namespace {

using namespace inspect;

std::string shownInJapan(std::string_view raw) {
    return Charset("japan").decode(raw).text;
}

TEST(JapaneseText, HasKanjiKanaAndLetters) {
    EXPECT_EQ(shownInJapan("\x0ENHK\x0F\x41\x6D\x39\x67\x0E\x31"), "NHK総合1");
    EXPECT_EQ(shownInJapan("\xC6\xEC\xD3"), "てれび");
    EXPECT_EQ(shownInJapan("\x1B|\xC6\xEC\xD3"), "テレビ");
    EXPECT_EQ(shownInJapan(""), "");
}

TEST(JapaneseText, HasTheSymbolsOfBroadcasts) {
    EXPECT_EQ(shownInJapan("\x1B$;\x7A\x50\x0E\x41"), "🅊A");
}

TEST(JapaneseText, LosesSizes) {
    EXPECT_EQ(shownInJapan("\x89\x0ETV\x8A\x0F\x41\x6D"), "TV総");
}

TEST(JapaneseText, HasUsualBlanksAndDoubledBackslashes) {
    EXPECT_EQ(shownInJapan("\x0E\x41 B"), "A B");
    EXPECT_EQ(shownInJapan("\x0F\x21\x21\x21\x40"), " \\\\");
}

TEST(JapaneseText, BeginsAfreshEachTime) {
    const Charset japan("japan");
    EXPECT_EQ(japan.decode("\x0ENHK").text, "NHK");
    EXPECT_EQ(japan.decode("\x41\x6D").text, "総");
}

/// Shifts, designations and controls that are cut off, and anything between them.
TEST(JapaneseText, IsMadeOfAnyBytes) {
    constexpr std::string_view CODES =
        "\x0E\x0F\x19\x1D\x1B\x1B$()*+ p|}~no;AB\x4A\x30\x31\x95\x4F\x9B\x9D\x90\x88\x8B\x60\x16\x1C\xA0\xFF\x7F";
    const Charset japan("japan");
    const Conversion utf8("UTF-8");
    std::mt19937 random(24);
    for (int count = 0; count < 20000; ++count) {
        std::string raw(random() % 40, ' ');
        for (char& each : raw) {
            each = random() % 2 == 0 ? CODES[random() % CODES.size()] : static_cast<char>(random());
        }
        EXPECT_TRUE(utf8.shownWhole(japan.decode(raw).text)) << testing::PrintToString(raw);
    }
}

/// The longest name fills the room that it gets.
TEST(JapaneseText, MayBeLong) {
    std::string expected;
    std::string raw;
    for (int count = 0; count < 5000; ++count) {
        raw += "\xC6";
        expected += "て";
    }
    EXPECT_EQ(shownInJapan(raw), expected);
}

} // namespace
