#include "descriptors/TApplicationIconDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Quor::TApplicationIconDescriptor;
using Quor::TISDBTTable;

EXPECT_GETTER(std::string, TApplicationIconDescriptor, getIconLocator);
EXPECT_GETTER(QUOR_U16, TApplicationIconDescriptor, getIconFlags);

TEST(TApplicationIconDescriptor, FlagsNameSizeAndShape) {
    using Icon = TApplicationIconDescriptor;
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_32x32_SQUARE, 1);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_32x32_4x3, 2);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_32x32_16x9, 4);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_64x64_SQUARE, 8);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_64x64_4x3, 16);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_64x64_16x9, 32);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_128x128_SQUARE, 64);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_128x128_4x3, 128);
    EXPECT_CONSTANT(QUOR_U16, Icon::FLAG_128x128_16x9, 256);
}

TEST(TApplicationIconDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("0B 04 01 41 FFFF"));
    const InDirtyMemory<TApplicationIconDescriptor> memory(bytes.data(), bytes.size());
    const TApplicationIconDescriptor& icon = *memory;
    EXPECT_EQ(icon.getDescriptorTag(), 0x0B);
    EXPECT_EQ(icon.getData(), bytes.data());
    EXPECT_EQ(icon.getDataLength(), 6U);
    EXPECT_EQ(icon.getIconLocator(), "");
    EXPECT_EQ(icon.getIconFlags(), 0);
}

TEST(TApplicationIconDescriptor, IsMadeOfALocatorAndFlags) {
    const TApplicationIconDescriptor icon("icons/main", 0x0109);
    EXPECT_EQ(icon.getDescriptorTag(), 0x0B);
    EXPECT_EQ(icon.getData(), nullptr);
    EXPECT_EQ(icon.getDataLength(), 0U);
    EXPECT_EQ(icon.getIconLocator(), "icons/main");
    EXPECT_EQ(icon.getIconFlags(), 0x0109);
}

TEST(TApplicationIconDescriptor, ShowsLocatorAndFlags) {
    // The length told is that of the whole descriptor.
    const auto parsed = expectDescriptor<TApplicationIconDescriptor>(
        descriptor(0x0B, join({hex("05"), text("icons"), hex("0102")})), 10);
    EXPECT_EQ(parsed->getIconLocator(), "icons");
    EXPECT_EQ(parsed->getIconFlags(), 0x0102);
}

TEST(TApplicationIconDescriptor, ALocatorMayBeEmpty) {
    const auto parsed = expectDescriptor<TApplicationIconDescriptor>(hex("0B 03  00  0105"), 5);
    EXPECT_EQ(parsed->getIconLocator(), "");
    EXPECT_EQ(parsed->getIconFlags(), 0x0105);
}

TEST(TApplicationIconDescriptor, FlagsAreKeptAsReceived) {
    for (unsigned bit = 0; bit < 16; ++bit) {
        const auto parsed =
            expectDescriptor<TApplicationIconDescriptor>(join({hex("0B 04  01 41"), u16(1U << bit)}), 6);
        EXPECT_EQ(parsed->getIconFlags(), 1U << bit);
    }
    EXPECT_EQ(expectDescriptor<TApplicationIconDescriptor>(hex("0B 04  01 41  FFFF"), 6)->getIconFlags(), 0xFFFF);
}

TEST(TApplicationIconDescriptor, CharactersAreKeptAsReceived) {
    const auto parsed = expectDescriptor<TApplicationIconDescriptor>(hex("0B 06  03 00 E7 41  0001"), 8);
    EXPECT_EQ(parsed->getIconLocator(), std::string("\0\xE7"
                                                    "A",
                                                    3));
}

TEST(TApplicationIconDescriptor, BytesBehindTheFlagsAreIgnored) {
    const auto parsed = expectDescriptor<TApplicationIconDescriptor>(hex("0B 07  01 41  0001  FF FF FF"), 9);
    EXPECT_EQ(parsed->getIconLocator(), "A");
    EXPECT_EQ(parsed->getIconFlags(), 1);
}

