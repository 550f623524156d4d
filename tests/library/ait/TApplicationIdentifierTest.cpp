#include "ait/TApplicationIdentifier.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Quor::TApplicationIdentifier;
using Quor::TISDBTTable;

static_assert(std::has_virtual_destructor<TApplicationIdentifier>::value, "receivers may derive from it");

EXPECT_GETTER(QUOR_U32, TApplicationIdentifier, getOrganizationID);
EXPECT_GETTER(QUOR_U16, TApplicationIdentifier, getApplicationID);

TEST(TApplicationIdentifier, Constants) {
    const auto& minimum = TApplicationIdentifier::MINIMUM_DESCRIPTOR_LENGTH;
    EXPECT_EQ(minimum, 6U);
}

TEST(TApplicationIdentifier, StartsWithZeros) {
    const InDirtyMemory<TApplicationIdentifier> memory;
    const TApplicationIdentifier& identifier = *memory;
    EXPECT_EQ(identifier.getOrganizationID(), 0U);
    EXPECT_EQ(identifier.getApplicationID(), 0);
}

TEST(TApplicationIdentifier, IsMadeOfOrganisationAndApplication) {
    TApplicationIdentifier identifier(0x01020304, 0x0506);
    EXPECT_EQ(identifier.getOrganizationID(), 0x01020304U);
    EXPECT_EQ(identifier.getApplicationID(), 0x0506);
    const TApplicationIdentifier copy(&identifier);
    EXPECT_EQ(copy.getOrganizationID(), 0x01020304U);
    EXPECT_EQ(copy.getApplicationID(), 0x0506);
}

TEST(TApplicationIdentifier, ShowsItsFields) {
    const auto parsed = parseEntry<TApplicationIdentifier>(hex("01020304 0506"));
    ASSERT_NE(parsed.object, nullptr);
    EXPECT_EQ(parsed.error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed.length, 6U);
    EXPECT_EQ(parsed.lines, Lines{});
    EXPECT_EQ(parsed->getOrganizationID(), 0x01020304U);
    EXPECT_EQ(parsed->getApplicationID(), 0x0506);
}

TEST(TApplicationIdentifier, EachFieldTakesAllItsBitsAndNoOthers) {
    const auto organisation = parseEntry<TApplicationIdentifier>(hex("FFFFFFFF 0000"));
    EXPECT_EQ(organisation->getOrganizationID(), 0xFFFFFFFFU);
    EXPECT_EQ(organisation->getApplicationID(), 0);
    const auto application = parseEntry<TApplicationIdentifier>(hex("00000000 FFFF"));
    EXPECT_EQ(application->getOrganizationID(), 0U);
    EXPECT_EQ(application->getApplicationID(), 0xFFFF);
}

TEST(TApplicationIdentifier, LeavesTheBytesBehindIt) {
    const auto parsed = parseEntry<TApplicationIdentifier>(hex("00000001 0002 FFFF"));
    EXPECT_EQ(parsed.length, 6U);
    EXPECT_EQ(parsed->getApplicationID(), 2);
}

TEST(TApplicationIdentifier, LessThanSixBytesFail) {
    for (unsigned size = 0; size < 6; ++size) {
        const auto parsed = parseEntry<TApplicationIdentifier>(fill(size, 0xFF));
        EXPECT_EQ(parsed.object, nullptr);
        EXPECT_EQ(parsed.error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(parsed.length, PRESET_LENGTH);
        EXPECT_EQ(parsed.lines, Lines{"ISDBTUtils: TApplicationIdentifier::parse: Item length not valid: " +
                                      std::to_string(size) + ". Aborting!"});
    }
}

TEST(TApplicationIdentifier, NeedsNowhereToWriteCodeAndLength) {
    const HeapBytes bytes(hex("00000001 0002"));
    const LogCapture log;
    const std::unique_ptr<TApplicationIdentifier> identifier(
        TApplicationIdentifier::parse(bytes.data(), 6, 0, nullptr, nullptr));
    EXPECT_NE(identifier, nullptr);
    EXPECT_EQ(log.lines(), Lines{});
    EXPECT_EQ(TApplicationIdentifier::parse(bytes.data(), 5, 0, nullptr, nullptr), nullptr);
    EXPECT_EQ(log.lines(), Lines{"ISDBTUtils: TApplicationIdentifier::parse: Item length not valid: 5. Aborting!"});
    expectLevelAndTag(log);
}

TEST(TApplicationIdentifier, TheSwitchForDescriptorsIsIgnored) {
    const HeapBytes bytes(hex("00000001 0002"));
    for (const int parseDescriptors : {0, 1, -1}) {
        const std::unique_ptr<TApplicationIdentifier> identifier(
            TApplicationIdentifier::parse(bytes.data(), 6, parseDescriptors, nullptr, nullptr));
        ASSERT_NE(identifier, nullptr);
        EXPECT_EQ(identifier->getApplicationID(), 2);
    }
}

TEST(TApplicationIdentifier, KeysAreTwelveUpperCaseDigits) {
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(0xABCD, 0x12), "0000ABCD0012");
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(0, 0), "000000000000");
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(0xFFFFFFFF, 0xFFFF), "FFFFFFFFFFFF");
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(0x12345678, 0x9ABC), "123456789ABC");
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(0xDEADBEEF, 0xFEED), "DEADBEEFFEED");
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(1, 0), "000000010000");
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(0, 1), "000000000001");
}

TEST(TApplicationIdentifier, AnIdentifierHasTheKeyOfItsFields) {
    TApplicationIdentifier identifier(0xABCD, 0x12);
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(&identifier), "0000ABCD0012");
    TApplicationIdentifier zeros;
    EXPECT_EQ(TApplicationIdentifier::calculateHashID(&zeros), "000000000000");
}

TEST(TApplicationIdentifier, KeysSortAsTheirFields) {
    const auto key = [](QUOR_U32 organisation, QUOR_U16 application) {
        return TApplicationIdentifier::calculateHashID(organisation, application);
    };
    EXPECT_LT(key(0, 0xFFFF), key(1, 0));
    EXPECT_LT(key(1, 2), key(1, 10));
    EXPECT_LT(key(9, 9), key(10, 0));
    EXPECT_LT(key(0x7FFFFFFF, 0), key(0x80000000, 0));
    EXPECT_LT(key(0x99, 0), key(0xA0, 0));
}
