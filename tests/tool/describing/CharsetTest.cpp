#include "describing/Charset.h"

#include "describing/Describing.h"
#include "nit/TNITTable.h"
#include "tool/describing/Taken.h"

#include <gtest/gtest.h>

namespace {

using inspect::Charset;

TEST(Charset, OfBrazilIsTheUsualOne) {
    EXPECT_EQ(Charset().decode("S\xE3o Paulo \xA4"), "São Paulo €");
}

TEST(Charset, IsAnyThatTheSystemKnows) {
    EXPECT_EQ(Charset("ISO-8859-1").decode("\xA4"), "¤");
    EXPECT_EQ(Charset("UTF-8").decode("São Paulo €"), "São Paulo €");
    EXPECT_EQ(Charset("UTF-16BE").decode(std::string_view("\0T\0V", 4)), "TV");
    EXPECT_EQ(Charset("EUC-JP").decode("\xC5\xEC"), "東");
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
    EXPECT_EQ(Charset("UTF-8").decode("a\xE3o"), "a\\xE3o");
    EXPECT_EQ(Charset("ASCII").decode("\x81\x82z"), "\\x81\\x82z");
}

TEST(Charset, ShowsACharacterThatIsCutOffByTheNumbersOfItsBytes) {
    EXPECT_EQ(Charset("UTF-8").decode("a\xE2\x82"), "a\\xE2\\x82");
    EXPECT_EQ(Charset("UTF-16BE").decode(std::string_view("\0T\0", 3)), "T\\x00");
}

TEST(Charset, ShowsControlCharactersByTheirNumber) {
    EXPECT_EQ(Charset().decode(std::string_view("a\x1B[2J\x7F\x81\x9F\0b", 10)), "a\\x1B[2J\\x7F\\x81\\x9F\\x00b");
    EXPECT_EQ(Charset().decode("line\nline"), "line\\x0Aline");
    EXPECT_EQ(Charset().decode("\xA0"), "\u00A0"); // the first character behind the controls
}

TEST(Charset, DoublesBackslashes) {
    EXPECT_EQ(Charset().decode("\\x81"), "\\\\x81");
}

TEST(Charset, DecodesTextsOfAnyLength) {
    EXPECT_EQ(Charset().decode(""), "");
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        expected += "ã";
    }
    EXPECT_EQ(Charset().decode(std::string(1000, '\xE3')), expected);
}

TEST(Charset, StartsAfreshWithEachText) {
    const Charset shifting("ISO-2022-JP");
    EXPECT_EQ(shifting.decode("\x1B$B\x45\x6C"), "東");
    EXPECT_EQ(shifting.decode("El"), "El");
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
    EXPECT_EQ(usual.decoded, "Tã\\x81");
    EXPECT_EQ(networkNameIn(inspect::describe(*nit.object, inspect::Conventions{Charset("KOI8-R"), {}})).decoded,
              "TЦ│");
}

} // namespace
