#include "sdt/TServiceDescription.h"

#include "ServiceKinds.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TServiceDescription;
using testing::ElementsAre;

using Tags = std::vector<QUOR_U8>;

namespace {

std::string line(const std::string& rest) {
    return "ISDBTUtils: TServiceDescription::parse: " + rest;
}

class TServiceDescriptionKind : public testing::TestWithParam<ServiceKind> {};

} // namespace

TEST(TServiceDescription, Constants) {
    EXPECT_CONSTANT(QUOR_U16, TServiceDescription::RUNNING_STATUS_NOT_RUNNING, 1);
    EXPECT_CONSTANT(QUOR_U16, TServiceDescription::RUNNING_STATUS_STARTS_IN_A_FEW_MINUTES, 2);
    EXPECT_CONSTANT(QUOR_U16, TServiceDescription::RUNNING_STATUS_PAUSING, 3);
    EXPECT_CONSTANT(QUOR_U16, TServiceDescription::RUNNING_STATUS_RUNNING, 4);
    EXPECT_CONSTANT(QUOR_U16, TServiceDescription::FREE_CA_MODE_NOT_SCRAMBLED, 0);
    EXPECT_CONSTANT(QUOR_U16, TServiceDescription::FREE_CA_MODE_CA_SYSTEM, 1);
}

TEST(TServiceDescription, Getters) {
    EXPECT_GETTER(QUOR_U16, TServiceDescription, getServiceID);
    EXPECT_GETTER(QUOR_BOOL, TServiceDescription, hasEITSchedule);
    EXPECT_GETTER(QUOR_BOOL, TServiceDescription, hasEITPresentFollowing);
    EXPECT_GETTER(QUOR_U8, TServiceDescription, getRunningStatus);
    EXPECT_GETTER(QUOR_U8, TServiceDescription, getFreeCAMode);
    EXPECT_GETTER(std::list<QUOR_U8>*, TServiceDescription, getDescriptorTags);
}

TEST(TServiceDescription, StartsEmpty) {
    const InDirtyMemory<TServiceDescription> service;
    EXPECT_EQ(service->getServiceID(), 0);
    EXPECT_FALSE(service->hasEITSchedule());
    EXPECT_FALSE(service->hasEITPresentFollowing());
    EXPECT_EQ(service->getRunningStatus(), 0);
    EXPECT_EQ(service->getFreeCAMode(), 0);
    EXPECT_EQ(taken(service->getDescriptorTags()), Tags{});
    for (const ServiceKind& kind : serviceKinds()) {
        EXPECT_EQ(kind.ofEntry(*service), nullptr) << kind.name;
        EXPECT_EQ(service->getDescriptor(kind.tag), nullptr) << kind.name;
    }
}

TEST(TServiceDescription, ReadsItsFields) {
    const auto service = expectEntry<TServiceDescription>(hex("FEDC 03 9000"), 5);
    EXPECT_EQ(service->getServiceID(), 0xFEDC);
    EXPECT_TRUE(service->hasEITSchedule());
    EXPECT_TRUE(service->hasEITPresentFollowing());
    EXPECT_EQ(service->getRunningStatus(), TServiceDescription::RUNNING_STATUS_RUNNING);
    EXPECT_EQ(service->getFreeCAMode(), TServiceDescription::FREE_CA_MODE_CA_SYSTEM);
}

TEST(TServiceDescription, FieldsTakeTheirBitsAlone) {
    const auto schedule = expectEntry<TServiceDescription>(hex("0001 02 0000"), 5);
    EXPECT_TRUE(schedule->hasEITSchedule());
    EXPECT_FALSE(schedule->hasEITPresentFollowing());
    const auto present = expectEntry<TServiceDescription>(hex("0001 01 0000"), 5);
    EXPECT_FALSE(present->hasEITSchedule());
    EXPECT_TRUE(present->hasEITPresentFollowing());
    const auto reserved = expectEntry<TServiceDescription>(hex("0001 FC 0000"), 5);
    EXPECT_FALSE(reserved->hasEITSchedule());
    EXPECT_FALSE(reserved->hasEITPresentFollowing());
    const auto status = expectEntry<TServiceDescription>(hex("0001 00 E000"), 5);
    EXPECT_EQ(status->getRunningStatus(), 7);
    EXPECT_EQ(status->getFreeCAMode(), 0);
    const auto mode = expectEntry<TServiceDescription>(hex("0001 00 1000"), 5);
    EXPECT_EQ(mode->getRunningStatus(), 0);
    EXPECT_EQ(mode->getFreeCAMode(), 1);
}

