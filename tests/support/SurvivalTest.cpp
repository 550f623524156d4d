#include "support/Survival.h"

#include <gtest/gtest.h>

namespace {

std::vector<ByteVector> wires(const std::vector<Damaged>& damaged) {
    std::vector<ByteVector> result;
    for (const Damaged& each : damaged) {
        result.push_back(each.wire);
    }
    return result;
}

} // namespace

TEST(Survival, PrefixesAreAllThatIsShorter) {
    EXPECT_EQ(wires(everyPrefix(hex("70 71 72"))), (std::vector<ByteVector>{{}, hex("70"), hex("70 71")}));
}

TEST(Survival, EachByteTakesTenOtherValues) {
    const std::vector<ByteVector> changed = wires(everyByteChange(hex("0F 55")));
    ASSERT_EQ(changed.size(), 20U);
    EXPECT_EQ(changed[0], hex("00 55"));
    EXPECT_EQ(changed[1], hex("FF 55"));
    EXPECT_EQ(changed[2], hex("0E 55"));
    EXPECT_EQ(changed[9], hex("8F 55"));
    EXPECT_EQ(changed[19], hex("0F D5"));
}

TEST(Survival, RepairedLengthsFitTheBytes) {
    EXPECT_EQ(repairedSection(hex("00 BFFF 0001")), hex("00 B002 0001"));
    EXPECT_EQ(repairedSection(hex("00 BF")), hex("00 BF"));
    EXPECT_EQ(repairedDescriptor(hex("58 0D 42 52")), hex("58 02 42 52"));
    EXPECT_EQ(repairedDescriptor(hex("58")), hex("58"));
}
