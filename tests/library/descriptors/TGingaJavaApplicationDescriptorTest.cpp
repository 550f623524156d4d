#include "descriptors/TGingaJavaApplicationDescriptor.h"

#include "support/Outcome.h"

#include <type_traits>

using Quor::TGingaJavaApplicationDescriptor;

static_assert(std::is_base_of<Quor::TGingaApplicationDescriptor, TGingaJavaApplicationDescriptor>::value,
              "one of the two forms");

TEST(TGingaJavaApplicationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("03 04  03 616263"));
    const TGingaJavaApplicationDescriptor descriptor(bytes.data(), bytes.size());
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x03);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), bytes.size());
    EXPECT_EQ(descriptor.size(), 0U);
}
