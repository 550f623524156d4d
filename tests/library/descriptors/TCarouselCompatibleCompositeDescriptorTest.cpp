#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TCarouselCompatibleCompositeDescriptor;

namespace {

const Lines NOT_IMPLEMENTED{"ISDBTUtils: TCarouselCompatibleCompositeDescriptor::parse: TODO: Descriptor not "
                            "implemented yet. If you really need this descriptor, please contact support."};

} // namespace

TEST(TCarouselCompatibleCompositeDescriptor, KnowsItsTag) {
    ByteVector bytes = hex("F7 04  01 02 03 04");
    const InDirtyMemory<TCarouselCompatibleCompositeDescriptor> descriptor(bytes.data(), QUOR_U32{6});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0xF7);
}

TEST(TCarouselCompatibleCompositeDescriptor, IsKeptUndecodedAndSaysSo) {
    const auto parsed =
        expectDescriptor<TCarouselCompatibleCompositeDescriptor>(hex("F7 04  01 02 03 04"), 6, NOT_IMPLEMENTED);
    EXPECT_EQ(elements(parsed->getData(), parsed->getDataLength()), hex("F7 04  01 02 03 04"));
}

TEST(TCarouselCompatibleCompositeDescriptor, TheLineGoesOutAtLevelFour) {
    const HeapBytes bytes(hex("F7 04  01 02 03 04"));
    const LogCapture log;
    const std::unique_ptr<TCarouselCompatibleCompositeDescriptor> parsed(
        TCarouselCompatibleCompositeDescriptor::parse(bytes.data(), bytes.size(), nullptr, nullptr));
    ASSERT_EQ(log.records().size(), 1U);
    EXPECT_EQ(log.records()[0].level, 4);
    EXPECT_EQ(log.records()[0].tag, "ISDBTUtils");
}

TEST(TCarouselCompatibleCompositeDescriptor, TheWholeDescriptorIsCounted) {
    expectDescriptor<TCarouselCompatibleCompositeDescriptor>(join({hex("F7 FF"), fill(255, 0x5A)}), 257,
                                                             NOT_IMPLEMENTED);
    expectDescriptor<TCarouselCompatibleCompositeDescriptor>(join({hex("F7 04"), fill(298, 0x5A)}), 300,
                                                             NOT_IMPLEMENTED);
}
