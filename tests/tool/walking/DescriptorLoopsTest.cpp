#include "walking/DescriptorLoops.h"

#include "TISDBTTable.h"
#include "support/Bytes.h"

#include <gmock/gmock.h>

namespace {

using inspect::DescriptorLoop;
using inspect::RawDescriptor;
using Loops = std::vector<DescriptorLoop>;

Loops loopsOf(const ByteVector& section) {
    const HeapBytes bytes(section);
    return inspect::descriptorLoops(bytes.data(), bytes.size());
}

Lines namesOf(const Loops& loops) {
    Lines names;
    for (const DescriptorLoop& loop : loops) {
        names.push_back(loop.name);
    }
    return names;
}

std::vector<unsigned> tagsOf(const DescriptorLoop& loop) {
    std::vector<unsigned> tags;
    for (const RawDescriptor& descriptor : loop.descriptors) {
        tags.push_back(descriptor.tag);
    }
    return tags;
}

/// A program map with a loop of its own and one of an elementary stream.
ByteVector programMap(const std::string& body) {
    return longSection(0x02, {}, hex(body));
}

TEST(DescriptorLoops, GiveTagLengthBytesAndPlaceOfEachDescriptor) {
    const Loops loops = loopsOf(programMap("E100 F007 52 01 81 09 02 AABB"));
    ASSERT_EQ(loops.size(), 1U);
    EXPECT_EQ(loops[0].name, "program");
    EXPECT_FALSE(loops[0].key);
    EXPECT_EQ(loops[0].length, 7U);
    EXPECT_EQ(loops[0].available, 7U);
    ASSERT_EQ(loops[0].descriptors.size(), 2U);
    const RawDescriptor& known = loops[0].descriptors[0];
    EXPECT_EQ(known.offset, 12U);
    EXPECT_EQ(known.tag, 0x52);
    EXPECT_EQ(known.length, 1);
    EXPECT_EQ(known.body, hex("81"));
    EXPECT_TRUE(known.fits());
    ASSERT_NE(known.kind, nullptr);
    EXPECT_EQ(known.kind->name, "stream_identifier_descriptor");
    const RawDescriptor& unknown = loops[0].descriptors[1];
    EXPECT_EQ(unknown.offset, 15U);
    EXPECT_EQ(unknown.tag, 0x09);
    EXPECT_EQ(unknown.length, 2);
    EXPECT_EQ(unknown.body, hex("AABB"));
    EXPECT_TRUE(unknown.fits());
    EXPECT_EQ(unknown.kind, nullptr);
}

TEST(DescriptorLoops, OfAProgramMapAreTheProgramsAndThoseOfItsStreams) {
    const Loops loops = loopsOf(programMap("E100 F003 520181  1B E111 F000  0F E112 F003 7C0129"));
    EXPECT_EQ(namesOf(loops), (Lines{"program", "elementary_stream 0x0111", "elementary_stream 0x0112"}));
    EXPECT_EQ(loops[1].key, 0x0111U);
    EXPECT_EQ(loops[2].key, 0x0112U);
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x52));
    EXPECT_THAT(tagsOf(loops[1]), testing::IsEmpty());
    EXPECT_THAT(tagsOf(loops[2]), testing::ElementsAre(0x7C));
}

TEST(DescriptorLoops, OfANetworkAreTheNetworksAndThoseOfItsTransportStreams) {
    const Loops loops =
        loopsOf(longSection(0x40, {}, hex("F003 400141  F011  0735 0001 F003 400142  0736 0001 F002 4200")));
    EXPECT_EQ(namesOf(loops), (Lines{"network", "transport_stream 0x0735", "transport_stream 0x0736"}));
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x40));
    EXPECT_THAT(tagsOf(loops[1]), testing::ElementsAre(0x40));
    EXPECT_THAT(tagsOf(loops[2]), testing::ElementsAre(0x42));
    EXPECT_EQ(loops[2].key, 0x0736U);
    EXPECT_EQ(loops[2].descriptors[0].kind, nullptr);
}

