#include "descriptors/TDigitalCopyControlDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TDigitalCopyControlDescriptor;
using Quor::TDigitalCopyControlDescriptorItem;
using Quor::TISDBTTable;

namespace {

const std::string INVALID_ITEM = "ISDBTUtils: TDigitalCopyControlDescriptor::parse: Invalid item. Aborting!";

std::string longerLengthRequired(const std::string& lengths) {
    return "ISDBTUtils: TDigitalCopyControlDescriptor::parse: Longer data length is required: " + lengths +
           ". Aborting!";
}

ByteVector copyControl(const ByteVector& body) {
    return descriptor(0xC1, body);
}

} // namespace

TEST(TDigitalCopyControlDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TDigitalCopyControlDescriptor::COPY_CONTROL_FREE, 0);
    EXPECT_CONSTANT(QUOR_U8, TDigitalCopyControlDescriptor::COPY_CONTROL_SD_FREE_ORIGINAL_ONCE, 1);
    EXPECT_CONSTANT(QUOR_U8, TDigitalCopyControlDescriptor::COPY_CONTROL_SD_FREE, 3);
}

TEST(TDigitalCopyControlDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptor, getDigitalRecordingControlData);
    EXPECT_GETTER(QUOR_BOOL, TDigitalCopyControlDescriptor, hasMaximumBitrate);
    EXPECT_GETTER(QUOR_BOOL, TDigitalCopyControlDescriptor, hasComponentControl);
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptor, getCopyControlType);
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptor, getAPSControlData);
    EXPECT_GETTER(QUOR_U8, TDigitalCopyControlDescriptor, getMaximumBitrate);
    EXPECT_GETTER(QUOR_U32, TDigitalCopyControlDescriptor, size);
    static_assert(std::is_same_v<decltype(&TDigitalCopyControlDescriptor::get),
                                 TDigitalCopyControlDescriptorItem* (TDigitalCopyControlDescriptor::*)(QUOR_U32) const>,
                  "get");
    static_assert(std::is_same_v<decltype(&TDigitalCopyControlDescriptor::remove),
                                 QUOR_BOOL (TDigitalCopyControlDescriptor::*)(QUOR_U32)>,
                  "remove");
    static_assert(std::is_same_v<decltype(&TDigitalCopyControlDescriptor::add),
                                 void (TDigitalCopyControlDescriptor::*)(TDigitalCopyControlDescriptorItem*)>,
                  "add");
    EXPECT_NE(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  00"), 1).object, nullptr);
}

TEST(TDigitalCopyControlDescriptor, StartsEmpty) {
    ByteVector bytes = hex("C1 05  7F 03 25 40 C0");
    const InDirtyMemory<TDigitalCopyControlDescriptor> descriptor(bytes.data(), QUOR_U32{7});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xC1);
    EXPECT_EQ(descriptor->getDigitalRecordingControlData(), 0);
    EXPECT_EQ(descriptor->hasMaximumBitrate(), 0);
    EXPECT_EQ(descriptor->hasComponentControl(), 0);
    EXPECT_EQ(descriptor->getCopyControlType(), 0);
    EXPECT_EQ(descriptor->getAPSControlData(), 0);
    EXPECT_EQ(descriptor->getMaximumBitrate(), 0);
    EXPECT_EQ(descriptor->size(), 0U);
    EXPECT_EQ(descriptor->get(0), nullptr);
}

TEST(TDigitalCopyControlDescriptor, OneByteIsEnough) {
    const auto parsed = expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  8E"), 1);
    EXPECT_EQ(parsed->getDigitalRecordingControlData(), 2);
    EXPECT_EQ(parsed->hasMaximumBitrate(), 0);
    EXPECT_EQ(parsed->hasComponentControl(), 0);
    EXPECT_EQ(parsed->getCopyControlType(), 3);
    EXPECT_EQ(parsed->getAPSControlData(), 2);
    EXPECT_EQ(parsed->getMaximumBitrate(), 0);
    EXPECT_EQ(parsed->size(), 0U);
}

TEST(TDigitalCopyControlDescriptor, AFreeCopyHasNoAnalogueProtection) {
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  03"), 1)->getAPSControlData(), 0);
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  07"), 1)->getAPSControlData(), 3);
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  0B"), 1)->getAPSControlData(), 3);
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  05"), 1)->getAPSControlData(), 1);
}