TEST(TApplicationIconDescriptor, WithoutRoomForTheFlagsTheyAreNone) {
    const auto none = expectDescriptor<TApplicationIconDescriptor>(hex("0B 03  02 41 42"), 5);
    EXPECT_EQ(none->getIconLocator(), "AB");
    EXPECT_EQ(none->getIconFlags(), 0);
    const auto half = expectDescriptor<TApplicationIconDescriptor>(hex("0B 03  01 41  FF"), 5);
    EXPECT_EQ(half->getIconLocator(), "A");
    EXPECT_EQ(half->getIconFlags(), 0);
    const auto least = expectDescriptor<TApplicationIconDescriptor>(hex("0B 02  00  FF"), 4);
    EXPECT_EQ(least->getIconLocator(), "");
    EXPECT_EQ(least->getIconFlags(), 0);
}

TEST(TApplicationIconDescriptor, ALocatorThatDoesNotFitFails) {
    expectFailure<TApplicationIconDescriptor>(
        hex("0B 03  03 41 42"), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 3 > 2.Aborting!",
         "ISDBTUtils: TApplicationIconDescriptor:: parse: ERROR: parsing Icon Locator. Aborting!"});
    expectFailure<TApplicationIconDescriptor>(
        hex("0B 02  FF 41"), TISDBTTable::ERROR_INVALID_STRING,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 255 > 1.Aborting!",
         "ISDBTUtils: TApplicationIconDescriptor:: parse: ERROR: parsing Icon Locator. Aborting!"});
}

TEST(TApplicationIconDescriptor, LocatorAndFlagsMayLieBehindTheDescriptorLength) {
    const auto flags = expectDescriptor<TApplicationIconDescriptor>(hex("0B 02  01 41  0102"), 6);
    EXPECT_EQ(flags->getIconLocator(), "A");
    EXPECT_EQ(flags->getIconFlags(), 0x0102);
    const auto locator = expectDescriptor<TApplicationIconDescriptor>(hex("0B 02  03 41 42 43  0102"), 8);
    EXPECT_EQ(locator->getIconLocator(), "ABC");
    EXPECT_EQ(locator->getIconFlags(), 0x0102);
}

TEST(TApplicationIconDescriptor, ParsedLengthIsKeptInEightBits) {
    const auto parsed =
        expectDescriptor<TApplicationIconDescriptor>(join({hex("0B 02  FE"), fill(254, 'i'), hex("0102")}), 3);
    EXPECT_EQ(parsed->getIconLocator(), std::string(254, 'i'));
    EXPECT_EQ(parsed->getIconFlags(), 0x0102);
    expectDescriptor<TApplicationIconDescriptor>(join({hex("0B FE  FB"), fill(251, 'i'), hex("0102")}), 0);
    expectDescriptor<TApplicationIconDescriptor>(join({hex("0B FF  FC"), fill(252, 'i'), hex("0102")}), 1);
}

TEST(TApplicationIconDescriptor, BehindTheLongestLocatorTheFlagsAreTakenFromItsStart) {
    // Its 256 bytes count 0 in eight bits.
    const auto parsed = expectDescriptor<TApplicationIconDescriptor>(
        join({hex("0B 02  FF"), text("A"), fill(254, 'i'), hex("0102")}), 4);
    EXPECT_EQ(parsed->getIconLocator(), "A" + std::string(254, 'i'));
    EXPECT_EQ(parsed->getIconFlags(), 0xFF41);
}

TEST(TApplicationIconDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TApplicationIconDescriptor> copy;
    {
        const auto parsed = parseBytes<TApplicationIconDescriptor>(
            descriptor(0x0B, join({hex("14"), text("application/icon.png"), hex("0107")})));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TApplicationIconDescriptor>(parsed.object.get());
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x0B);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(copy->getIconLocator(), "application/icon.png");
    EXPECT_EQ(copy->getIconFlags(), 0x0107);
}

TEST(TApplicationIconDescriptor, DamageIsSurvived) {
    const ByteVector good = hex("0B 08  05 69636F6E73  0102");
    expectEveryPrefixSurvives<TApplicationIconDescriptor>(good);
    expectEveryByteChangeSurvives<TApplicationIconDescriptor>(good);
}