TEST(DescriptorLoops, OfServicesFollowEachOtherToTheEnd) {
    const Loops loops = loopsOf(longSection(0x42, {}, hex("0001 FF  E6A0 FF 8003 470141  E6B8 FF 8002 5000")));
    EXPECT_EQ(namesOf(loops), (Lines{"service 0xE6A0", "service 0xE6B8"}));
    EXPECT_EQ(loops[1].key, 0xE6B8U);
    EXPECT_NE(loops[0].descriptors[0].kind, nullptr);
    EXPECT_EQ(loops[1].descriptors[0].kind, nullptr); // the component descriptor has no place in a service
}

TEST(DescriptorLoops, OfATimeOffsetIsOne) {
    const Loops loops = loopsOf(shortSection(0x73, hex("EDA9 123456 F002 5800")));
    EXPECT_EQ(namesOf(loops), Lines{"time_offset"});
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x58));
    EXPECT_EQ(loops[0].descriptors[0].offset, 10U);
}

TEST(DescriptorLoops, OfApplicationsAreTheCommonOneAndTheirs) {
    const Loops loops = loopsOf(longSection(0x74, {}, hex("F002 0600  F00B  0000ABCD 0012 01 F002 0900")));
    EXPECT_EQ(namesOf(loops), (Lines{"common", "application 0000ABCD0012"}));
    EXPECT_EQ(loops[1].key, 0xABCD0012U);
    EXPECT_EQ(loops[0].descriptors[0].kind->name, "ginga_application_descriptor");
    EXPECT_EQ(loops[1].descriptors[0].kind, nullptr);
}

TEST(DescriptorLoops, OfDownloadsLieBehindTheSchedules) {
    const Loops loops = loopsOf(longSection(
        0xC3, {}, hex("0735 0001 E6A0 02  1001 0020 00AF 008F EDA9123456013000 9900  1001 0020 002F 000F C900")));
    EXPECT_EQ(namesOf(loops), (Lines{"download_content 1", "download_content 2"}));
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x99));
    EXPECT_THAT(tagsOf(loops[1]), testing::ElementsAre(0xC9));
    EXPECT_EQ(loops[1].key, 1U);
}

TEST(DescriptorLoops, OfADsmccSectionIsTheRestOfIt) {
    const Loops loops = loopsOf(longSection(0x3D, {}, hex("03 02 01FF 17 00")));
    EXPECT_EQ(namesOf(loops), Lines{"section"});
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x03, 0x17));
}

TEST(DescriptorLoops, AreNoneInATableWithoutDescriptors) {
    EXPECT_TRUE(loopsOf(longSection(0x00, {}, hex("0000 E010 E6A0 E101"))).empty());
    EXPECT_TRUE(loopsOf(longSection(0x4E, {}, hex("0000 0000 0000 5000"))).empty());
    EXPECT_TRUE(loopsOf(longSection(0x3D, {}, {})).empty());
    EXPECT_TRUE(loopsOf({}).empty());
}

TEST(DescriptorLoops, EndAtADescriptorThatDoesNotFit) {
    const Loops loops = loopsOf(programMap("E100 F005 52 04 81 82 83  1B E111 F000"));
    ASSERT_EQ(loops[0].descriptors.size(), 1U);
    const RawDescriptor& descriptor = loops[0].descriptors[0];
    EXPECT_EQ(descriptor.length, 4);
    EXPECT_EQ(descriptor.body, hex("818283")); // not the bytes of the stream behind the loop
    EXPECT_FALSE(descriptor.fits());
    EXPECT_EQ(namesOf(loops), (Lines{"program", "elementary_stream 0x0111"})); // the walk goes on behind the loop
}

TEST(DescriptorLoops, EndAtATagWithoutALength) {
    const Loops loops = loopsOf(programMap("E100 F004 52 01 81 09"));
    ASSERT_EQ(loops[0].descriptors.size(), 2U);
    const RawDescriptor& descriptor = loops[0].descriptors[1];
    EXPECT_EQ(descriptor.tag, 0x09);
    EXPECT_FALSE(descriptor.length);
    EXPECT_FALSE(descriptor.fits());
    EXPECT_TRUE(descriptor.body.empty());
}

TEST(DescriptorLoops, ThatAreLongerThanTheSectionEndWithIt) {
    const Loops loops = loopsOf(programMap("E100 F0FF 52 01 81 09 05 AABB"));
    ASSERT_EQ(loops.size(), 1U);
    EXPECT_EQ(loops[0].length, 0xFFU);
    EXPECT_EQ(loops[0].available, 7U);
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x52, 0x09));
    EXPECT_EQ(loops[0].descriptors[1].body, hex("AABB")); // not the CRC_32
}