TEST(TDigitalCopyControlDescriptor, EveryFlagByte) {
    for (unsigned flags = 0; flags < 0x100; ++flags) {
        SCOPED_TRACE(flags);
        // Room for a bitrate and an empty component control.
        const ByteVector wire = copyControl({static_cast<QUOR_U8>(flags), 0x00, 0x00});
        const bool bitrate = (flags & 0x20U) != 0;
        const bool control = (flags & 0x10U) != 0;
        const auto parsed = expectDescriptor<TDigitalCopyControlDescriptor>(wire, 1U + bitrate + control);
        EXPECT_EQ(parsed->getDigitalRecordingControlData(), bitsAt(wire, 2, 7, 2));
        EXPECT_EQ(parsed->hasMaximumBitrate(), bitrate ? 1 : 0);
        EXPECT_EQ(parsed->hasComponentControl(), control ? 1 : 0);
        EXPECT_EQ(parsed->getCopyControlType(), bitsAt(wire, 2, 3, 2));
        EXPECT_EQ(parsed->getAPSControlData(), (flags & 0x0CU) == 0 ? 0 : bitsAt(wire, 2, 1, 2));
        EXPECT_EQ(parsed->size(), 0U);
    }
}

TEST(TDigitalCopyControlDescriptor, TheMaximumBitrateFollows) {
    const auto parsed = expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 02  60 7F"), 2);
    EXPECT_EQ(parsed->getDigitalRecordingControlData(), 1);
    EXPECT_EQ(parsed->hasMaximumBitrate(), 1);
    EXPECT_EQ(parsed->hasComponentControl(), 0);
    EXPECT_EQ(parsed->getMaximumBitrate(), 0x7F);

    expectFields<TDigitalCopyControlDescriptor>(
        hex("C1 02  20"), 1, {{"maximum_bitrate", 3, 7, 8, &TDigitalCopyControlDescriptor::getMaximumBitrate}});
}

