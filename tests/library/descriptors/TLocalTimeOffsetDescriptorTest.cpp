#include "descriptors/TLocalTimeOffsetDescriptor.h"

#include "support/Sections.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <type_traits>

using Quor::TISDBTTable;
using Descriptor = Quor::TLocalTimeOffsetDescriptor;
using Item = Quor::TLocalTimeOffsetDescriptorItem;

namespace {

/// An entry: country_code | region and polarity | local_time_offset | time_of_change | next_time_offset
ByteVector entry(const std::string& country, const std::string& region = "0C", const std::string& offset = "0300") {
    return join({text(country), hex(region), hex(offset), hex("E35A010000 0200")});
}

void expectInvalidEntry(const ByteVector& wire, int left) {
    const std::string length = "Descriptor length not valid: " + std::to_string(left) + ". Aborting!";
    expectFailure<Descriptor>(wire, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                              {"ISDBTUtils: TLocalTimeOffsetDescriptorItem::parse: " + length,
                               "ISDBTUtils: TLocalTimeOffsetDescriptor::parse: " + length});
}

} // namespace

TEST(TLocalTimeOffsetDescriptor, StartsWithoutItems) {
    const HeapBytes bytes(descriptor(0x58, entry("BRA")));
    const Descriptor empty(bytes.data(), bytes.size());
    EXPECT_EQ(empty.getDescriptorTag(), 0x58);
    EXPECT_EQ(empty.getData(), bytes.data());
    EXPECT_EQ(empty.getDataLength(), 15U);
    EXPECT_EQ(empty.size(), 0U);
    EXPECT_EQ(taken(empty.getCountryCodes()), Lines{});
    EXPECT_EQ(empty.get("BRA"), nullptr);
}

TEST(TLocalTimeOffsetDescriptor, ListsOneCountry) {
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, entry("BRA")));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 13U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getDescriptorTag(), 0x58);
    EXPECT_EQ(parsed->size(), 1U);
    ASSERT_NE(parsed->get("BRA"), nullptr);
    EXPECT_STREQ(parsed->get("BRA")->getCountryCode(), "BRA");
    EXPECT_EQ(parsed->get("BRA")->getCountryRegionID(), 3);
    EXPECT_EQ(parsed->get("BRA")->getLocalTimeOffsetPolarity(), 0);
    EXPECT_EQ(parsed->get("BRA")->getLocalTimeOffset(), 10800);
}

TEST(TLocalTimeOffsetDescriptor, ParsedLengthIsThatOfTheLastItem) {
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, join({entry("BRA"), entry("ARG")})));
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed.length, 13U);
}

TEST(TLocalTimeOffsetDescriptor, CountriesComeInAscendingOrder) {
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, join({entry("URY"), entry("BRA"), entry("ARG")})));
    EXPECT_EQ(taken(parsed->getCountryCodes()), (Lines{"ARG", "BRA", "URY"}));
}

TEST(TLocalTimeOffsetDescriptor, CountriesAreOrderedByTheirBytes) {
    const auto parsed = parseBytes<Descriptor>(
        descriptor(0x58, join({entry("\xC1RG"), entry("arg"), entry("ZZZ"), entry("BRB"), entry("BRA")})));
    EXPECT_EQ(taken(parsed->getCountryCodes()), (Lines{"BRA", "BRB", "ZZZ", "arg", "\xC1RG"}));
}

TEST(TLocalTimeOffsetDescriptor, LastRegionOfACountryWins) {
    const auto parsed =
        parseBytes<Descriptor>(descriptor(0x58, join({entry("BRA", "04", "0300"), entry("BRA", "09", "0400")})));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->size(), 1U);
    EXPECT_EQ(parsed->get("BRA")->getCountryRegionID(), 2);
    EXPECT_EQ(parsed->get("BRA")->getLocalTimeOffsetPolarity(), 1);
    EXPECT_EQ(parsed->get("BRA")->getLocalTimeOffset(), 14400);
}