TEST(DescriptorLoops, OfASectionThatClaimsToBeLongerEndWithTheBytesThatThereAre) {
    const ByteVector section = withSectionLength(programMap("E100 F003 52 01 81"), 0x3FF);
    const Loops loops = loopsOf(section);
    ASSERT_EQ(loops.size(), 1U);
    EXPECT_THAT(tagsOf(loops[0]), testing::ElementsAre(0x52));
}

TEST(DescriptorLoops, OfASectionThatClaimsToBeShorterEndBeforeItsSurplus) {
    const ByteVector section = withSectionLength(programMap("E100 F000 1B E111 F003 520181"), 13);
    EXPECT_EQ(namesOf(loopsOf(section)), Lines{"program"});
}

TEST(DescriptorLoops, OfDownloadsWhoseScheduleIsLongerThanTheContentAreEmpty) {
    const Loops loops = loopsOf(longSection(0xC3, {}, hex("0735 0001 E6A0 01  1001 0020 008F 010F EDA9123456013000")));
    ASSERT_EQ(loops.size(), 1U);
    EXPECT_EQ(loops[0].length, 0U);
}

/// The sanitizers look on.
TEST(DescriptorLoops, StayInsideAnySectionThatIsCutOffOrChanged) {
    const ByteVector sections[] = {
        programMap("E100 F003 520181  1B E111 F003 520181"),
        longSection(0x40, {}, hex("F003 400141  F009  0735 0001 F003 400142")),
        longSection(0x42, {}, hex("0001 FF  E6A0 FF 8003 470141")),
        shortSection(0x73, hex("EDA9 123456 F002 5800")),
        longSection(0x74, {}, hex("F002 0600  F00B  0000ABCD 0012 01 F002 0900")),
        longSection(0xC3, {}, hex("0735 0001 E6A0 01  1001 0020 00AF 008F EDA9123456013000 9900")),
        longSection(0x3D, {}, hex("03 02 01FF 17 00")),
    };
    for (const ByteVector& section : sections) {
        for (std::size_t size = 0; size <= section.size(); ++size) {
            loopsOf(ByteVector(section.begin(), section.begin() + static_cast<std::ptrdiff_t>(size)));
        }
        for (std::size_t at = 1; at < section.size(); ++at) {
            for (const unsigned value : {0x00U, 0x01U, 0x7FU, 0x80U, 0xFFU}) {
                ByteVector changed = section;
                changed[at] = static_cast<QUOR_U8>(value);
                loopsOf(changed);
            }
        }
    }
}

const RawDescriptor& first(const Loops& loops) {
    return loops.at(0).descriptors.at(0);
}

TEST(Refusal, IsTheErrorCodeOfTheLibrary) {
    const Loops tooShort = loopsOf(programMap("E100 F002 52 00"));
    EXPECT_EQ(inspect::refusal(first(tooShort)), Quor::TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH);
    const Loops badString = loopsOf(longSection(0x42, {}, hex("0001 FF E6A0 FF 8005 48 03 01 05 41")));
    EXPECT_EQ(inspect::refusal(first(badString)), Quor::TISDBTTable::ERROR_INVALID_STRING);
    const Loops dataPiping = loopsOf(longSection(0x74, {}, hex("F007 02 05 0003 01 00 0B F000")));
    EXPECT_EQ(inspect::refusal(first(dataPiping)), Quor::TISDBTTable::ERROR_OK);
}

TEST(Refusal, IsNothingForWhatTheLibraryTakesOrIsNotAsked) {
    const Loops taken = loopsOf(programMap("E100 F003 52 01 81"));
    EXPECT_EQ(inspect::refusal(first(taken)), std::nullopt);
    const Loops unknown = loopsOf(programMap("E100 F002 09 00"));
    EXPECT_EQ(inspect::refusal(first(unknown)), std::nullopt);
    const Loops tooLong = loopsOf(programMap("E100 F002 52 01"));
    EXPECT_EQ(inspect::refusal(first(tooLong)), std::nullopt);
}

} // namespace
