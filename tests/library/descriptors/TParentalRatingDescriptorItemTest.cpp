#include "descriptors/TParentalRatingDescriptorItem.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Lifetime.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TParentalRatingDescriptorItem;

TEST(TParentalRatingDescriptorItem, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(std::string, TParentalRatingDescriptorItem, getCountryCode);
    EXPECT_GETTER(QUOR_U8, TParentalRatingDescriptorItem, getRating);
    static_assert(std::is_same_v<decltype(&TParentalRatingDescriptorItem::parse),
                                 TParentalRatingDescriptorItem* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>,
                  "parse");
    static_assert(std::has_virtual_destructor_v<TParentalRatingDescriptorItem>, "subclasses are deleted by base");
    EXPECT_NE(expectSuccess<TParentalRatingDescriptorItem>(hex("42 52 41 05"), 4).object, nullptr);
}

TEST(TParentalRatingDescriptorItem, StartsEmpty) {
    const InDirtyMemory<TParentalRatingDescriptorItem> item;
    EXPECT_EQ(item->getCountryCode(), "");
    EXPECT_EQ(item->getRating(), 0);
}

TEST(TParentalRatingDescriptorItem, HasACountryAndARating) {
    const auto parsed = expectSuccess<TParentalRatingDescriptorItem>(join({text("BRA"), hex("35")}), 4);
    EXPECT_EQ(parsed->getCountryCode(), "BRA");
    EXPECT_EQ(parsed->getRating(), 0x35);
}

TEST(TParentalRatingDescriptorItem, FieldsTakeOnlyTheirBits) {
    const auto letter = [](std::size_t at) {
        return [at](const TParentalRatingDescriptorItem& parsed) {
            return static_cast<QUOR_U8>(parsed.getCountryCode().at(at));
        };
    };
    expectFields<TParentalRatingDescriptorItem>({}, 4,
                                                {{"first letter", 0, 7, 8, letter(0)},
                                                 {"second letter", 1, 7, 8, letter(1)},
                                                 {"third letter", 2, 7, 8, letter(2)},
                                                 {"rating", 3, 7, 8, &TParentalRatingDescriptorItem::getRating}});
}

TEST(TParentalRatingDescriptorItem, TheCountryIsKeptByteForByte) {
    const auto parsed = expectSuccess<TParentalRatingDescriptorItem>(hex("00 E3 00  05"), 4);
    EXPECT_EQ(parsed->getCountryCode(), std::string("\x00\xE3\x00", 3));
}

TEST(TParentalRatingDescriptorItem, TheFirstByteIsNoLength) {
    EXPECT_EQ(expectSuccess<TParentalRatingDescriptorItem>(hex("FF 41 42  05"), 4)->getCountryCode(), "\xFF"
                                                                                                      "AB");
}

TEST(TParentalRatingDescriptorItem, BytesBehindTheItemAreNotCounted) {
    const auto parsed = expectSuccess<TParentalRatingDescriptorItem>(join({hex("42 52 41 05"), fill(296, 0xEE)}), 4);
    EXPECT_EQ(parsed->getCountryCode(), "BRA");
    EXPECT_EQ(parsed->getRating(), 5);
}

TEST(TParentalRatingDescriptorItem, NeedsFourBytes) {
    const std::vector<std::string> lengths{"0", "1", "2", "3"};
    for (std::size_t length = 0; length < lengths.size(); ++length) {
        SCOPED_TRACE(length);
        expectFailure<TParentalRatingDescriptorItem>(
            fill(length, 0x42), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
            {"ISDBTUtils: TParentalRatingDescriptorItem::parse: Descriptor length not valid: " + lengths[length] +
             ". Aborting!"});
    }
    EXPECT_EQ(TISDBTTable::ERROR_INVALID_DATA_LENGTH, 2563);
}

TEST(TParentalRatingDescriptorItem, IsDestroyedThroughItsBase) {
    int destroyed = 0;
    std::unique_ptr<TParentalRatingDescriptorItem> item(new Counted<TParentalRatingDescriptorItem>(destroyed));
    EXPECT_EQ(destroyed, 0);
    item.reset();
    EXPECT_EQ(destroyed, 1);
}