TEST(TServiceDescription, KeepsEveryRunningStatus) {
    for (QUOR_U8 status = 0; status < 8; ++status) {
        const auto service =
            expectEntry<TServiceDescription>(join({hex("0001 00"), {static_cast<QUOR_U8>(status << 5U), 0x00}}), 5);
        EXPECT_EQ(service->getRunningStatus(), status);
    }
}

TEST(TServiceDescription, BytesBehindItsDescriptorsAreNotItsOwn) {
    const auto service =
        expectEntry<TServiceDescription>(join({serviceEntry(1, hex("47 01 41")), hex("47 01 42 FFFF")}), 8);
    EXPECT_EQ(service->getBouquetNameDescriptor()->getBouquetName(), "A");
}

TEST(TServiceDescription, LengthOfTheDescriptorsHas12Bits) {
    ByteVector descriptors = descriptor(0x80, fill(238, 0x00));
    Lines lines{line("Unknown descriptor: 0x80. Ignored!")};
    for (int i = 0; i < 15; ++i) {
        descriptors = join({descriptors, descriptor(0x81, fill(255, 0x00))});
        lines.push_back(line("Unknown descriptor: 0x81. Ignored!"));
    }
    const auto service = expectEntry<TServiceDescription>(join({hex("0001 00 2FFF"), descriptors}), 5 + 4095, lines);
    EXPECT_EQ(service->getRunningStatus(), 1);
    EXPECT_EQ(service->getFreeCAMode(), 0);
}

TEST(TServiceDescription, HoldsAllKinds) {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(serviceKinds(), all);
    const auto service =
        expectEntry<TServiceDescription>(serviceEntry(1, descriptors), 5 + static_cast<QUOR_U32>(descriptors.size()));
    EXPECT_EQ(taken(service->getDescriptorTags()), tagsOf(serviceKinds()));
    for (const ServiceKind& kind : serviceKinds()) {
        ASSERT_NE(kind.ofEntry(*service.object), nullptr) << kind.name;
        EXPECT_EQ(kind.ofEntry(*service.object), service->getDescriptor(kind.tag)) << kind.name;
    }
}

TEST(TServiceDescription, ListsSubsetsOfTagsInTheSameOrder) {
    const std::vector<ServiceKind> kinds = serviceKinds();
    for (unsigned subset = 0; subset < 1U << kinds.size(); ++subset) {
        const auto wanted = [&](std::size_t i) { return (subset >> i & 1U) != 0; };
        const auto service = parseEntry<TServiceDescription>(serviceEntry(1, descriptorsOf(kinds, wanted)));
        ASSERT_NE(service.object, nullptr);
        ASSERT_EQ(taken(service->getDescriptorTags()), tagsOf(kinds, wanted));
    }
}

TEST(TServiceDescription, HoldsNothingUnderOtherTags) {
    const auto service = expectEntry<TServiceDescription>(serviceEntry(1, hex("42 01 00  47 01 41")), 11);
    EXPECT_EQ(service->getDescriptor(0x42), nullptr);
    EXPECT_EQ(service->getDescriptor(0x40), nullptr);
    EXPECT_EQ(service->getDescriptor(0x00), nullptr);
    EXPECT_EQ(service->getDescriptor(0xFF), nullptr);
}

TEST(TServiceDescription, StuffingIsSkippedSilentlyAndUnknownTagsAreLogged) {
    const auto service = expectEntry<TServiceDescription>(
        serviceEntry(1, hex("42 00  50 03 010000  42 02 FFFF  FF 00  47 01 41")), 5 + 2 + 5 + 4 + 2 + 3,
        {line("Unknown descriptor: 0x50. Ignored!"), line("Unknown descriptor: 0xFF. Ignored!")});
    EXPECT_EQ(taken(service->getDescriptorTags()), (Tags{0x47}));
}

TEST_P(TServiceDescriptionKind, IsHeld) {
    const ServiceKind& kind = GetParam();
    const auto service = expectEntry<TServiceDescription>(serviceEntry(1, kind.good),
                                                          5 + static_cast<QUOR_U32>(kind.good.size()), kind.lines);
    Quor::TISDBTDescriptor* const held = kind.ofEntry(*service.object);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getDescriptorTag(), kind.tag);
    EXPECT_EQ(held->getData(), service.bytes.data() + 5);
    EXPECT_EQ(held->getDataLength(), kind.good.size());
    EXPECT_EQ(service->getDescriptor(kind.tag), held);
    EXPECT_EQ(taken(service->getDescriptorTags()), (Tags{kind.tag}));
    for (const ServiceKind& other : serviceKinds()) {
        if (other.tag != kind.tag) {
            EXPECT_EQ(other.ofEntry(*service.object), nullptr) << other.name;
        }
    }
}

