#include "pmt/TProgramMap.h"

#include "ProgramKinds.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;
using Quor::TPMTTable;
using Quor::TProgramMap;
using testing::ElementsAre;

using Tags = std::vector<QUOR_U8>;

namespace {

std::string line(const std::string& rest) {
    return "ISDBTUtils: TProgramMap::parse: " + rest;
}

class TProgramMapKind : public testing::TestWithParam<ProgramKind> {};

} // namespace

TEST(TProgramMap, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X01, 1);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X02, 3); // not 2
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X03, 3);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X04, 4);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_SECTION, 5);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_PES_PACKAGE, 6);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X07, 7);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X08, 8);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X09, 9);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X0A, 10);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X0B, 11);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X0C, 12);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X0D, 13);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X0E, 14);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X0F, 15);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X10, 16);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_0X11, 17);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_PES, 18);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_PKG_STREAM_OR_FLEXMUX_STREAM_14496, 19);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_DOWN_SYNC_PROTOCOL, 20);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_PES_PACKAGE, 21);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_METADATA_SECTION, 22);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_DATA_CAROUSEL, 23);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_METADATA_TRANSP_BY_OBJECT_CAROUSEL, 24);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_METADATA_TRANSP_DOWNLOAD_SYNC_PROT, 25);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_IPMP_STREAM, 26);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_VIDEO, 27);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_DATA_PIPING, 126);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_IPMP_STREAM_2, 127);
    EXPECT_CONSTANT(QUOR_U8, TProgramMap::STREAM_TYPE_AC3, 0x81);
}

TEST(TProgramMap, Getters) {
    EXPECT_GETTER(QUOR_U8, TProgramMap, getStreamType);
    EXPECT_GETTER(QUOR_U16, TProgramMap, getElementaryPID);
    EXPECT_GETTER(std::list<QUOR_U8>*, TProgramMap, getDescriptorTags);
}

TEST(TProgramMap, StartsEmpty) {
    const InDirtyMemory<TProgramMap> map;
    EXPECT_EQ(map->getStreamType(), 0);
    EXPECT_EQ(map->getElementaryPID(), 0);
    EXPECT_EQ(taken(map->getDescriptorTags()), Tags{});
    for (const ProgramKind& kind : programKinds()) {
        EXPECT_EQ(kind.ofEntry(*map), nullptr) << kind.name;
        EXPECT_EQ(map->getDescriptor(kind.tag), nullptr) << kind.name;
    }
}

TEST(TProgramMap, ReadsItsFields) {
    const auto map = expectEntry<TProgramMap>(hex("1B E111 F000"), 5);
    EXPECT_EQ(map->getStreamType(), TProgramMap::STREAM_TYPE_VIDEO);
    EXPECT_EQ(map->getElementaryPID(), 0x0111);
    EXPECT_EQ(taken(map->getDescriptorTags()), Tags{});
}

TEST(TProgramMap, FieldsTakeTheirBitsAlone) {
    const auto pid = expectEntry<TProgramMap>(hex("FF 1FFF 0000"), 5);
    EXPECT_EQ(pid->getStreamType(), 0xFF);
    EXPECT_EQ(pid->getElementaryPID(), 0x1FFF);
    const auto reserved = expectEntry<TProgramMap>(hex("00 E000 F000"), 5);
    EXPECT_EQ(reserved->getStreamType(), 0);
    EXPECT_EQ(reserved->getElementaryPID(), 0);
}

TEST(TProgramMap, BytesBehindItsDescriptorsAreNotItsOwn) {
    const auto map = expectEntry<TProgramMap>(join({stream(0x1B, 0x111, hex("52 01 10")), hex("52 01 11 FFFF")}), 8);
    EXPECT_EQ(map->getStreamIdentifierDescriptor(0, nullptr)->getComponentTag(), 0x10);
}

TEST(TProgramMap, LengthOfTheDescriptorsHas12Bits) {
    ByteVector descriptors = descriptor(0x80, fill(238, 0x00));
    Lines lines{line("Unknown descriptor: 0x80. Ignored!")};
    for (int i = 0; i < 15; ++i) {
        descriptors = join({descriptors, descriptor(0x81, fill(255, 0x00))});
        lines.push_back(line("Unknown descriptor: 0x81. Ignored!"));
    }
    expectEntry<TProgramMap>(stream(0x1B, 0x111, descriptors), 5 + 4095, lines);
}

