#include "QuorDefs.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

template <class T> constexpr bool IS_UNSIGNED_INTEGER = std::is_integral<T>::value&& std::is_unsigned<T>::value;
template <class T> constexpr bool IS_SIGNED_INTEGER = std::is_integral<T>::value&& std::is_signed<T>::value;

} // namespace

TEST(QuorDefs, TypesHaveTheirWidths) {
    EXPECT_EQ(sizeof(QUOR_U8), 1U);
    EXPECT_EQ(sizeof(QUOR_U16), 2U);
    EXPECT_EQ(sizeof(QUOR_U32), 4U);
    EXPECT_EQ(sizeof(QUOR_S32), 4U);
    EXPECT_EQ(sizeof(QUOR_BOOL), 4U);
}

TEST(QuorDefs, TypesAreIntegersOfTheirSign) {
    EXPECT_TRUE(IS_UNSIGNED_INTEGER<QUOR_U8>);
    EXPECT_TRUE(IS_UNSIGNED_INTEGER<QUOR_U16>);
    EXPECT_TRUE(IS_UNSIGNED_INTEGER<QUOR_U32>);
    EXPECT_TRUE(IS_SIGNED_INTEGER<QUOR_S32>);
    EXPECT_TRUE(std::is_integral<QUOR_BOOL>::value);
}

TEST(QuorDefs, ShortFormsAreTheSameTypes) {
    testing::StaticAssertTypeEq<U8, QUOR_U8>();
    testing::StaticAssertTypeEq<U16, QUOR_U16>();
    testing::StaticAssertTypeEq<U32, QUOR_U32>();
    testing::StaticAssertTypeEq<S32, QUOR_S32>();
    testing::StaticAssertTypeEq<BOOL, QUOR_BOOL>();
    EXPECT_EQ(U8{0xFF} + 0, 255);
    EXPECT_LT(S32{-1}, 0);
}
