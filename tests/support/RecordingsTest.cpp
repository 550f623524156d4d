#include "support/Recordings.h"

#include <gtest/gtest.h>

#include <stdexcept>

TEST(Recordings, SectionsAreTakenApartByTheirLength) {
    const std::vector<ByteVector> sections = splitSections(hex("70 7005 E332123505"
                                                               "00 B100" +
                                                               std::string(512, '5')));
    ASSERT_EQ(sections.size(), 2U);
    EXPECT_EQ(sections[0], hex("70 7005 E332123505"));
    EXPECT_EQ(sections[1].size(), 259U);
}

TEST(Recordings, ASectionThatIsCutOffIsAnError) {
    EXPECT_THROW(splitSections(hex("70 7005 E3321235")), std::runtime_error);
    EXPECT_THROW(splitSections(hex("70 70")), std::runtime_error);
    EXPECT_TRUE(splitSections({}).empty());
}

TEST(Recordings, EveryFileHoldsWhatTheIndexSays) {
    SKIP_WITHOUT_RECORDINGS();
    ASSERT_GE(recordings().size(), 1U);
    for (const Recording& recording : recordings()) {
        SCOPED_TRACE(recording.file);
        const std::vector<ByteVector> sections = recordedSections(recording.file);
        EXPECT_EQ(sections.size(), recording.sections);
        std::size_t bytes = 0;
        for (const ByteVector& section : sections) {
            bytes += section.size();
            EXPECT_EQ(section[0], recording.tableId);
            EXPECT_EQ(crc32(section), 0U); // a CRC over its own CRC_32 comes to 0
        }
        EXPECT_EQ(bytes, recording.bytes);
    }
}
