#include "descriptors/TParentalRatingDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TParentalRatingDescriptor;
using Quor::TParentalRatingDescriptorItem;

namespace {

Lines invalidItem(const std::string& left) {
    return {"ISDBTUtils: TParentalRatingDescriptorItem::parse: Descriptor length not valid: " + left + ". Aborting!",
            "ISDBTUtils: TParentalRatingDescriptor::parse: Invalid item. Aborting!"};
}

ByteVector rating(const std::string& country, QUOR_U8 value) {
    return join({text(country), {value}});
}

} // namespace

TEST(TParentalRatingDescriptor, StartsEmpty) {
    ByteVector bytes = hex("55 04  42 52 41 05");
    const InDirtyMemory<TParentalRatingDescriptor> descriptor(bytes.data(), QUOR_U32{6});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x55);
    EXPECT_EQ(descriptor->size(), 0U);
    EXPECT_EQ(descriptor->get(0), nullptr);
}

TEST(TParentalRatingDescriptor, PositionsHaveEightBits) {
    static_assert(std::is_same_v<decltype(&TParentalRatingDescriptor::get),
                                 TParentalRatingDescriptorItem* (TParentalRatingDescriptor::*)(QUOR_U8) const>,
                  "get");
    static_assert(
        std::is_same_v<decltype(&TParentalRatingDescriptor::remove), QUOR_BOOL (TParentalRatingDescriptor::*)(QUOR_U8)>,
        "remove");
    static_assert(std::is_same_v<decltype(&TParentalRatingDescriptor::add),
                                 void (TParentalRatingDescriptor::*)(TParentalRatingDescriptorItem*)>,
                  "add");
    EXPECT_GETTER(QUOR_U32, TParentalRatingDescriptor, size);
    const auto parsed = expectDescriptor<TParentalRatingDescriptor>(descriptor(0x55, rating("BRA", 5)), 4);
    EXPECT_NE(parsed->get(0), nullptr);
}

TEST(TParentalRatingDescriptor, AnEmptyBodyIsGood) {
    const auto parsed = expectDescriptor<TParentalRatingDescriptor>(hex("55 00"), 0);
    EXPECT_EQ(parsed->size(), 0U);
    EXPECT_EQ(parsed->get(0), nullptr);
}

TEST(TParentalRatingDescriptor, ListsTheRatingOfACountry) {
    const auto parsed = expectDescriptor<TParentalRatingDescriptor>(descriptor(0x55, rating("BRA", 0x23)), 4);
    ASSERT_EQ(parsed->size(), 1U);
    EXPECT_EQ(parsed->get(0)->getCountryCode(), "BRA");
    EXPECT_EQ(parsed->get(0)->getRating(), 0x23);
}

TEST(TParentalRatingDescriptor, RatingsOfOneCountryAreAllKept) {
    const auto parsed =
        expectDescriptor<TParentalRatingDescriptor>(descriptor(0x55, join({rating("BRA", 5), rating("BRA", 7)})), 4);
    ASSERT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed->get(0)->getCountryCode(), "BRA");
    EXPECT_EQ(parsed->get(0)->getRating(), 5);
    EXPECT_EQ(parsed->get(1)->getCountryCode(), "BRA");
    EXPECT_EQ(parsed->get(1)->getRating(), 7);
    EXPECT_EQ(parsed->get(2), nullptr);
}

TEST(TParentalRatingDescriptor, ItemsKeepWireOrder) {
    const auto parsed = expectDescriptor<TParentalRatingDescriptor>(
        descriptor(0x55, join({rating("URY", 3), rating("ARG", 2), rating("BRA", 1)})), 4);
    ASSERT_EQ(parsed->size(), 3U);
    EXPECT_EQ(parsed->get(0)->getCountryCode(), "URY");
    EXPECT_EQ(parsed->get(1)->getCountryCode(), "ARG");
    EXPECT_EQ(parsed->get(2)->getCountryCode(), "BRA");
}

TEST(TParentalRatingDescriptor, AnIncompleteItemFails) {
    expectFailure<TParentalRatingDescriptor>(descriptor(0x55, join({rating("BRA", 5), {0x42}})),
                                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem("1"));
    expectFailure<TParentalRatingDescriptor>(descriptor(0x55, join({rating("BRA", 5), text("AR")})), 2568,
                                             invalidItem("2"));
    expectFailure<TParentalRatingDescriptor>(descriptor(0x55, text("BRA")),
                                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem("3"));
}

TEST(TParentalRatingDescriptor, ItemsRunToTheEndOfTheBytesGiven) {
    EXPECT_EQ(expectDescriptor<TParentalRatingDescriptor>(join({hex("55 00"), rating("BRA", 5)}), 4)->size(), 1U);
    expectFailure<TParentalRatingDescriptor>(join({descriptor(0x55, rating("BRA", 5)), {0x00}}),
                                             TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem("1"));
}

TEST(TParentalRatingDescriptor, MoreItemsThanPositions) {
    ByteVector wire = hex("55 00");
    for (int i = 0; i < 300; ++i) {
        wire = join({wire, rating("BRA", static_cast<QUOR_U8>(i))});
    }
    const auto parsed = expectDescriptor<TParentalRatingDescriptor>(wire, 4);
    EXPECT_EQ(parsed->size(), 300U);
    EXPECT_EQ(parsed->get(255)->getRating(), 255);
}

TEST(TParentalRatingDescriptor, ItemsAreAppendedBehindThoseOfTheWire) {
    const auto parsed = parseBytes<TParentalRatingDescriptor>(descriptor(0x55, rating("BRA", 5)));
    auto* const item = new TParentalRatingDescriptorItem;
    parsed->add(item);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed->get(0)->getRating(), 5);
    EXPECT_EQ(parsed->get(1), item);
}
