#include "descriptors/TGingaNCLApplicationDescriptor.h"

#include "support/Outcome.h"

#include <type_traits>

using Quor::TGingaNCLApplicationDescriptor;

static_assert(std::is_base_of<Quor::TGingaApplicationDescriptor, TGingaNCLApplicationDescriptor>::value,
              "one of the two forms");

TEST(TGingaNCLApplicationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("06 04  03 616263"));
    const TGingaNCLApplicationDescriptor descriptor(bytes.data(), bytes.size());
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x06);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), bytes.size());
    EXPECT_EQ(descriptor.size(), 0U);
}