TEST(TLocalTimeOffsetDescriptor, CountryCodeEndsAtAZeroByte) {
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, entry(std::string("B\0A", 3))));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(taken(parsed->getCountryCodes()), Lines{"B"});
    EXPECT_NE(parsed->get("B"), nullptr);
    EXPECT_EQ(parsed->get(std::string("B\0A", 3)), nullptr);
}

TEST(TLocalTimeOffsetDescriptor, OtherCountriesAreNotThere) {
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, entry("BRA")));
    EXPECT_EQ(parsed->get("ARG"), nullptr);
    EXPECT_EQ(parsed->get(""), nullptr);
    EXPECT_EQ(parsed->get("BR"), nullptr);
    EXPECT_FALSE(parsed->remove("ARG"));
    EXPECT_EQ(parsed->size(), 1U);
}

TEST(TLocalTimeOffsetDescriptor, DataAreTheCallersAndTwoBytesShort) {
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, entry("BRA")));
    EXPECT_EQ(parsed->getData(), parsed.bytes.data());
    EXPECT_EQ(parsed->getDataLength(), 13U);
}

TEST(TLocalTimeOffsetDescriptor, WalkTrustsTheLengthOfTheCaller) {
    // descriptor_length says one entry, the caller gave bytes for two.
    ByteVector wire = descriptor(0x58, join({entry("BRA"), entry("ARG")}));
    wire[1] = 13;
    const auto two = parseBytes<Descriptor>(wire);
    ASSERT_NE(two.object, nullptr);
    EXPECT_EQ(two->size(), 2U);
    EXPECT_EQ(two->getDataLength(), 26U);
    // Too short for an entry by its descriptor_length.
    wire = descriptor(0x58, entry("BRA"));
    wire[1] = 11;
    const auto one = parseBytes<Descriptor>(wire);
    ASSERT_NE(one.object, nullptr);
    EXPECT_EQ(one->size(), 1U);
}

TEST(TLocalTimeOffsetDescriptor, ByteBehindTheLastEntryOfTheCallerFails) {
    expectInvalidEntry(join({descriptor(0x58, entry("BRA")), hex("00")}), 1);
}

TEST(TLocalTimeOffsetDescriptor, PartialEntryFails) {
    expectInvalidEntry(descriptor(0x58, join({entry("BRA"), hex("41")})), 1);
}

TEST(TLocalTimeOffsetDescriptor, BodyOfElevenOrTwelveBytesPassesTheMinimumAndFails) {
    expectInvalidEntry(descriptor(0x58, withoutLast(entry("BRA"), 1)), 12);
    expectInvalidEntry(descriptor(0x58, withoutLast(entry("BRA"), 2)), 11);
}

TEST(TLocalTimeOffsetDescriptor, MostEntriesThatFitAreRead) {
    ByteVector body;
    for (char letter = 'A'; letter <= 'S'; ++letter) { // 19 entries, 247 bytes
        body = join({body, entry(std::string("XX") + letter)});
    }
    const auto parsed = parseBytes<Descriptor>(descriptor(0x58, body));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed->size(), 19U);
    EXPECT_NE(parsed->get("XXS"), nullptr);
    EXPECT_EQ(parsed.length, 13U);
}

TEST(TLocalTimeOffsetDescriptor, EveryPrefixSurvives) {
    expectEveryPrefixSurvives<Descriptor>(descriptor(0x58, join({entry("BRA"), entry("ARG")})));
}

TEST(TLocalTimeOffsetDescriptor, EveryByteChangeSurvives) {
    expectEveryByteChangeSurvives<Descriptor>(descriptor(0x58, join({entry("BRA"), entry("ARG")})));
}

TEST(TLocalTimeOffsetDescriptor, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&Descriptor::parse),
                                Descriptor* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::get), Item* (Descriptor::*)(std::string) const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::remove), QUOR_BOOL (Descriptor::*)(std::string)>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::add), void (Descriptor::*)(Item*)>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::size), QUOR_U32 (Descriptor::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Descriptor::getCountryCodes),
                                std::list<std::string>* (Descriptor::*)() const>();
    EXPECT_FALSE(std::is_copy_constructible<Descriptor>::value);
}
