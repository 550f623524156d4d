#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"

#include "support/Outcome.h"

#include <type_traits>

using Quor::TGingaNCLApplicationLocationDescriptor;

static_assert(std::is_base_of<Quor::TGingaApplicationLocationDescriptor, TGingaNCLApplicationLocationDescriptor>::value,
              "one of the two forms");

TEST(TGingaNCLApplicationLocationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("07 06  01 61 01 62 6364"));
    const TGingaNCLApplicationLocationDescriptor descriptor(bytes.data(), bytes.size());
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x07);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), bytes.size());
    EXPECT_EQ(descriptor.getBaseDirectory(), "");
    EXPECT_EQ(descriptor.getClasspathExtension(), "");
    EXPECT_EQ(descriptor.getInitialClass(), "");
}
