#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"

#include "ait/TApplicationIdentifier.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptorItem.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Item = Quor::TExternalApplicationAuthorizationDescriptorItem;
using Quor::TExternalApplicationAuthorizationDescriptor;
using Quor::TISDBTTable;

EXPECT_GETTER(std::list<std::string>*, TExternalApplicationAuthorizationDescriptor, getApplicationIdentifierHashIDs);

namespace {

Lines invalidItem(unsigned left) {
    return {"ISDBTUtils: TExternalApplicationAuthorizationDescriptorItem::parse: Item length not valid: " +
                std::to_string(left) + ". Aborting!",
            "ISDBTUtils: TExternalApplicationAuthorizationDescriptor::parse: Invalid item. Aborting!"};
}

} // namespace

TEST(TExternalApplicationAuthorizationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("05 07  00000001 0002 03"));
    const TExternalApplicationAuthorizationDescriptor descriptor(bytes.data(), bytes.size());
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x05);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), 9U);
    EXPECT_EQ(descriptor.size(), 0U);
    EXPECT_TRUE(taken(descriptor.getApplicationIdentifierHashIDs()).empty());
}

TEST(TExternalApplicationAuthorizationDescriptor, MayBeEmpty) {
    const auto parsed = expectDescriptor<TExternalApplicationAuthorizationDescriptor>(hex("05 00"), 0);
    EXPECT_EQ(parsed->size(), 0U);
    EXPECT_TRUE(taken(parsed->getApplicationIdentifierHashIDs()).empty());
}

TEST(TExternalApplicationAuthorizationDescriptor, ListsApplicationsInOrder) {
    // The length told is that of the last item alone.
    const auto parsed = expectDescriptor<TExternalApplicationAuthorizationDescriptor>(
        hex("05 15  0000ABCD 0012 01  00000001 FFFF 02  0000ABCD 0002 03"), 7);
    EXPECT_EQ(parsed->size(), 3U);
    EXPECT_EQ(taken(parsed->getApplicationIdentifierHashIDs()),
              (std::vector<std::string>{"00000001FFFF", "0000ABCD0002", "0000ABCD0012"}));
    ASSERT_NE(parsed->get("0000ABCD0012"), nullptr);
    EXPECT_EQ(parsed->get("0000ABCD0012")->getApplicationIdentifier()->getOrganizationID(), 0xABCDU);
    EXPECT_EQ(parsed->get("0000ABCD0012")->getApplicationIdentifier()->getApplicationID(), 0x0012);
    EXPECT_EQ(parsed->get("0000ABCD0012")->getPriority(), 1);
    EXPECT_EQ(parsed->get("00000001FFFF")->getPriority(), 2);
    EXPECT_EQ(parsed->get("0000ABCD0002")->getPriority(), 3);
    EXPECT_EQ(parsed->get("0000abcd0012"), nullptr);
    EXPECT_EQ(parsed->get(""), nullptr);
}

TEST(TExternalApplicationAuthorizationDescriptor, LastItemOfAnApplicationWins) {
    const auto parsed = expectDescriptor<TExternalApplicationAuthorizationDescriptor>(
        hex("05 0E  00000001 0002 03  00000001 0002 04"), 7);
    EXPECT_EQ(parsed->size(), 1U);
    EXPECT_EQ(parsed->get("000000010002")->getPriority(), 4);
}

TEST(TExternalApplicationAuthorizationDescriptor, AnItemThatIsCutOffFails) {
    for (unsigned left = 1; left < 7; ++left) {
        expectFailure<TExternalApplicationAuthorizationDescriptor>(
            descriptor(0x05, join({hex("00000001 0002 03"), fill(left, 0x00)})),
            TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(left));
    }
    expectFailure<TExternalApplicationAuthorizationDescriptor>(
        hex("05 01 00"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(1));
}

TEST(TExternalApplicationAuthorizationDescriptor, ItemsRunToTheEndOfTheCallersLength) {
    const auto parsed =
        expectDescriptor<TExternalApplicationAuthorizationDescriptor>(hex("05 00  00000001 0002 03"), 7);
    EXPECT_EQ(parsed->get("000000010002")->getPriority(), 3);
    expectFailure<TExternalApplicationAuthorizationDescriptor>(
        hex("05 07  00000001 0002 03  00"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, invalidItem(1));

    ByteVector items;
    for (unsigned application = 0; application < 40; ++application) {
        items = join({items, hex("00000001"), u16(application), hex("05")});
    }
    const auto many = expectDescriptor<TExternalApplicationAuthorizationDescriptor>(join({hex("05 00"), items}), 7);
    EXPECT_EQ(many->size(), 40U);
}

TEST(TExternalApplicationAuthorizationDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TExternalApplicationAuthorizationDescriptor> copy;
    {
        const auto parsed =
            parseBytes<TExternalApplicationAuthorizationDescriptor>(hex("05 0E  00000001 0002 03  00000001 0003 04"));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TExternalApplicationAuthorizationDescriptor>(parsed.object.get());
        EXPECT_NE(copy->get("000000010002"), parsed->get("000000010002"));
        EXPECT_TRUE(parsed->remove("000000010003"));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x05);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(taken(copy->getApplicationIdentifierHashIDs()),
              (std::vector<std::string>{"000000010002", "000000010003"}));
    EXPECT_EQ(copy->get("000000010002")->getPriority(), 3);
    EXPECT_EQ(copy->get("000000010003")->getApplicationIdentifier()->getApplicationID(), 3);
    EXPECT_EQ(copy->get("000000010003")->getPriority(), 4);
}

TEST(TExternalApplicationAuthorizationDescriptor, DamageIsSurvived) {
    const ByteVector good = hex("05 0E  0000ABCD 0012 01  00000001 0002 03");
    expectEveryPrefixSurvives<TExternalApplicationAuthorizationDescriptor>(good);
    expectEveryByteChangeSurvives<TExternalApplicationAuthorizationDescriptor>(good);
}
