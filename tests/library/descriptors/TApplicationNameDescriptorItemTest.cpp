#include "descriptors/TApplicationNameDescriptorItem.h"

#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Item = Quor::TApplicationNameDescriptorItem;
using Quor::TISDBTTable;

static_assert(std::has_virtual_destructor<Item>::value, "receivers delete items through their own subclasses");

EXPECT_GETTER(std::string, Item, getLanguageCode);
EXPECT_GETTER(std::string, Item, getName);

namespace {

/// ISO_639_language_code, application_name_length, name
ByteVector named(const std::string& code, const std::string& name) {
    return join({text(code), {static_cast<QUOR_U8>(name.size())}, text(name)});
}

} // namespace

TEST(TApplicationNameDescriptorItem, StartsEmpty) {
    const Item item;
    EXPECT_EQ(item.getLanguageCode(), "");
    EXPECT_EQ(item.getName(), "");
}

TEST(TApplicationNameDescriptorItem, IsMadeOfALanguageCodeAndAName) {
    const Item item("por", "Jogos");
    EXPECT_EQ(item.getLanguageCode(), "por");
    EXPECT_EQ(item.getName(), "Jogos");
}

TEST(TApplicationNameDescriptorItem, ShowsLanguageCodeAndName) {
    const auto parsed = expectSuccess<Item>(named("por", "Jogos"), 9);
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getName(), "Jogos");
}

TEST(TApplicationNameDescriptorItem, ANameMayBeEmpty) {
    const auto parsed = expectSuccess<Item>(named("por", ""), 4);
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getName(), "");
}

TEST(TApplicationNameDescriptorItem, CharactersAreKeptAsReceived) {
    const auto parsed = expectSuccess<Item>(hex("70 00 FF  04  41 00 E7 42"), 8);
    EXPECT_EQ(parsed->getLanguageCode(), std::string("p\0\xFF", 3));
    EXPECT_EQ(parsed->getName(), std::string("A\0\xE7"
                                             "B",
                                             4));
}

TEST(TApplicationNameDescriptorItem, LeavesTheBytesBehindIt) {
    const auto parsed = expectSuccess<Item>(join({named("por", "TV"), named("eng", "TV guide")}), 6);
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getName(), "TV");
}

TEST(TApplicationNameDescriptorItem, LessThanFourBytesFail) {
    for (unsigned size = 0; size < 4; ++size) {
        expectFailure<Item>(fill(size, 0x00), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                            {"ISDBTUtils: TApplicationNameDescriptorItem::parse: Item length not valid: " +
                             std::to_string(size) + ". Aborting!"});
    }
}

TEST(TApplicationNameDescriptorItem, ANameThatDoesNotFitFails) {
    expectFailure<Item>(
        join({text("por"), hex("05"), text("Jogo")}), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 5 > 4.Aborting!",
         "ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!"});
    expectFailure<Item>(
        join({text("por"), hex("01")}), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 1 > 0.Aborting!",
         "ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!"});
}

TEST(TApplicationNameDescriptorItem, ParsedLengthIsKeptInEightBits) {
    struct Case {
        std::size_t name;
        QUOR_U32 parsedLength;
    };
    for (const Case& each : {Case{251, 255}, Case{253, 1}, Case{254, 2}, Case{255, 3}}) {
        SCOPED_TRACE(each.name);
        const auto parsed = expectSuccess<Item>(named("por", std::string(each.name, 'n')), each.parsedLength);
        EXPECT_EQ(parsed->getName(), std::string(each.name, 'n'));
    }
}

TEST(TApplicationNameDescriptorItem, ByItselfANameWhoseLengthComesToNothingIsAnItem) {
    const auto parsed = parseBytes<Item>(named("por", std::string(252, 'n')));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 0U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getName(), std::string(252, 'n'));
}

TEST(TApplicationNameDescriptorItem, ACopyHoldsTheSameStrings) {
    auto parsed = expectSuccess<Item>(named("por", "Jogos"), 9);
    const Item copy(parsed.object.get());
    parsed.object.reset();
    EXPECT_EQ(copy.getLanguageCode(), "por");
    EXPECT_EQ(copy.getName(), "Jogos");
}
