#include "TISDBTDataHolder.h"

#include "support/Bytes.h"
#include "support/Lifetime.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using Quor::TISDBTDataHolder;

TEST(TISDBTDataHolder, KeepsACopyWhenAskedTo) {
    std::unique_ptr<TISDBTDataHolder> holder;
    {
        const HeapBytes bytes(hex("00 B0 0D"));
        holder.reset(new TISDBTDataHolder(bytes.data(), bytes.size(), 1));
        EXPECT_NE(holder->getData(), bytes.data());
        bytes.data()[1] = 0xFF;
    }
    ASSERT_EQ(holder->getDataLength(), 3U);
    EXPECT_EQ(ByteVector(holder->getData(), holder->getData() + 3), hex("00 B0 0D"));
}

TEST(TISDBTDataHolder, AnyNumberButZeroAsksForACopy) {
    const HeapBytes bytes(hex("01"));
    EXPECT_NE(TISDBTDataHolder(bytes.data(), 1, 2).getData(), bytes.data());
    EXPECT_NE(TISDBTDataHolder(bytes.data(), 1, -1).getData(), bytes.data());
    EXPECT_NE(TISDBTDataHolder(bytes.data(), 1, 0x100).getData(), bytes.data());
}

TEST(TISDBTDataHolder, RefersToTheCallersBytesOtherwise) {
    const HeapBytes bytes(hex("58 0D 42"));
    {
        const TISDBTDataHolder holder(bytes.data(), bytes.size(), 0);
        EXPECT_EQ(holder.getData(), bytes.data());
        EXPECT_EQ(holder.getDataLength(), 3U);
        bytes.data()[1] = 0x0E;
        EXPECT_EQ(holder.getData()[1], 0x0E);
    }
    EXPECT_EQ(bytes.data()[0], 0x58); // still there: the holder did not own it
}

TEST(TISDBTDataHolder, KeepsTheLengthAsGiven) {
    EXPECT_EQ(TISDBTDataHolder(nullptr, 0xFFFFFFFF, 0).getDataLength(), 0xFFFFFFFFU);
    EXPECT_EQ(TISDBTDataHolder(nullptr, 5, 0).getData(), nullptr);
}

TEST(TISDBTDataHolder, NullIsNotCopied) {
    const TISDBTDataHolder holder(nullptr, 5, 1);
    EXPECT_EQ(holder.getData(), nullptr);
    EXPECT_EQ(holder.getDataLength(), 5U);
}

TEST(TISDBTDataHolder, EmptyCopyIsPossible) {
    const HeapBytes bytes({});
    const TISDBTDataHolder holder(bytes.data(), 0, 1);
    EXPECT_EQ(holder.getDataLength(), 0U);
    EXPECT_NE(holder.getData(), bytes.data());
}

TEST(TISDBTDataHolder, IsDestroyedThroughItsVirtualDestructor) {
    int deleted = 0;
    const HeapBytes bytes(hex("00 01 02"));
    std::unique_ptr<TISDBTDataHolder> holder(new Counted<TISDBTDataHolder>(deleted, bytes.data(), bytes.size(), 1));
    EXPECT_EQ(deleted, 0);
    holder.reset();
    EXPECT_EQ(deleted, 1);
}

TEST(TISDBTDataHolder, CannotBeCopied) {
    EXPECT_FALSE(std::is_copy_constructible<TISDBTDataHolder>::value);
    EXPECT_FALSE(std::is_copy_assignable<TISDBTDataHolder>::value);
}

TEST(TISDBTDataHolder, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&TISDBTDataHolder::getData), QUOR_U8* (TISDBTDataHolder::*)() const>();
    testing::StaticAssertTypeEq<decltype(&TISDBTDataHolder::getDataLength), QUOR_U32 (TISDBTDataHolder::*)() const>();
    const bool constructible = std::is_constructible<TISDBTDataHolder, QUOR_U8*, QUOR_U32, int>::value;
    EXPECT_TRUE(constructible);
}
