#include "nit/TTransportStreamInfo.h"

#include "NetworkKinds.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TTransportStreamInfo;
using testing::ElementsAre;

using Tags = std::vector<QUOR_U8>;

namespace {

std::string line(const std::string& rest) {
    return "ISDBTUtils: TNITTransportStreamInfo::parse: " + rest;
}

class TTransportStreamInfoKind : public testing::TestWithParam<NetworkKind> {};

} // namespace

TEST(TTransportStreamInfo, Getters) {
    EXPECT_GETTER(QUOR_U16, TTransportStreamInfo, getTransportStreamID);
    EXPECT_GETTER(QUOR_U16, TTransportStreamInfo, getOriginalNetworkID);
    EXPECT_GETTER(std::list<QUOR_U8>*, TTransportStreamInfo, getDescriptorTags);
}

TEST(TTransportStreamInfo, StartsEmpty) {
    const InDirtyMemory<TTransportStreamInfo> stream;
    EXPECT_EQ(stream->getTransportStreamID(), 0);
    EXPECT_EQ(stream->getOriginalNetworkID(), 0);
    EXPECT_EQ(taken(stream->getDescriptorTags()), Tags{});
    for (const NetworkKind& kind : networkKinds()) {
        EXPECT_EQ(kind.ofEntry(*stream), nullptr) << kind.name;
        EXPECT_EQ(stream->getDescriptor(kind.tag), nullptr) << kind.name;
    }
}

TEST(TTransportStreamInfo, ReadsItsIds) {
    const auto stream = expectEntry<TTransportStreamInfo>(transportStream(0xFEDC, 0xBA98), 6);
    EXPECT_EQ(stream->getTransportStreamID(), 0xFEDC);
    EXPECT_EQ(stream->getOriginalNetworkID(), 0xBA98);
    EXPECT_EQ(taken(stream->getDescriptorTags()), Tags{});
}

TEST(TTransportStreamInfo, ReservedBitsAreNoLength) {
    expectEntry<TTransportStreamInfo>(hex("0001 0002 0000"), 6);
    expectEntry<TTransportStreamInfo>(hex("0001 0002 F000"), 6);
}

TEST(TTransportStreamInfo, BytesBehindItsDescriptorsAreNotItsOwn) {
    const auto stream =
        expectEntry<TTransportStreamInfo>(join({transportStream(1, 2, hex("40 01 41")), hex("40 01 42 FFFF")}), 9);
    EXPECT_EQ(stream->getNetworkNameDescriptor()->getNetworkName(), "A");
}

TEST(TTransportStreamInfo, LengthOfTheDescriptorsHas12Bits) {
    // 15 unknown descriptors of 257 bytes and one of 240 are 4095.
    ByteVector descriptors = descriptor(0x80, fill(238, 0x00));
    Lines lines{line("Unknown descriptor: 0x80. Ignored!")};
    for (int i = 0; i < 15; ++i) {
        descriptors = join({descriptors, descriptor(0x81, fill(255, 0x00))});
        lines.push_back(line("Unknown descriptor: 0x81. Ignored!"));
    }
    expectEntry<TTransportStreamInfo>(transportStream(1, 2, descriptors), 6 + 4095, lines);
}

TEST(TTransportStreamInfo, HoldsAllKinds) {
    const auto all = [](std::size_t) { return true; };
    const ByteVector descriptors = descriptorsOf(networkKinds(), all);
    const auto stream = expectEntry<TTransportStreamInfo>(transportStream(1, 2, descriptors),
                                                          6 + static_cast<QUOR_U32>(descriptors.size()));
    EXPECT_EQ(taken(stream->getDescriptorTags()), tagsOf(networkKinds()));
    for (const NetworkKind& kind : networkKinds()) {
        ASSERT_NE(kind.ofEntry(*stream.object), nullptr) << kind.name;
        EXPECT_EQ(kind.ofEntry(*stream.object), stream->getDescriptor(kind.tag)) << kind.name;
    }
}

TEST(TTransportStreamInfo, ListsSubsetsOfTagsInTheSameOrder) {
    const std::vector<NetworkKind> kinds = networkKinds();
    for (unsigned subset = 0; subset < 1U << kinds.size(); ++subset) {
        const auto wanted = [&](std::size_t i) { return (subset >> i & 1U) != 0; };
        const auto stream = parseEntry<TTransportStreamInfo>(transportStream(1, 2, descriptorsOf(kinds, wanted)));
        ASSERT_NE(stream.object, nullptr);
        ASSERT_EQ(taken(stream->getDescriptorTags()), tagsOf(kinds, wanted));
    }
}

TEST(TTransportStreamInfo, HoldsNothingUnderOtherTags) {
    const auto stream = expectEntry<TTransportStreamInfo>(transportStream(1, 2, hex("42 01 00  40 01 41")), 12);
    EXPECT_EQ(stream->getDescriptor(0x42), nullptr);
    EXPECT_EQ(stream->getDescriptor(0x48), nullptr);
    EXPECT_EQ(stream->getDescriptor(0x00), nullptr);
    EXPECT_EQ(stream->getDescriptor(0xFF), nullptr);
}

TEST(TTransportStreamInfo, StuffingIsSkippedSilentlyAndUnknownTagsAreLogged) {
    const auto stream = expectEntry<TTransportStreamInfo>(
        transportStream(1, 2, hex("42 00  48 03 010000  42 02 FFFF  FF 00  40 01 41")), 6 + 2 + 5 + 4 + 2 + 3,
        {line("Unknown descriptor: 0x48. Ignored!"), line("Unknown descriptor: 0xFF. Ignored!")});
    EXPECT_EQ(taken(stream->getDescriptorTags()), (Tags{0x40}));
}