TEST(TProgramMap, HoldsAllKinds) {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(programKinds(), all);
    const auto map = parseEntry<TProgramMap>(stream(0x1B, 0x111, descriptors));
    ASSERT_NE(map.object, nullptr);
    EXPECT_EQ(map.length, 5 + descriptors.size());
    EXPECT_EQ(taken(map->getDescriptorTags()), tagsOf(programKinds()));
    for (const ProgramKind& kind : programKinds()) {
        ASSERT_NE(kind.ofEntry(*map.object), nullptr) << kind.name;
        EXPECT_EQ(kind.ofEntry(*map.object), map->getDescriptor(kind.tag)) << kind.name;
    }
}

TEST(TProgramMap, ListsSubsetsOfTagsInTheSameOrder) {
    const std::vector<ProgramKind> kinds = programKinds();
    for (std::size_t first = 0; first < kinds.size(); ++first) {
        for (std::size_t step = 1; step < 5; ++step) {
            const auto wanted = [&](std::size_t i) { return i >= first && (i - first) % step == 0; };
            const auto map = parseEntry<TProgramMap>(stream(0x1B, 0x111, descriptorsOf(kinds, wanted)));
            ASSERT_NE(map.object, nullptr);
            ASSERT_EQ(taken(map->getDescriptorTags()), tagsOf(kinds, wanted));
        }
    }
}

TEST(TProgramMap, HoldsNothingUnderOtherTags) {
    const auto map = expectEntry<TProgramMap>(stream(0x1B, 0x111, hex("52 01 10")), 8);
    EXPECT_EQ(map->getDescriptor(0x42), nullptr);
    EXPECT_EQ(map->getDescriptor(0x48), nullptr);
    EXPECT_EQ(map->getDescriptor(0x00), nullptr);
    EXPECT_EQ(map->getDescriptor(0xFF), nullptr);
}

TEST(TProgramMap, UnknownTagsAreLoggedStuffingToo) {
    const auto map = expectEntry<TProgramMap>(
        stream(0x1B, 0x111, hex("42 00  48 03 010000  42 02 FFFF  FF 00  52 01 10")), 5 + 2 + 5 + 4 + 2 + 3,
        {line("Unknown descriptor: 0x42. Ignored!"), line("Unknown descriptor: 0x48. Ignored!"),
         line("Unknown descriptor: 0x42. Ignored!"), line("Unknown descriptor: 0xFF. Ignored!")});
    EXPECT_EQ(taken(map->getDescriptorTags()), (Tags{0x52}));
}

TEST_P(TProgramMapKind, IsHeld) {
    const ProgramKind& kind = GetParam();
    const auto map = expectEntry<TProgramMap>(stream(0x1B, 0x111, kind.good),
                                              5 + static_cast<QUOR_U32>(kind.good.size()), kind.lines);
    TISDBTDescriptor* const held = kind.ofEntry(*map.object);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getDescriptorTag(), kind.tag);
    EXPECT_EQ(held->getData(), map.bytes.data() + 5);
    EXPECT_EQ(held->getDataLength(), kind.good.size());
    EXPECT_EQ(map->getDescriptor(kind.tag), held);
    EXPECT_EQ(taken(map->getDescriptorTags()), (Tags{kind.tag}));
    for (const ProgramKind& other : programKinds()) {
        if (other.tag != kind.tag) {
            EXPECT_EQ(other.ofEntry(*map.object), nullptr) << other.name;
        }
    }
}

TEST_P(TProgramMapKind, LastOneWins) {
    const ProgramKind& kind = GetParam();
    const auto map = parseEntry<TProgramMap>(stream(0x1B, 0x111, join({kind.good, kind.good})));
    ASSERT_NE(map.object, nullptr);
    ASSERT_NE(kind.ofEntry(*map.object), nullptr);
    EXPECT_EQ(kind.ofEntry(*map.object)->getData(), map.bytes.data() + 5 + kind.good.size());
    EXPECT_EQ(taken(map->getDescriptorTags()), (Tags{kind.tag}));
}