TEST(TDigitalCopyControlDescriptor, AMaximumBitrateThatIsAnnouncedMustFollow) {
    expectFailure<TDigitalCopyControlDescriptor>(hex("C1 01  2C"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                                 {longerLengthRequired("0 < 1")});
    expectFailure<TDigitalCopyControlDescriptor>(hex("C1 01  30"), 2568, {longerLengthRequired("0 < 1")});
}

TEST(TDigitalCopyControlDescriptor, AComponentControlThatIsAnnouncedMustFollow) {
    expectFailure<TDigitalCopyControlDescriptor>(hex("C1 01  10"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                                 {longerLengthRequired("0 < 1")});
    expectFailure<TDigitalCopyControlDescriptor>(hex("C1 02  30 7F"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                                 {longerLengthRequired("0 < 1")});
}

TEST(TDigitalCopyControlDescriptor, AComponentControlMustFitButIsReportedAsOne) {
    expectFailure<TDigitalCopyControlDescriptor>(hex("C1 02  10 01"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                                 {longerLengthRequired("0 < 1")});
    expectFailure<TDigitalCopyControlDescriptor>(
        hex("C1 04  50 03 25 40"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, {longerLengthRequired("2 < 1")});
    expectFailure<TDigitalCopyControlDescriptor>(
        hex("C1 06  70 7F FF 25 40 C0"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, {longerLengthRequired("3 < 1")});
}

TEST(TDigitalCopyControlDescriptor, AnEmptyComponentControlIsCounted) {
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 02  10 00"), 2)->size(), 0U);
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 03  30 7F 00"), 3)->size(), 0U);
}

TEST(TDigitalCopyControlDescriptor, ListsTheComponents) {
    const auto parsed = expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 05  50 03  25 40  C0"), 5);
    EXPECT_EQ(parsed->getDigitalRecordingControlData(), 1);
    EXPECT_EQ(parsed->hasMaximumBitrate(), 0);
    EXPECT_EQ(parsed->hasComponentControl(), 1);
    EXPECT_EQ(parsed->getCopyControlType(), 0);
    ASSERT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed->get(0)->getDigitalRecordingControlData(), 0);
    EXPECT_EQ(parsed->get(0)->hasMaximumBitrate(), 1);
    EXPECT_EQ(parsed->get(0)->getCopyControlType(), 1);
    EXPECT_EQ(parsed->get(0)->getAPSControlData(), 1);
    EXPECT_EQ(parsed->get(0)->getMaximumBitrate(), 0x40);
    EXPECT_EQ(parsed->get(1)->getDigitalRecordingControlData(), 3);
    EXPECT_EQ(parsed->get(1)->hasMaximumBitrate(), 0);
    EXPECT_EQ(parsed->get(1)->getMaximumBitrate(), 0);
    EXPECT_EQ(parsed->get(2), nullptr);
}

TEST(TDigitalCopyControlDescriptor, BehindTheBitrateFollowTheComponents) {
    const auto parsed = expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 04  30 7F 01  C0"), 4);
    EXPECT_EQ(parsed->getMaximumBitrate(), 0x7F);
    ASSERT_EQ(parsed->size(), 1U);
    EXPECT_EQ(parsed->get(0)->getDigitalRecordingControlData(), 3);
}

TEST(TDigitalCopyControlDescriptor, BytesBehindTheComponentsAreNotCounted) {
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 05  10 01  C0  FF FF"), 3)->size(), 1U);
}

TEST(TDigitalCopyControlDescriptor, AnItemMayTakeBytesBehindTheComponentControl) {
    // The item begins in the last byte of the component control; its bitrate lies behind it. The count of bytes left
    // passes below 0 and the next item fails for want of bytes.
    expectFailure<TDigitalCopyControlDescriptor>(
        hex("C1 04  10 01  25 40"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TDigitalCopyControlDescriptorItem::parse: Item length not valid: 0. Aborting!", INVALID_ITEM});
}

TEST(TDigitalCopyControlDescriptor, AnItemThatFailsReplacesItsCode) {
    expectFailure<TDigitalCopyControlDescriptor>(
        hex("C1 05  50 03  25 40  E0"), 2568,
        {"ISDBTUtils: TDigitalCopyControlDescriptorItem::parse: Longer data length is required: 0 < 1. Aborting!",
         INVALID_ITEM});
}

TEST(TDigitalCopyControlDescriptor, ACountPassedByAnItemGoesOnFrom255) {
    // 1 - 2 leaves 255, which the 255 items of one byte behind it use up exactly.
    const auto parsed =
        expectDescriptor<TDigitalCopyControlDescriptor>(join({hex("C1 02  10 01  25 40"), fill(255, 0xC0)}), 259);
    ASSERT_EQ(parsed->size(), 256U);
    EXPECT_EQ(parsed->get(0)->getMaximumBitrate(), 0x40);
    EXPECT_EQ(parsed->get(1)->getDigitalRecordingControlData(), 3);
    EXPECT_EQ(parsed->get(255)->getDigitalRecordingControlData(), 3);
    EXPECT_EQ(parsed->get(256), nullptr);

    // One byte less.
    expectFailure<TDigitalCopyControlDescriptor>(
        join({hex("C1 02  10 01  25 40"), fill(254, 0xC0)}), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TDigitalCopyControlDescriptorItem::parse: Item length not valid: 0. Aborting!", INVALID_ITEM});
}

TEST(TDigitalCopyControlDescriptor, TheBytesLeftAreThoseGiven) {
    // descriptor_length ends behind component_control_length.
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 02  10 02  C0 40"), 4)->size(), 2U);
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(hex("C1 01  20 7F"), 2)->getMaximumBitrate(), 0x7F);
    EXPECT_EQ(expectDescriptor<TDigitalCopyControlDescriptor>(join({hex("C1 01  00"), fill(297, 0xEE)}), 1)->size(),
              0U);
}

TEST(TDigitalCopyControlDescriptor, ManyComponents) {
    const auto parsed = expectDescriptor<TDigitalCopyControlDescriptor>(
        copyControl(join({hex("10 FD"), fill(252, 0x40), hex("80")})), 255);
    ASSERT_EQ(parsed->size(), 253U);
    EXPECT_EQ(parsed->get(251)->getDigitalRecordingControlData(), 1);
    EXPECT_EQ(parsed->get(252)->getDigitalRecordingControlData(), 2);
}

TEST(TDigitalCopyControlDescriptor, ItemsAreAppendedBehindThoseOfTheWire) {
    const auto parsed = parseBytes<TDigitalCopyControlDescriptor>(hex("C1 03  10 01  C0"));
    auto* const item = new TDigitalCopyControlDescriptorItem;
    parsed->add(item);
    EXPECT_EQ(parsed->size(), 2U);
    EXPECT_EQ(parsed->get(0)->getDigitalRecordingControlData(), 3);
    EXPECT_EQ(parsed->get(1), item);
}