TEST_P(TTransportStreamInfoKind, IsHeld) {
    const NetworkKind& kind = GetParam();
    const auto stream = expectEntry<TTransportStreamInfo>(transportStream(1, 2, kind.good),
                                                          6 + static_cast<QUOR_U32>(kind.good.size()), kind.lines);
    Quor::TISDBTDescriptor* const held = kind.ofEntry(*stream.object);
    ASSERT_NE(held, nullptr);
    EXPECT_EQ(held->getDescriptorTag(), kind.tag);
    EXPECT_EQ(held->getData(), stream.bytes.data() + 6);
    EXPECT_EQ(held->getDataLength(), kind.good.size());
    EXPECT_EQ(stream->getDescriptor(kind.tag), held);
    EXPECT_EQ(taken(stream->getDescriptorTags()), (Tags{kind.tag}));
    for (const NetworkKind& other : networkKinds()) {
        if (other.tag != kind.tag) {
            EXPECT_EQ(other.ofEntry(*stream.object), nullptr) << other.name;
        }
    }
}

TEST_P(TTransportStreamInfoKind, LastOneWins) {
    const NetworkKind& kind = GetParam();
    const auto stream = expectEntry<TTransportStreamInfo>(transportStream(1, 2, join({kind.good, kind.good})),
                                                          6 + 2 * static_cast<QUOR_U32>(kind.good.size()));
    ASSERT_NE(kind.ofEntry(*stream.object), nullptr);
    EXPECT_EQ(kind.ofEntry(*stream.object)->getData(), stream.bytes.data() + 6 + kind.good.size());
    EXPECT_EQ(taken(stream->getDescriptorTags()), (Tags{kind.tag}));
}

TEST_P(TTransportStreamInfoKind, FailureOfItsParseIsPassedOn) {
    const NetworkKind& kind = GetParam();
    expectNoEntry<TTransportStreamInfo>(transportStream(1, 2, join({kind.good, kind.bad, hex("48 00")})), kind.badCode,
                                        kind.badLines);
}

INSTANTIATE_TEST_SUITE_P(, TTransportStreamInfoKind, testing::ValuesIn(networkKinds()), kindName<NetworkKind>);

TEST(TTransportStreamInfo, OtherFailuresOfADescriptorArePassedOnToo) {
    expectNoEntry<TTransportStreamInfo>(
        transportStream(1, 2, hex("CD 08 07 FC 474C42474C42")), TISDBTTable::ERROR_INVALID_STRING,
        Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: 63 > 6.Aborting!",
              "ISDBTUtils: TTSInformationDescriptor:: parse: ERROR: parsing TS Name. Aborting!"});
}

TEST(TTransportStreamInfo, NeedsSixBytes) {
    for (QUOR_U8 size = 0; size < 6; ++size) {
        expectNoEntry<TTransportStreamInfo>(
            fill(size, 0x00), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
            Lines{line("Item length not valid: " + std::to_string(size) + ". Aborting!")});
    }
}

TEST(TTransportStreamInfo, DescriptorsPastTheEndFail) {
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F004 40 01 41"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        Lines{line("Item length not valid: 4 > 3. Aborting!")});
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 FFFF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        Lines{line("Item length not valid: 4095 > 0. Aborting!")});
}

TEST(TTransportStreamInfo, DescriptorLongerThanWhatIsLeftFails) {
    // The line shows all that is left, the two header bytes included.
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F004  40 03 4142"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        Lines{line("Item length not valid: 3 > 4. Aborting!")});
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F005  40 01 41  40 FF"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        Lines{line("Item length not valid: 255 > 2. Aborting!")});
    // The same for tags that nobody reads.
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F004  42 03 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        Lines{line("Item length not valid: 3 > 4. Aborting!")});
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F004  48 03 0000"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        Lines{line("Item length not valid: 3 > 4. Aborting!")});
}

TEST(TTransportStreamInfo, DescriptorWithoutAWholeHeaderFails) {
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F001  40"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        ElementsAre(lengthLine("TNITTransportStreamInfo")));
    expectNoEntry<TTransportStreamInfo>(
        hex("0001 0002 F003  48 00  40"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        ElementsAre(line("Unknown descriptor: 0x48. Ignored!"), lengthLine("TNITTransportStreamInfo")));
}

TEST(TTransportStreamInfo, DescriptorThatOverrunsItsLoopIsReadAndTheWalkGoesOn) {
    // Two bytes of descriptors are stated; what follows is read as descriptors until the bytes end.
    expectNoEntry<TTransportStreamInfo>(
        hex("0001 0002 F002  48 01 00  49 00  40 05 4142"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        Lines{line("Unknown descriptor: 0x48. Ignored!"), line("Unknown descriptor: 0x49. Ignored!"),
              line("Item length not valid: 5 > 4. Aborting!")});
    expectNoEntry<TTransportStreamInfo>(hex("0001 0002 F002  48 01 00  49 00"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                        ElementsAre(line("Unknown descriptor: 0x48. Ignored!"),
                                                    line("Unknown descriptor: 0x49. Ignored!"),
                                                    lengthLine("TNITTransportStreamInfo")));
}

TEST(TTransportStreamInfo, OverrunLoopEndsWhenItsSixteenBitsComeToZero) {
    // 3 - 4 leaves 65535, which 255 descriptors of 257 bytes use up.
    ByteVector wire = hex("0001 0002 F003  42 02 0000");
    const ByteVector stuffing = descriptor(0x42, fill(255, 0x00));
    for (int i = 0; i < 255; ++i) {
        wire.insert(wire.end(), stuffing.begin(), stuffing.end());
    }
    expectEntry<TTransportStreamInfo>(join({wire, hex("40 01 41")}), 6 + 4 + 65535);
}
