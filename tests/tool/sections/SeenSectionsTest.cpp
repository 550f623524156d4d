#include "sections/SeenSections.h"

#include "support/Bytes.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

using News = inspect::SeenSections::News;

inspect::Section section(const ByteVector& bytes) {
    inspect::Section::Memory copy(static_cast<std::uint8_t*>(std::malloc(bytes.size())));
    std::copy(bytes.begin(), bytes.end(), copy.get());
    return inspect::Section(0x0321, std::move(copy), inspect::Position{});
}

/// A DSM-CC section: of the tables it is the one whose extensions change most.
inspect::Section ofExtension(std::size_t extension, unsigned version = 0, const char* descriptors = "") {
    LongHeader header;
    header.extension = static_cast<QUOR_U16>(extension);
    header.section = static_cast<QUOR_U8>(extension >> 16U);
    header.version = version;
    return section(longSection(0x3D, header, hex(descriptors)));
}

} // namespace

TEST(SeenSections, TellsRepetitionsFromNews) {
    inspect::SeenSections seen;
    EXPECT_EQ(seen.look(ofExtension(1)), News::New);
    EXPECT_EQ(seen.look(ofExtension(1)), News::Repetition);
    EXPECT_EQ(seen.look(ofExtension(2)), News::New);
    EXPECT_EQ(seen.look(ofExtension(1, 1)), News::New);
    EXPECT_EQ(seen.look(ofExtension(1, 1, "17 00")), News::SameVersion);
    EXPECT_EQ(seen.look(ofExtension(1, 1, "17 00")), News::Repetition);
    EXPECT_EQ(seen.look(ofExtension(1)), News::New);
    EXPECT_EQ(seen.size(), 2U);
}

TEST(SeenSections, RemembersAsManyPlacesAsItHasRoomFor) {
    inspect::SeenSections seen;
    for (int round = 0; round < 2; ++round) {
        for (std::size_t extension = 0; extension < inspect::SeenSections::CAPACITY; ++extension) {
            ASSERT_EQ(seen.look(ofExtension(extension)), round == 0 ? News::New : News::Repetition) << extension;
        }
    }
}

/// A table that is repeated is never forgotten, whatever else comes by.
TEST(SeenSections, ForgetsThePlaceThatItHasNotSeenForLongest) {
    inspect::SeenSections seen;
    seen.look(ofExtension(0));
    seen.look(ofExtension(1));
    for (std::size_t extension = 2; extension < inspect::SeenSections::CAPACITY; ++extension) {
        seen.look(ofExtension(extension));
    }
    EXPECT_EQ(seen.look(ofExtension(0)), News::Repetition);
    EXPECT_EQ(seen.look(ofExtension(0xF000)), News::New);
    EXPECT_EQ(seen.size(), 16384U);
    EXPECT_EQ(seen.look(ofExtension(0)), News::Repetition);
    EXPECT_EQ(seen.look(ofExtension(2)), News::Repetition);
    EXPECT_EQ(seen.look(ofExtension(1)), News::New);
}

TEST(SeenSections, StaysOfItsSizeOverHours) {
    inspect::SeenSections seen;
    for (std::size_t extension = 0; extension < 5 * inspect::SeenSections::CAPACITY; ++extension) {
        seen.look(ofExtension(extension));
        seen.look(ofExtension(0x10));
    }
    EXPECT_EQ(seen.size(), 16384U);
    EXPECT_EQ(seen.look(ofExtension(0x10)), News::Repetition);
}
