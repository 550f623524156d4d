#include "describing/Charset.h"

#include "describing/Describing.h"
#include "nit/TNITTable.h"
#include "tool/describing/Taken.h"

#include <gtest/gtest.h>

namespace {

using inspect::Charset;

std::string shown(const Charset& charset, std::string_view raw) {
    return charset.decode(raw).text;
}

std::string remarkOn(std::string_view raw) {
    return Charset().decode(raw).remark;
}

TEST(Charset, OfBrazilIsTheUsualOne) {
    EXPECT_EQ(shown(Charset(), "S\xE3o Paulo \xA4"), "São Paulo €");
}

TEST(Charset, IsAnyThatTheSystemKnows) {
    EXPECT_EQ(shown(Charset("ISO-8859-1"), "\xA4"), "¤");
    EXPECT_EQ(shown(Charset("UTF-8"), "São Paulo €"), "São Paulo €");
    EXPECT_EQ(shown(Charset("UTF-16BE"), std::string_view("\0T\0V", 4)), "TV");
    EXPECT_EQ(shown(Charset("EUC-JP"), "\xC5\xEC"), "東");
}

TEST(Charset, ThatDoesNotExistIsReportedByItsName) {
    try {
        const Charset charset("latin-x");
        FAIL() << "it was found";
    } catch (const inspect::UnknownCharset& error) {
        EXPECT_STREQ(error.what(), "unknown character set: latin-x");
    }
    EXPECT_THROW(Charset(""), inspect::UnknownCharset);
    EXPECT_THROW(Charset("ISO-8859-15//IGNORE"), inspect::UnknownCharset); // nothing is dropped
}

TEST(Charset, ShowsBytesThatAreNoCharactersByTheirNumber) {
    EXPECT_EQ(shown(Charset("UTF-8"), "a\xE3o"), "a\\xE3o");
    EXPECT_EQ(shown(Charset("ASCII"), "\x81\x82z"), "\\x81\\x82z");
}

TEST(Charset, ShowsACharacterThatIsCutOffByTheNumbersOfItsBytes) {
    EXPECT_EQ(shown(Charset("UTF-8"), "a\xE2\x82"), "a\\xE2\\x82");
    EXPECT_EQ(shown(Charset("UTF-16BE"), std::string_view("\0T\0", 3)), "T\\x00");
}

TEST(Charset, ShowsControlCharactersByTheirNumber) {
    const Charset latin9("ISO-8859-15");
    EXPECT_EQ(shown(latin9, std::string_view("a\x1B[2J\x7F\x81\x9F\0b", 10)), "a\\x1B[2J\\x7F\\x81\\x9F\\x00b");
    EXPECT_EQ(shown(latin9, "line\nline"), "line\\x0Aline");
    EXPECT_EQ(shown(latin9, "\xA0"), "\u00A0"); // the first character behind the controls
}

TEST(Charset, DoublesBackslashes) {
    EXPECT_EQ(shown(Charset(), "\\x81"), "\\\\x81");
}

TEST(Charset, DecodesTextsOfAnyLength) {
    EXPECT_EQ(shown(Charset(), ""), "");
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        expected += "ã";
    }
    EXPECT_EQ(shown(Charset(), std::string(1000, '\xE3')), expected);
}

TEST(Charset, StartsAfreshWithEachText) {
    const Charset shifting("ISO-2022-JP");
    EXPECT_EQ(shown(shifting, "\x1B$B\x45\x6C"), "東");
    EXPECT_EQ(shown(shifting, "El"), "El");
}

TEST(Charset, OfBrazilLeavesControlCodesOutAndSaysHowMany) {
    EXPECT_EQ(shown(Charset(), "\x05MA\xD1\x41NA"), "MAÑANA");
    EXPECT_EQ(remarkOn("\x05MA\xD1\x41NA"), "1 control code left out");
    EXPECT_EQ(remarkOn("TV\x81\x9B"), "2 control codes left out");
    EXPECT_EQ(remarkOn("TV INTEGRA\xC7\xC3O"), "");
}

TEST(Charset, OfBrazilShowsLinesBesideEachOther) {
    EXPECT_EQ(shown(Charset(), "line\rline"), "line line");
}

TEST(Charset, OfBrazilOffersWhatLooksLikeUtf8) {
    EXPECT_EQ(shown(Charset(), "S\xC3\xA3o"), "SÃ£o");
    EXPECT_EQ(remarkOn("S\xC3\xA3o"), "in UTF-8: São");
    EXPECT_EQ(remarkOn("Sao"), "");
    EXPECT_EQ(remarkOn("S\xC3\xA3o \xE3"), "");
    EXPECT_EQ(remarkOn("\xC2\x9B\\"), "in UTF-8: \\x9B\\\\"); // no control of a terminal
}

inspect::Text networkNameIn(const inspect::Fields& fields) {
    const auto& descriptor = std::get<inspect::Object>(fields.at(1).value);
    return std::get<inspect::Text>(descriptor.fields.at(1).value);
}

TEST(Description, HasTextsRawAndDecoded) {
    const auto nit = takenSection<Quor::TNITTable>(longSection(0x40, {}, hex("F005 40 03 54 E3 81  F000")));
    ASSERT_NE(nit.object, nullptr);
    const inspect::Text usual = networkNameIn(inspect::describe(*nit.object));
    EXPECT_EQ(usual.raw, "T\xE3\x81");
    EXPECT_EQ(usual.decoded, "Tã");
    EXPECT_EQ(networkNameIn(inspect::describe(*nit.object, inspect::Conventions{Charset("KOI8-R"), {}})).decoded,
              "TЦ│");
}

} // namespace
