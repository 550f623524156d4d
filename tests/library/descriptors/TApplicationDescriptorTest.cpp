#include "descriptors/TApplicationDescriptor.h"

#include "descriptors/TApplicationDescriptorProfile.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

using Quor::TApplicationDescriptor;
using Quor::TISDBTTable;

EXPECT_GETTER(QUOR_BOOL, TApplicationDescriptor, isServiceBound);
EXPECT_GETTER(QUOR_U8, TApplicationDescriptor, getVisibility);
EXPECT_GETTER(QUOR_BOOL, TApplicationDescriptor, isVisibileForUsers);
EXPECT_GETTER(QUOR_BOOL, TApplicationDescriptor, isVisibileForApplications);
EXPECT_GETTER(QUOR_U8, TApplicationDescriptor, getApplicationPriority);
EXPECT_GETTER(QUOR_U8, TApplicationDescriptor, getTransportProtocolsCount);
EXPECT_GETTER(QUOR_U8*, TApplicationDescriptor, getTransportProtocols);
EXPECT_GETTER(std::list<QUOR_U16>*, TApplicationDescriptor, getProfiles);

namespace {

/// application_profiles_length and the profiles, then what follows them.
ByteVector body(const ByteVector& profiles, const ByteVector& rest) {
    return join({{static_cast<QUOR_U8>(profiles.size())}, profiles, rest});
}

/// A descriptor that is longer than descriptor_length can tell: the length byte says 3.
ByteVector overlong(const ByteVector& profiles, const ByteVector& rest) {
    return join({hex("00 03"), body(profiles, rest)});
}

/// The labels as a receiver takes them: a new array that it deletes.
ByteVector labels(const TApplicationDescriptor& descriptor) {
    const std::unique_ptr<QUOR_U8[]> array(descriptor.getTransportProtocols());
    EXPECT_NE(array, nullptr);
    return ByteVector(array.get(), array.get() + descriptor.getTransportProtocolsCount());
}

} // namespace

TEST(TApplicationDescriptor, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(hex("00 03 00 FF FF"));
    const InDirtyMemory<TApplicationDescriptor> memory(bytes.data(), bytes.size());
    const TApplicationDescriptor& descriptor = *memory;
    EXPECT_EQ(descriptor.getDescriptorTag(), 0x00);
    EXPECT_EQ(descriptor.getData(), bytes.data());
    EXPECT_EQ(descriptor.getDataLength(), 5U);
    EXPECT_EQ(descriptor.getProfilesCount(), 0U);
    EXPECT_TRUE(taken(descriptor.getProfiles()).empty());
    EXPECT_FALSE(descriptor.isServiceBound());
    EXPECT_EQ(descriptor.getVisibility(), 0);
    EXPECT_FALSE(descriptor.isVisibileForUsers());
    EXPECT_FALSE(descriptor.isVisibileForApplications());
    EXPECT_EQ(descriptor.getApplicationPriority(), 0);
    EXPECT_EQ(descriptor.getTransportProtocolsCount(), 0);
    EXPECT_TRUE(labels(descriptor).empty());
}

TEST(TApplicationDescriptor, ShowsProfilesFlagsPriorityAndLabels) {
    const auto parsed = expectDescriptor<TApplicationDescriptor>(
        descriptor(0x00, body(hex("0002 01 02 03  0001 04 05 06"), hex("A0 07  11 22 33"))), 16);
    EXPECT_EQ(parsed->getProfilesCount(), 2U);
    EXPECT_EQ(taken(parsed->getProfiles()), (std::vector<QUOR_U16>{1, 2}));
    ASSERT_NE(parsed->getProfile(2), nullptr);
    EXPECT_EQ(parsed->getProfile(2)->getApplicationProfile(), 2);
    EXPECT_EQ(parsed->getProfile(2)->getVersionMajor(), 1);
    EXPECT_EQ(parsed->getProfile(2)->getVersionMinor(), 2);
    EXPECT_EQ(parsed->getProfile(2)->getVersionMicro(), 3);
    EXPECT_EQ(parsed->getProfile(1)->getVersionMajor(), 4);
    EXPECT_EQ(parsed->getProfile(3), nullptr);
    EXPECT_TRUE(parsed->isServiceBound());
    EXPECT_EQ(parsed->getVisibility(), 1);
    EXPECT_EQ(parsed->getApplicationPriority(), 7);
    EXPECT_EQ(labels(*parsed.object), hex("11 22 33"));
}