TEST_P(TProgramMapKind, FailureOfItsParseIsPassedOn) {
    const ProgramKind& kind = GetParam();
    Lines logged = kind.lines;
    logged.insert(logged.end(), kind.badLines.begin(), kind.badLines.end());
    expectNoEntry<TProgramMap>(stream(0x1B, 0x111, join({kind.good, kind.bad, hex("48 00")})), kind.badCode, logged);
}

TEST_P(TProgramMapKind, IsInheritedFromTheTable) {
    const ProgramKind& kind = GetParam();
    const auto table = expectTable<TPMTTable>(pmt(kind.good, stream(0x1B, 0x111)), kind.lines);
    TProgramMap* const map = table->getProgramMap(0);
    ASSERT_NE(map, nullptr);
    map->setParentPMTTable(table.object.get());
    TISDBTDescriptor* const common = kind.ofTable(*table.object);
    ASSERT_NE(common, nullptr);

    int inherited = 0;
    EXPECT_EQ(kind.ofStream(*map, 0, &inherited), nullptr);
    EXPECT_EQ(inherited, 0);
    EXPECT_EQ(kind.ofStream(*map, 1, &inherited), common);
    EXPECT_EQ(inherited, 1);
    EXPECT_EQ(kind.ofStream(*map, 1, nullptr), common);
    inherited = 77;
    EXPECT_EQ(kind.ofStream(*map, -1, &inherited), common) << "any number but 0 asks for it";
    EXPECT_EQ(inherited, 1);

    // What is inherited is not the stream's own.
    EXPECT_EQ(map->getDescriptor(kind.tag), nullptr);
    EXPECT_EQ(taken(map->getDescriptorTags()), Tags{});
    for (const ProgramKind& other : programKinds()) {
        if (other.tag != kind.tag) {
            inherited = 77;
            EXPECT_EQ(other.ofStream(*map, 1, &inherited), nullptr) << other.name;
            EXPECT_EQ(inherited, 77) << other.name;
        }
    }
}

TEST_P(TProgramMapKind, OwnOneWinsOverTheTable) {
    const ProgramKind& kind = GetParam();
    const auto table = parseSection<TPMTTable>(pmt(kind.good, stream(0x1B, 0x111, kind.good)));
    ASSERT_NE(table.object, nullptr);
    TProgramMap* const map = table->getProgramMap(0);
    map->setParentPMTTable(table.object.get());
    TISDBTDescriptor* const own = map->getDescriptor(kind.tag);
    ASSERT_NE(own, nullptr);
    EXPECT_NE(own, kind.ofTable(*table.object));
    int inherited = 77;
    EXPECT_EQ(kind.ofStream(*map, 1, &inherited), own);
    EXPECT_EQ(kind.ofStream(*map, 0, &inherited), own);
    EXPECT_EQ(inherited, 77) << "never set to 0";
}

TEST_P(TProgramMapKind, IsNotInheritedWithoutATable) {
    const ProgramKind& kind = GetParam();
    int inherited = 77;
    const TProgramMap orphan;
    EXPECT_EQ(kind.ofStream(orphan, 1, &inherited), nullptr);
    const auto owner = parseEntry<TProgramMap>(stream(0x1B, 0x111, kind.good));
    ASSERT_NE(owner.object, nullptr);
    EXPECT_NE(kind.ofStream(*owner.object, 1, &inherited), nullptr);

    // Neither parse nor add links the streams.
    const auto table = parseSection<TPMTTable>(pmt(kind.good, stream(0x1B, 0x111)));
    ASSERT_NE(table.object, nullptr);
    EXPECT_EQ(kind.ofStream(*table->getProgramMap(0), 1, &inherited), nullptr);
    auto* const added = new TProgramMap;
    table->addProgramMap(added);
    EXPECT_EQ(kind.ofStream(*added, 1, &inherited), nullptr);

    added->setParentPMTTable(table.object.get());
    added->setParentPMTTable(nullptr);
    EXPECT_EQ(kind.ofStream(*added, 1, &inherited), nullptr);
    EXPECT_EQ(inherited, 77);
}

INSTANTIATE_TEST_SUITE_P(, TProgramMapKind, testing::ValuesIn(programKinds()), kindName<ProgramKind>);

