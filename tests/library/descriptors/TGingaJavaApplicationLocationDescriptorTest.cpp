#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"

#include "support/Outcome.h"

#include <type_traits>

using Quor::TGingaJavaApplicationLocationDescriptor;

static_assert(
    std::is_base_of<Quor::TGingaApplicationLocationDescriptor, TGingaJavaApplicationLocationDescriptor>::value,
    "one of the two forms");

TEST(TGingaJavaApplicationLocationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("04 06  01 61 01 62 6364"));
    const TGingaJavaApplicationLocationDescriptor descriptor(bytes.data(), bytes.size());
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x04);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), bytes.size());
    EXPECT_EQ(descriptor.getBaseDirectory(), "");
    EXPECT_EQ(descriptor.getClasspathExtension(), "");
    EXPECT_EQ(descriptor.getInitialClass(), "");
}