TEST(TApplicationDescriptor, NoProfilesAndTwoLabels) {
    const auto parsed = expectDescriptor<TApplicationDescriptor>(hex("00 05  00  60 05  01 02"), 5);
    EXPECT_EQ(parsed->getProfilesCount(), 0U);
    EXPECT_FALSE(parsed->isServiceBound());
    EXPECT_EQ(parsed->getVisibility(), 3);
    EXPECT_TRUE(parsed->isVisibileForUsers());
    EXPECT_TRUE(parsed->isVisibileForApplications());
    EXPECT_EQ(parsed->getApplicationPriority(), 5);
    EXPECT_EQ(parsed->getTransportProtocolsCount(), 2);
    EXPECT_EQ(labels(*parsed.object), hex("01 02"));
}

TEST(TApplicationDescriptor, VisibilityTellsUsersFromApplications) {
    struct Case {
        QUOR_U8 visibility;
        bool users;
        bool applications;
    };
    for (const Case& each : {Case{0, false, false}, Case{1, false, true}, Case{2, true, false}, Case{3, true, true}}) {
        SCOPED_TRACE(int{each.visibility});
        const auto flags = static_cast<QUOR_U8>(each.visibility << 5);
        const auto parsed = expectDescriptor<TApplicationDescriptor>({0x00, 0x03, 0x00, flags, 0x01}, 3);
        EXPECT_EQ(parsed->getVisibility(), each.visibility);
        EXPECT_EQ(parsed->isVisibileForUsers() != 0, each.users);
        EXPECT_EQ(parsed->isVisibileForApplications() != 0, each.applications);
        EXPECT_FALSE(parsed->isServiceBound());
    }
}

TEST(TApplicationDescriptor, EachFieldTakesAllItsBitsAndNoOthers) {
    const auto bound = expectDescriptor<TApplicationDescriptor>(hex("00 03  00  80 00"), 3);
    EXPECT_TRUE(bound->isServiceBound());
    EXPECT_EQ(bound->getVisibility(), 0);
    const auto notBound = expectDescriptor<TApplicationDescriptor>(hex("00 03  00  7F FF"), 3);
    EXPECT_FALSE(notBound->isServiceBound());
    EXPECT_EQ(notBound->getVisibility(), 3);
    EXPECT_EQ(notBound->getApplicationPriority(), 0xFF);
    const auto reserved = expectDescriptor<TApplicationDescriptor>(hex("00 03  00  1F 00"), 3);
    EXPECT_FALSE(reserved->isServiceBound());
    EXPECT_EQ(reserved->getVisibility(), 0);
    EXPECT_FALSE(reserved->isVisibileForUsers());
    EXPECT_FALSE(reserved->isVisibileForApplications());
    EXPECT_EQ(reserved->getApplicationPriority(), 0);
}

TEST(TApplicationDescriptor, WithoutLabelsAnEmptyArrayIsHandedOut) {
    const auto parsed = expectDescriptor<TApplicationDescriptor>(hex("00 03  00  00 00"), 3);
    EXPECT_EQ(parsed->getTransportProtocolsCount(), 0);
    EXPECT_TRUE(labels(*parsed.object).empty()); // which must be there to be deleted
}

TEST(TApplicationDescriptor, LabelsAreHandedOutAsANewCopyEachTime) {
    const auto parsed = expectDescriptor<TApplicationDescriptor>(hex("00 04  00  00 00  0A"), 4);
    const std::unique_ptr<QUOR_U8[]> first(parsed->getTransportProtocols());
    first[0] = 0xFF;
    EXPECT_EQ(labels(*parsed.object), hex("0A"));
}

TEST(TApplicationDescriptor, LastProfileOfANumberWins) {
    const auto parsed = expectDescriptor<TApplicationDescriptor>(
        descriptor(0x00, body(hex("0007 01 01 01  0007 02 02 02"), hex("00 00"))), 13);
    EXPECT_EQ(parsed->getProfilesCount(), 1U);
    EXPECT_EQ(taken(parsed->getProfiles()), std::vector<QUOR_U16>{7});
    EXPECT_EQ(parsed->getProfile(7)->getVersionMajor(), 2);
}

