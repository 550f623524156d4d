#include "descriptors/TPrefetchDescriptor.h"

#include "descriptors/TPrefetchDescriptorItem.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Lifetime.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Item = Quor::TPrefetchDescriptorItem;
using Quor::TISDBTTable;
using Quor::TPrefetchDescriptor;

EXPECT_GETTER(QUOR_U8, TPrefetchDescriptor, getTransportProtocolLabel);

namespace {

const char* const INVALID_ITEM = "ISDBTUtils: TPrefetchDescriptor::parse: Invalid item. Aborting!";

/// label_length, label, prefetch_priority
ByteVector item(const std::string& label, QUOR_U8 priority) {
    return join({{static_cast<QUOR_U8>(label.size())}, text(label), {priority}});
}

std::vector<std::string> labels(const TPrefetchDescriptor& descriptor) {
    std::vector<std::string> all;
    for (unsigned position = 0; position < descriptor.size(); ++position) {
        all.push_back(descriptor.get(position)->getLabel());
    }
    return all;
}

} // namespace

TEST(TPrefetchDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("0C 04 07 01 41 05"));
    const InDirtyMemory<TPrefetchDescriptor> memory(bytes.data(), bytes.size());
    const TPrefetchDescriptor& descriptor = *memory;
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x0C);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), 6U);
    EXPECT_EQ(descriptor.getTransportProtocolLabel(), 0);
    EXPECT_EQ(descriptor.size(), 0U);
}

TEST(TPrefetchDescriptor, ShowsLabelsInTheirOrder) {
    // The length told is that of the last item alone.
    const auto parsed = expectDescriptor<TPrefetchDescriptor>(
        descriptor(0x0C, join({hex("07"), item("menu", 9), item("a", 8), item("menu", 10)})), 6);
    EXPECT_EQ(parsed->getTransportProtocolLabel(), 7);
    EXPECT_EQ(parsed->size(), 3U);
    EXPECT_EQ(labels(*parsed.object), (std::vector<std::string>{"menu", "a", "menu"}));
    EXPECT_EQ(parsed->get(0)->getPriority(), 9);
    EXPECT_EQ(parsed->get(1)->getPriority(), 8);
    EXPECT_EQ(parsed->get(2)->getPriority(), 10);
}

TEST(TPrefetchDescriptor, TheTransportLabelHasEightBits) {
    const auto parsed = expectDescriptor<TPrefetchDescriptor>(hex("0C 04  FF  01 41 00"), 3);
    EXPECT_EQ(parsed->getTransportProtocolLabel(), 0xFF);
    EXPECT_EQ(parsed->get(0)->getPriority(), 0);
}

TEST(TPrefetchDescriptor, PlacesBehindTheLastItemHoldNothing) {
    const auto parsed = expectDescriptor<TPrefetchDescriptor>(hex("0C 04  07  01 41 05"), 3);
    EXPECT_EQ(parsed->get(parsed->size()), nullptr);
    EXPECT_EQ(parsed->get(0xFFFFFFFF), nullptr);
    EXPECT_FALSE(parsed->remove(1));
    EXPECT_FALSE(parsed->remove(0xFFFFFFFF));
    EXPECT_EQ(parsed->size(), 1U);
}

TEST(TPrefetchDescriptor, ALabelThatLeavesNoRoomForItsPriorityFails) {
    expectFailure<TPrefetchDescriptor>(
        hex("0C 04  07  02 41 42"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TPrefetchDescriptorItem::parse: Item length not valid: 0. Aborting!", INVALID_ITEM});
}

TEST(TPrefetchDescriptor, ALabelThatDoesNotFitFails) {
    expectFailure<TPrefetchDescriptor>(
        descriptor(0x0C, join({hex("07"), item("menu", 9), hex("05 41 42")})),
        TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 5 > 2.Aborting!",
         "ISDBTUtils: TPrefetchDescriptorItem:: parse: ERROR: parsing Label. Aborting!", INVALID_ITEM});
}

TEST(TPrefetchDescriptor, AnItemThatIsCutOffFails) {
    expectFailure<TPrefetchDescriptor>(
        hex("0C 05  07  01 41 05  00"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TPrefetchDescriptorItem::parse: Item length not valid: 1. Aborting!", INVALID_ITEM});
}

TEST(TPrefetchDescriptor, ItemsRunToTheEndOfTheCallersLength) {
    const auto parsed = expectDescriptor<TPrefetchDescriptor>(
        join({hex("0C 04  07"), item(std::string(254, 'l'), 1), item("A", 5)}), 3);
    EXPECT_EQ(labels(*parsed.object), (std::vector<std::string>{std::string(254, 'l'), "A"}));
    EXPECT_EQ(parsed->get(0)->getPriority(), 1);
    const auto longest =
        expectDescriptor<TPrefetchDescriptor>(join({hex("0C 04  07"), item(std::string(254, 'l'), 1)}), 256);
    EXPECT_EQ(longest->size(), 1U);
}

TEST(TPrefetchDescriptor, BehindTheLongestLabelTheItemsGoOnAfterOneByte) {
    // 255 bytes of label count nothing, its priority one: the next item begins with the label's first byte.
    const ByteVector label = join({hex("FC"), fill(252, 'x'), hex("0A  00")});
    ASSERT_EQ(label.size(), 255U);
    const auto parsed = expectDescriptor<TPrefetchDescriptor>(join({hex("0C 04  07  FF"), label, hex("0B")}), 2);
    EXPECT_EQ(labels(*parsed.object),
              (std::vector<std::string>{std::string(label.begin(), label.end()), std::string(252, 'x'), ""}));
    EXPECT_EQ(parsed->get(1)->getPriority(), 0x0A);
    EXPECT_EQ(parsed->get(2)->getPriority(), 0x0B);
}

TEST(TPrefetchDescriptor, NullTakesAPlaceAsWell) {
    int deleted = 0;
    {
        TPrefetchDescriptor source(nullptr, 0);
        source.add(nullptr);
        source.add(new Counted<Item>(deleted));
        EXPECT_EQ(source.size(), 2U);
        EXPECT_EQ(source.get(0), nullptr);
        EXPECT_NE(source.get(1), nullptr);

        const TPrefetchDescriptor copy(&source);
        EXPECT_EQ(copy.size(), 2U);
        EXPECT_EQ(copy.get(0), nullptr);
        EXPECT_NE(copy.get(1), nullptr);
    }
    EXPECT_EQ(deleted, 1);
}

TEST(TPrefetchDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TPrefetchDescriptor> copy;
    {
        const auto parsed = parseBytes<TPrefetchDescriptor>(
            descriptor(0x0C, join({hex("07"), item("carousel/module/menu", 9), item("a", 8)})));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TPrefetchDescriptor>(parsed.object.get());
        EXPECT_NE(copy->get(0), parsed->get(0));
        EXPECT_TRUE(parsed->remove(0));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x0C);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(copy->getTransportProtocolLabel(), 7);
    EXPECT_EQ(labels(*copy), (std::vector<std::string>{"carousel/module/menu", "a"}));
    EXPECT_EQ(copy->get(0)->getPriority(), 9);
    EXPECT_EQ(copy->get(1)->getPriority(), 8);
}

TEST(TPrefetchDescriptor, DamageIsSurvived) {
    const ByteVector good = descriptor(0x0C, join({hex("07"), item("menu", 9), item("", 8), item("a", 7)}));
    expectEveryPrefixSurvives<TPrefetchDescriptor>(good);
    expectEveryByteChangeSurvives<TPrefetchDescriptor>(good);
}
