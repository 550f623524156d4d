#include "descriptors/TApplicationNameDescriptor.h"

#include "descriptors/TApplicationNameDescriptorItem.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Item = Quor::TApplicationNameDescriptorItem;
using Quor::TApplicationNameDescriptor;
using Quor::TISDBTTable;

EXPECT_GETTER(std::list<std::string>*, TApplicationNameDescriptor, getLanguageCodes);

namespace {

/// ISO_639_language_code, application_name_length, name
ByteVector named(const std::string& code, const std::string& name) {
    return join({text(code), {static_cast<QUOR_U8>(name.size())}, text(name)});
}

} // namespace

TEST(TApplicationNameDescriptor, StartsEmpty) {
    const TApplicationNameDescriptor alone;
    EXPECT_EQ(alone.getDescriptorTag(), 0x01);
    EXPECT_EQ(alone.getData(), nullptr);
    EXPECT_EQ(alone.getDataLength(), 0U);
    EXPECT_EQ(alone.size(), 0U);
    EXPECT_TRUE(taken(alone.getLanguageCodes()).empty());

    const HeapBytes bytes(descriptor(0x01, named("por", "Jogos")));
    const TApplicationNameDescriptor overBytes(bytes.data(), bytes.size());
    EXPECT_EQ(overBytes.getDescriptorTag(), 0x01);
    EXPECT_EQ(overBytes.getData(), bytes.data());
    EXPECT_EQ(overBytes.getDataLength(), 11U);
    EXPECT_EQ(overBytes.size(), 0U);
}

TEST(TApplicationNameDescriptor, ListsLanguagesInOrder) {
    // The length told is that of the last name alone.
    const auto parsed = expectDescriptor<TApplicationNameDescriptor>(
        descriptor(0x01, join({named("por", "Jogos"), named("eng", "Games!!")})), 11);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(taken(parsed->getLanguageCodes()), (std::vector<std::string>{"eng", "por"}));
    ASSERT_NE(parsed->get("por"), nullptr);
    EXPECT_EQ(parsed->get("por")->getLanguageCode(), "por");
    EXPECT_EQ(parsed->get("por")->getName(), "Jogos");
    EXPECT_EQ(parsed->get("eng")->getName(), "Games!!");
    EXPECT_EQ(parsed->get("spa"), nullptr);
    EXPECT_EQ(parsed->get(""), nullptr);
}

TEST(TApplicationNameDescriptor, LastNameOfALanguageWins) {
    const auto parsed = expectDescriptor<TApplicationNameDescriptor>(
        descriptor(0x01, join({named("por", "first"), named("por", "then")})), 8);
    EXPECT_EQ(parsed->size(), 1U);
    EXPECT_EQ(parsed->get("por")->getName(), "then");
}

TEST(TApplicationNameDescriptor, AnEmptyNameIsEnough) {
    const auto parsed = expectDescriptor<TApplicationNameDescriptor>(descriptor(0x01, named("por", "")), 4);
    EXPECT_EQ(parsed->get("por")->getName(), "");
}

TEST(TApplicationNameDescriptor, LanguageCodesAreKeptAsReceived) {
    const auto parsed = expectDescriptor<TApplicationNameDescriptor>(hex("01 0A  707F72 01 41  700072 01 42"), 5);
    EXPECT_EQ(taken(parsed->getLanguageCodes()), (std::vector<std::string>{std::string("p\0r", 3), "p\x7Fr"}));
    EXPECT_EQ(parsed->get(std::string("p\0r", 3))->getName(), "B");
}

TEST(TApplicationNameDescriptor, AnItemThatIsCutOffFails) {
    for (unsigned size = 1; size < 4; ++size) {
        expectFailure<TApplicationNameDescriptor>(
            descriptor(0x01, join({named("por", "Jogos"), fill(size, 0x00)})),
            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
            {"ISDBTUtils: TApplicationNameDescriptorItem::parse: Item length not valid: " + std::to_string(size) +
                 ". Aborting!",
             "ISDBTUtils: TApplicationNameDescriptor::parse: Invalid item. Aborting!"});
    }
}

TEST(TApplicationNameDescriptor, ANameThatDoesNotFitFails) {
    expectFailure<TApplicationNameDescriptor>(
        descriptor(0x01, join({named("eng", "Games"), text("por"), hex("06"), text("Jogos")})),
        TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 6 > 5.Aborting!",
         "ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!",
         "ISDBTUtils: TApplicationNameDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TApplicationNameDescriptor, ItemsRunToTheEndOfTheCallersLength) {
    const auto parsed =
        expectDescriptor<TApplicationNameDescriptor>(join({hex("01 05"), named("por", "J"), named("eng", "Games")}), 9);
    EXPECT_EQ(parsed->size(), 2U);
    expectFailure<TApplicationNameDescriptor>(
        join({hex("01 05"), named("por", "J"), hex("00")}), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TApplicationNameDescriptorItem::parse: Item length not valid: 1. Aborting!",
         "ISDBTUtils: TApplicationNameDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TApplicationNameDescriptor, ANameWhoseLengthComesToNothingFails) {
    expectFailure<TApplicationNameDescriptor>(
        join({hex("01 04"), named("por", std::string(252, 'n'))}), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!",
         "ISDBTUtils: TApplicationNameDescriptor::parse: Invalid item. Aborting!"});
}

TEST(TApplicationNameDescriptor, BehindALongNameTheItemsGoOnAfterItsLengthInEightBits) {
    // 255 bytes of name count 3 in all: the next code is the length byte and two bytes of the name, and so on.
    const ByteVector name = join({hex("4142  64"), fill(100, 'x'), text("eng"), hex("94"), fill(148, 'y')});
    ASSERT_EQ(name.size(), 255U);
    const auto parsed =
        expectDescriptor<TApplicationNameDescriptor>(join({hex("01 04"), text("por"), hex("FF"), name}), 152);
    EXPECT_EQ(taken(parsed->getLanguageCodes()), (std::vector<std::string>{"eng", "por",
                                                                           "\xFF"
                                                                           "AB"}));
    EXPECT_EQ(parsed->get("por")->getName(), std::string(name.begin(), name.end()));
    EXPECT_EQ(parsed
                  ->get("\xFF"
                        "AB")
                  ->getName(),
              std::string(100, 'x'));
    EXPECT_EQ(parsed->get("eng")->getName(), std::string(148, 'y'));
}

TEST(TApplicationNameDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TApplicationNameDescriptor> copy;
    {
        const auto parsed = parseBytes<TApplicationNameDescriptor>(
            descriptor(0x01, join({named("por", "Jogos"), named("eng", "Games")})));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TApplicationNameDescriptor>(parsed.object.get());
        EXPECT_NE(copy->get("por"), parsed->get("por"));
        EXPECT_TRUE(parsed->remove("eng"));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x01);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(taken(copy->getLanguageCodes()), (std::vector<std::string>{"eng", "por"}));
    EXPECT_EQ(copy->get("por")->getName(), "Jogos");
    EXPECT_EQ(copy->get("eng")->getName(), "Games");
}

TEST(TApplicationNameDescriptor, ACopyOfAnEmptyOneIsEmpty) {
    TApplicationNameDescriptor source;
    const TApplicationNameDescriptor copy(&source);
    EXPECT_EQ(copy.size(), 0U);
}

TEST(TApplicationNameDescriptor, DamageIsSurvived) {
    const ByteVector good = descriptor(0x01, join({named("por", "Jogos"), named("eng", "Games")}));
    expectEveryPrefixSurvives<TApplicationNameDescriptor>(good);
    expectEveryByteChangeSurvives<TApplicationNameDescriptor>(good);
}
