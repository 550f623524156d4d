#include "describing/Charset.h"

#include <gtest/gtest.h>

namespace {

using namespace inspect;

TEST(NoJapaneseText, IsSaidToBeInItsCoding) {
    EXPECT_THROW(Charset("japan"), UnknownCharset);
    EXPECT_EQ(Charset().decode("\xC6", Coding::Japan).remark, "in the coding of Japan, which this build cannot read");
}

} // namespace
