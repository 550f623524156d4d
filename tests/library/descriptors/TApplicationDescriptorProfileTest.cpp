#include "descriptors/TApplicationDescriptorProfile.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Profile = Quor::TApplicationDescriptorProfile;
using Quor::TISDBTTable;

static_assert(std::has_virtual_destructor<Profile>::value, "receivers delete profiles through their own subclasses");

EXPECT_GETTER(QUOR_U16, Profile, getApplicationProfile);
EXPECT_GETTER(QUOR_U8, Profile, getVersionMajor);
EXPECT_GETTER(QUOR_U8, Profile, getVersionMinor);
EXPECT_GETTER(QUOR_U8, Profile, getVersionMicro);

TEST(TApplicationDescriptorProfile, StartsEmpty) {
    const InDirtyMemory<Profile> memory;
    const Profile& profile = *memory;
    EXPECT_EQ(profile.getApplicationProfile(), 0);
    EXPECT_EQ(profile.getVersionMajor(), 0);
    EXPECT_EQ(profile.getVersionMinor(), 0);
    EXPECT_EQ(profile.getVersionMicro(), 0);
}

TEST(TApplicationDescriptorProfile, ShowsItsFields) {
    const auto parsed = expectSuccess<Profile>(hex("8001 02 03 04"), 5);
    EXPECT_EQ(parsed->getApplicationProfile(), 0x8001);
    EXPECT_EQ(parsed->getVersionMajor(), 2);
    EXPECT_EQ(parsed->getVersionMinor(), 3);
    EXPECT_EQ(parsed->getVersionMicro(), 4);
}

TEST(TApplicationDescriptorProfile, EachFieldTakesAllItsBitsAndNoOthers) {
    const auto profile = expectSuccess<Profile>(hex("FFFF 00 00 00"), 5);
    EXPECT_EQ(profile->getApplicationProfile(), 0xFFFF);
    EXPECT_EQ(profile->getVersionMajor(), 0);
    const auto major = expectSuccess<Profile>(hex("0000 FF 00 00"), 5);
    EXPECT_EQ(major->getApplicationProfile(), 0);
    EXPECT_EQ(major->getVersionMajor(), 0xFF);
    EXPECT_EQ(major->getVersionMinor(), 0);
    const auto minor = expectSuccess<Profile>(hex("0000 00 FF 00"), 5);
    EXPECT_EQ(minor->getVersionMajor(), 0);
    EXPECT_EQ(minor->getVersionMinor(), 0xFF);
    EXPECT_EQ(minor->getVersionMicro(), 0);
    const auto micro = expectSuccess<Profile>(hex("0000 00 00 FF"), 5);
    EXPECT_EQ(micro->getVersionMinor(), 0);
    EXPECT_EQ(micro->getVersionMicro(), 0xFF);
}

TEST(TApplicationDescriptorProfile, TakesFiveBytesOfALongerLoop) {
    const auto parsed = expectSuccess<Profile>(hex("0001 01 00 02  0002 05 06 07"), 5);
    EXPECT_EQ(parsed->getApplicationProfile(), 1);
    EXPECT_EQ(parsed->getVersionMicro(), 2);
}

TEST(TApplicationDescriptorProfile, LessThanFiveBytesFail) {
    for (unsigned size = 0; size < 5; ++size) {
        expectFailure<Profile>(fill(size, 0xFF), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               {"ISDBTUtils: TApplicationDescriptorProfile::parse: Item length not valid: " +
                                std::to_string(size) + ". Aborting!"});
    }
}

TEST(TApplicationDescriptorProfile, ACopyHoldsTheSameFields) {
    auto parsed = expectSuccess<Profile>(hex("1234 05 06 07"), 5);
    const Profile copy(parsed.object.get());
    parsed.object.reset();
    EXPECT_EQ(copy.getApplicationProfile(), 0x1234);
    EXPECT_EQ(copy.getVersionMajor(), 5);
    EXPECT_EQ(copy.getVersionMinor(), 6);
    EXPECT_EQ(copy.getVersionMicro(), 7);
}