TEST_P(TServiceDescriptionKind, LastOneWins) {
    const ServiceKind& kind = GetParam();
    const auto service = expectEntry<TServiceDescription>(serviceEntry(1, join({kind.good, kind.good})),
                                                          5 + 2 * static_cast<QUOR_U32>(kind.good.size()));
    ASSERT_NE(kind.ofEntry(*service.object), nullptr);
    EXPECT_EQ(kind.ofEntry(*service.object)->getData(), service.bytes.data() + 5 + kind.good.size());
    EXPECT_EQ(taken(service->getDescriptorTags()), (Tags{kind.tag}));
}

TEST_P(TServiceDescriptionKind, FailureOfItsParseIsPassedOn) {
    const ServiceKind& kind = GetParam();
    expectNoEntry<TServiceDescription>(serviceEntry(1, join({kind.good, kind.bad, hex("50 00")})), kind.badCode,
                                       kind.badLines);
}

INSTANTIATE_TEST_SUITE_P(, TServiceDescriptionKind, testing::ValuesIn(serviceKinds()), kindName<ServiceKind>);

TEST(TServiceDescription, OtherFailuresOfADescriptorArePassedOnToo) {
    expectNoEntry<TServiceDescription>(
        serviceEntry(1, hex("48 03 01 02 41")), TISDBTTable::ERROR_INVALID_STRING,
        Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 2 > 1.Aborting!",
              "ISDBTUtils: TServiceDescriptor:: parse: ERROR: parsing Service Provider Name. Aborting!"});
}

TEST(TServiceDescription, NeedsFiveBytes) {
    for (QUOR_U8 size = 0; size < 5; ++size) {
        expectNoEntry<TServiceDescription>(
            fill(size, 0x00), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
            Lines{line("Item length not valid: " + std::to_string(size) + ". Aborting!")});
    }
}

TEST(TServiceDescription, DescriptorsPastTheEndFail) {
    expectNoEntry<TServiceDescription>(hex("0001 FD 8004 47 01 41"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       Lines{line("Item length not valid: 4 > 3. Aborting!")});
    expectNoEntry<TServiceDescription>(hex("0001 FD FFFF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       Lines{line("Item length not valid: 4095 > 0. Aborting!")});
}

TEST(TServiceDescription, DescriptorLongerThanWhatIsLeftFails) {
    // The line shows all that is left, the two header bytes included.
    expectNoEntry<TServiceDescription>(hex("0001 FD 8004  47 03 4142"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       Lines{line("Item length not valid: 3 > 4. Aborting!")});
    expectNoEntry<TServiceDescription>(hex("0001 FD 8005  47 01 41  47 FF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       Lines{line("Item length not valid: 255 > 2. Aborting!")});
    expectNoEntry<TServiceDescription>(hex("0001 FD 8004  42 03 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       Lines{line("Item length not valid: 3 > 4. Aborting!")});
    expectNoEntry<TServiceDescription>(hex("0001 FD 8004  50 03 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       Lines{line("Item length not valid: 3 > 4. Aborting!")});
}

TEST(TServiceDescription, DescriptorWithoutAWholeHeaderFails) {
    expectNoEntry<TServiceDescription>(hex("0001 FD 8001  47"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       ElementsAre(lengthLine("TServiceDescription")));
    expectNoEntry<TServiceDescription>(
        hex("0001 FD 8003  50 00  47"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        ElementsAre(line("Unknown descriptor: 0x50. Ignored!"), lengthLine("TServiceDescription")));
}

TEST(TServiceDescription, DescriptorThatOverrunsItsLoopIsReadAndTheWalkGoesOn) {
    // Two bytes of descriptors are stated; what follows is read as descriptors until the bytes end.
    expectNoEntry<TServiceDescription>(
        hex("0001 FD 8002  50 01 00  40 00  47 05 4142"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x50. Ignored!"), line("Unknown descriptor: 0x40. Ignored!"),
              line("Item length not valid: 5 > 4. Aborting!")});
    expectNoEntry<TServiceDescription>(hex("0001 FD 8002  50 01 00  40 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                       ElementsAre(line("Unknown descriptor: 0x50. Ignored!"),
                                                   line("Unknown descriptor: 0x40. Ignored!"),
                                                   lengthLine("TServiceDescription")));
}

TEST(TServiceDescription, OverrunLoopEndsWhenItsSixteenBitsComeToZero) {
    // 3 - 4 leaves 65535, which 255 descriptors of 257 bytes use up.
    ByteVector wire = hex("0001 FD 8003  42 02 0000");
    const ByteVector stuffing = descriptor(0x42, fill(255, 0x00));
    for (int i = 0; i < 255; ++i) {
        wire.insert(wire.end(), stuffing.begin(), stuffing.end());
    }
    expectEntry<TServiceDescription>(join({wire, hex("47 01 41")}), 5 + 4 + 65535);
}