TEST(TApplicationDescriptor, FiftyProfilesFillTheDescriptor) {
    ByteVector profiles;
    for (unsigned number = 50; number > 0; --number) {
        profiles = join({profiles, u16(number * 0x0101), hex("01 00 00")});
    }
    const auto parsed =
        expectDescriptor<TApplicationDescriptor>(descriptor(0x00, body(profiles, hex("80 09  01 02"))), 255);
    EXPECT_EQ(parsed->getProfilesCount(), 50U);
    EXPECT_EQ(taken(parsed->getProfiles()).front(), 0x0101);
    EXPECT_EQ(taken(parsed->getProfiles()).back(), 0x3232);
    EXPECT_EQ(labels(*parsed.object), hex("01 02"));
}

TEST(TApplicationDescriptor, ProfilesLongerThanTheDescriptorFail) {
    expectFailure<TApplicationDescriptor>(
        hex("00 03  03  0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TApplicationDescriptor:: parse: Application Profiles Length exceeds Descriptor Length: 3 > 2. "
         "Aborting!"});
    expectFailure<TApplicationDescriptor>(
        hex("00 07  FF  0001 01 00 00 80"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TApplicationDescriptor:: parse: Application Profiles Length exceeds Descriptor Length: 255 > 6. "
         "Aborting!"});
}

