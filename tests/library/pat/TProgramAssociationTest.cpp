#include "pat/TProgramAssociation.h"

#include "support/Lifetime.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using Quor::TProgramAssociation;

TEST(TProgramAssociation, HoldsServiceAndPid) {
    const TProgramAssociation association(0x5C20, 0x0101);
    EXPECT_EQ(association.getProgramNumber(), 0x5C20);
    EXPECT_EQ(association.getProgramMapPid(), 0x0101);
}

TEST(TProgramAssociation, TakesBothNumbersAsGiven) {
    const TProgramAssociation association(0xFFFF, 0xFFFE);
    EXPECT_EQ(association.getProgramNumber(), 0xFFFF);
    EXPECT_EQ(association.getProgramMapPid(), 0xFFFE);
}

TEST(TProgramAssociation, IsDestroyedThroughItsVirtualDestructor) {
    int deleted = 0;
    std::unique_ptr<TProgramAssociation> association(
        new Counted<TProgramAssociation>(deleted, QUOR_U16{1}, QUOR_U16{0x100}));
    association.reset();
    EXPECT_EQ(deleted, 1);
}

TEST(TProgramAssociation, HasTheSignaturesThatReceiversCall) {
    using Entry = TProgramAssociation;
    testing::StaticAssertTypeEq<decltype(&Entry::getProgramNumber), QUOR_U16 (Entry::*)() const>();
    testing::StaticAssertTypeEq<decltype(&Entry::getProgramMapPid), QUOR_U16 (Entry::*)() const>();
    const bool constructible = std::is_constructible<Entry, QUOR_U16, QUOR_U16>::value;
    EXPECT_TRUE(constructible);
}