TEST(TProgramMap, InheritsAParentalRating) {
    const auto table = expectTable<TPMTTable>(pmt(hex("55 04 425241 05"), stream(0x1B, 0x111)));
    TProgramMap* const map = table->getProgramMap(0);
    map->setParentPMTTable(table.object.get());
    int inherited = 0;
    EXPECT_EQ(map->getParentalRatingDescriptor(0, &inherited), nullptr);
    EXPECT_EQ(inherited, 0);
    ASSERT_EQ(map->getParentalRatingDescriptor(1, &inherited), table->getParentalRatingDescriptor());
    EXPECT_EQ(map->getParentalRatingDescriptor(1, &inherited)->get(0)->getRating(), 5);
    EXPECT_EQ(inherited, 1);
}

TEST(TProgramMap, OtherFailuresOfADescriptorArePassedOnToo) {
    expectNoEntry<TProgramMap>(stream(0x0F, 0x112, hex("7C 02 28 80")), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                               Lines{"ISDBTUtils: TAACDescriptor::parse: Longer data length is required: 0 < 1. "
                                     "Aborting!"});
}

TEST(TProgramMap, NeedsFiveBytes) {
    for (QUOR_U8 size = 0; size < 5; ++size) {
        expectNoEntry<TProgramMap>(fill(size, 0x00), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                   Lines{line("Item length not valid: " + std::to_string(size) + ". Aborting!")});
    }
}

TEST(TProgramMap, DescriptorsPastTheEndFail) {
    expectNoEntry<TProgramMap>(hex("1B E111 F004 52 01 10"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               Lines{line("Item length not valid: 4 > 3. Aborting!")});
    expectNoEntry<TProgramMap>(hex("1B E111 FFFF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               Lines{line("Item length not valid: 4095 > 0. Aborting!")});
}

TEST(TProgramMap, DescriptorLongerThanWhatIsLeftFails) {
    // The line shows what is left behind the two header bytes.
    expectNoEntry<TProgramMap>(hex("1B E111 F004  52 03 1011"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               Lines{line("Item length not valid: 3 > 2. Aborting!")});
    expectNoEntry<TProgramMap>(hex("1B E111 F005  52 01 10  52 FF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               Lines{line("Item length not valid: 255 > 0. Aborting!")});
    expectNoEntry<TProgramMap>(hex("1B E111 F004  48 03 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               Lines{line("Item length not valid: 3 > 2. Aborting!")});
}

TEST(TProgramMap, DescriptorWithoutAWholeHeaderFails) {
    expectNoEntry<TProgramMap>(hex("1B E111 F001  52"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               ElementsAre(lengthLine("TProgramMap")));
    expectNoEntry<TProgramMap>(hex("1B E111 F003  48 00  52"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), lengthLine("TProgramMap")));
}

TEST(TProgramMap, DescriptorThatOverrunsItsLoopIsReadAndTheWalkGoesOn) {
    // Two bytes of descriptors are stated; what follows is read as descriptors until the bytes end.
    expectNoEntry<TProgramMap>(hex("1B E111 F002  48 01 00  42 00  52 05 1011"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               Lines{line("Unknown descriptor: 0x48. Ignored!"),
                                     line("Unknown descriptor: 0x42. Ignored!"),
                                     line("Item length not valid: 5 > 2. Aborting!")});
    expectNoEntry<TProgramMap>(hex("1B E111 F002  48 01 00  42 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                               ElementsAre(line("Unknown descriptor: 0x48. Ignored!"),
                                           line("Unknown descriptor: 0x42. Ignored!"), lengthLine("TProgramMap")));
}

TEST(TProgramMap, OverrunLoopEndsWhenItsSixteenBitsComeToZero) {
    // 3 - 4 leaves 65535, which 255 descriptors of 257 bytes use up.
    ByteVector wire = hex("1B E111 F003  FD 02 0008");
    const ByteVector longest = descriptor(0xFD, join({hex("00A0"), fill(253, 0x00)}));
    for (int i = 0; i < 255; ++i) {
        wire.insert(wire.end(), longest.begin(), longest.end());
    }
    const auto map = expectEntry<TProgramMap>(join({wire, hex("FD 02 0009")}), 5 + 4 + 65535);
    EXPECT_EQ(map->getDataComponentDescriptor(0, nullptr)->getDataComponentID(), 0x00A0);
}