TEST(TApplicationDescriptor, AProfileThatIsCutOffFails) {
    // The second profile gets what the profiles length leaves, not what the descriptor holds.
    expectFailure<TApplicationDescriptor>(
        hex("00 0F  07  0001 01 00 00  0002  80 01  01 02 03 04 05"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TApplicationDescriptorProfile::parse: Item length not valid: 2. Aborting!"});
    for (unsigned length = 1; length < 5; ++length) {
        expectFailure<TApplicationDescriptor>(
            descriptor(0x00, body(fill(length, 0x00), hex("80 01 02 03 04"))), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
            {"ISDBTUtils: TApplicationDescriptorProfile::parse: Item length not valid: " + std::to_string(length) +
             ". Aborting!"});
    }
}

TEST(TApplicationDescriptor, ProfilesThatLeaveNoRoomForFlagsAndPriorityFail) {
    const Lines exceeded{"ISDBTUtils: TApplicationDescriptor:: parse: Section length exceeded. Aborting!"};
    expectFailure<TApplicationDescriptor>(descriptor(0x00, body(hex("0001 01 00 00"), {})),
                                          TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeded);
    expectFailure<TApplicationDescriptor>(descriptor(0x00, body(hex("0001 01 00 00"), hex("80"))),
                                          TISDBTTable::ERROR_INVALID_DATA_LENGTH, exceeded);
}

TEST(TApplicationDescriptor, LabelsRunToTheEndOfTheCallersLength) {
    const auto parsed = expectDescriptor<TApplicationDescriptor>(overlong({}, hex("60 05  AA BB")), 5);
    EXPECT_EQ(labels(*parsed.object), hex("AA BB"));
}

TEST(TApplicationDescriptor, LabelsAreCountedInEightBits) {
    const auto most = expectDescriptor<TApplicationDescriptor>(overlong({}, join({hex("60 05"), fill(255, 0x01)})), 2);
    EXPECT_EQ(most->getTransportProtocolsCount(), 255);
    EXPECT_EQ(labels(*most.object), fill(255, 0x01));

    const auto none = expectDescriptor<TApplicationDescriptor>(overlong({}, join({hex("60 05"), fill(256, 0x01)})), 3);
    EXPECT_EQ(none->getTransportProtocolsCount(), 0);
    EXPECT_TRUE(labels(*none.object).empty());

    const auto few =
        expectDescriptor<TApplicationDescriptor>(overlong({}, join({hex("60 05"), hex("0A 0B"), fill(298, 0x02)})), 47);
    EXPECT_EQ(few->getTransportProtocolsCount(), 44);
    EXPECT_EQ(labels(*few.object), join({hex("0A 0B"), fill(42, 0x02)}));
}

TEST(TApplicationDescriptor, ParsedLengthIsKeptInEightBits) {
    // 258 bytes leave a body of 256.
    expectDescriptor<TApplicationDescriptor>(overlong({}, join({hex("60 05"), fill(253, 0x01)})), 0);
    expectDescriptor<TApplicationDescriptor>(overlong({}, join({hex("60 05"), fill(254, 0x01)})), 1);
}

TEST(TApplicationDescriptor, FiftyOneProfilesFillTheProfilesLength) {
    ByteVector profiles;
    for (unsigned number = 0; number < 51; ++number) {
        profiles = join({profiles, u16(number), hex("01 00 00")});
    }
    const auto parsed = expectDescriptor<TApplicationDescriptor>(overlong(profiles, hex("60 05")), 2);
    EXPECT_EQ(parsed->getProfilesCount(), 51U);
    EXPECT_EQ(parsed->getApplicationPriority(), 5);
}

TEST(TApplicationDescriptor, ACopyNeedsNeitherSourceNorBytes) {
    std::unique_ptr<TApplicationDescriptor> copy;
    {
        const auto parsed = parseBytes<TApplicationDescriptor>(
            descriptor(0x00, body(hex("0001 01 02 03  0002 04 05 06"), hex("E0 07  11 22"))));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<TApplicationDescriptor>(parsed.object.get());
        EXPECT_NE(copy->getProfile(1), parsed->getProfile(1));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x00);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(taken(copy->getProfiles()), (std::vector<QUOR_U16>{1, 2}));
    EXPECT_EQ(copy->getProfile(1)->getVersionMicro(), 3);
    EXPECT_EQ(copy->getProfile(2)->getVersionMajor(), 4);
    EXPECT_TRUE(copy->isServiceBound());
    EXPECT_EQ(copy->getVisibility(), 3);
    EXPECT_TRUE(copy->isVisibileForUsers());
    EXPECT_TRUE(copy->isVisibileForApplications());
    EXPECT_EQ(copy->getApplicationPriority(), 7);
    EXPECT_EQ(labels(*copy), hex("11 22"));
}

TEST(TApplicationDescriptor, EachFlagIsCopiedAsItIs) {
    for (const QUOR_U8 flags : {QUOR_U8{0x00}, QUOR_U8{0x20}, QUOR_U8{0x40}, QUOR_U8{0x80}}) {
        const auto parsed = parseBytes<TApplicationDescriptor>({0x00, 0x03, 0x00, flags, 0x00});
        ASSERT_NE(parsed.object, nullptr);
        const TApplicationDescriptor copy(parsed.object.get());
        EXPECT_EQ(copy.isServiceBound() != 0, flags == 0x80);
        EXPECT_EQ(copy.getVisibility(), flags >> 5 & 3);
        EXPECT_EQ(copy.isVisibileForUsers() != 0, flags == 0x40);
        EXPECT_EQ(copy.isVisibileForApplications() != 0, flags == 0x20);
    }
}

TEST(TApplicationDescriptor, ACopyWithoutProfilesAndLabelsIsEmpty) {
    const auto parsed = parseBytes<TApplicationDescriptor>(hex("00 03  00  00 00"));
    ASSERT_NE(parsed.object, nullptr);
    const TApplicationDescriptor copy(parsed.object.get());
    EXPECT_EQ(copy.getProfilesCount(), 0U);
    EXPECT_EQ(copy.getTransportProtocolsCount(), 0);
    EXPECT_TRUE(labels(copy).empty());
}

TEST(TApplicationDescriptor, ACopyTakesAsManyLabelsAsAreCounted) {
    for (const std::size_t count : {255U, 256U, 257U, 300U}) {
        const auto parsed = parseBytes<TApplicationDescriptor>(overlong({}, join({hex("60 05"), fill(count, 0x01)})));
        ASSERT_NE(parsed.object, nullptr);
        const TApplicationDescriptor copy(parsed.object.get());
        EXPECT_EQ(labels(copy), fill(count % 256, 0x01));
    }
}

TEST(TApplicationDescriptor, TheCopyAndItsSourceChangeApart) {
    const auto parsed = parseBytes<TApplicationDescriptor>(descriptor(0x00, body(hex("0001 01 02 03"), hex("E0 07"))));
    ASSERT_NE(parsed.object, nullptr);
    TApplicationDescriptor copy(parsed.object.get());
    EXPECT_TRUE(copy.removeProfile(1));
    EXPECT_EQ(parsed->getProfilesCount(), 1U);
}

TEST(TApplicationDescriptor, DamageIsSurvived) {
    const ByteVector good = descriptor(0x00, body(hex("0001 01 02 03  0002 04 05 06"), hex("E0 07  11 22")));
    expectEveryPrefixSurvives<TApplicationDescriptor>(good);
    expectEveryByteChangeSurvives<TApplicationDescriptor>(good);
}
