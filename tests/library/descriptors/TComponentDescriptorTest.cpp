#include "descriptors/TComponentDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TComponentDescriptor;

namespace {

/// stream_content 1, component_type 0xB3, component_tag 0x10, "por" and the text.
ByteVector component(const ByteVector& characters) {
    return descriptor(0x50, join({hex("F1 B3 10"), text("por"), characters}));
}

/// The same in a buffer that is longer than descriptor_length says.
ByteVector componentBeyondItsLength(const ByteVector& characters) {
    return join({hex("50 06  F1 B3 10"), text("por"), characters});
}

} // namespace

TEST(TComponentDescriptor, GettersHaveTheTypesOfTheFields) {
    EXPECT_GETTER(QUOR_U8, TComponentDescriptor, getStreamContent);
    EXPECT_GETTER(QUOR_U8, TComponentDescriptor, getComponentType);
    EXPECT_GETTER(QUOR_U8, TComponentDescriptor, getComponentTag);
    EXPECT_GETTER(std::string, TComponentDescriptor, getLanguageCode);
    EXPECT_GETTER(std::string, TComponentDescriptor, getText);
    EXPECT_GETTER(QUOR_U16, TComponentDescriptor, getStreamContentComponentType);
    EXPECT_NE(expectDescriptor<TComponentDescriptor>(component({}), 3).object, nullptr);
}

TEST(TComponentDescriptor, StartsEmpty) {
    ByteVector bytes = component({});
    const InDirtyMemory<TComponentDescriptor> descriptor(bytes.data(), QUOR_U32{8});
    EXPECT_EQ(descriptor->getDescriptorTag(), 0x50);
    EXPECT_EQ(descriptor->getStreamContent(), 0);
    EXPECT_EQ(descriptor->getComponentType(), 0);
    EXPECT_EQ(descriptor->getComponentTag(), 0);
    EXPECT_EQ(descriptor->getStreamContentComponentType(), 0);
    EXPECT_EQ(descriptor->getLanguageCode(), "");
    EXPECT_EQ(descriptor->getText(), "");
}

TEST(TComponentDescriptor, TellsTheKindOfAStream) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(component(text("Video")), 8);
    EXPECT_EQ(parsed->getStreamContent(), 0x01);
    EXPECT_EQ(parsed->getComponentType(), 0xB3);
    EXPECT_EQ(parsed->getComponentTag(), 0x10);
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getText(), "Video");
    EXPECT_EQ(parsed->getStreamContentComponentType(), 0x01B3);
}

TEST(TComponentDescriptor, TheReservedNibbleIsDropped) {
    expectFields<TComponentDescriptor>(
        hex("50 06"), 6,
        {{"stream_content", 2, 3, 4, &TComponentDescriptor::getStreamContent},
         {"component_type", 3, 7, 8, &TComponentDescriptor::getComponentType},
         {"component_tag", 4, 7, 8, &TComponentDescriptor::getComponentTag},
         {"both in one", 2, 3, 12, &TComponentDescriptor::getStreamContentComponentType}});
}

TEST(TComponentDescriptor, TwelveBytesOfTextCountFifteen) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(component(text("Audio stereo")), 15);
    EXPECT_EQ(parsed->getText(), "Audio stereo");
}

TEST(TComponentDescriptor, WithoutTextOnlyTheLanguageCounts) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(component({}), 3);
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getText(), "");
}

TEST(TComponentDescriptor, TheLongestTextOfADescriptor) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(component(fill(249, 'x')), 252);
    EXPECT_EQ(parsed->getText(), std::string(249, 'x'));
}

TEST(TComponentDescriptor, StringsAreKeptByteForByte) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(hex("50 0A  01 01 00  00 80 FF  41 00 E3 00"), 7);
    EXPECT_EQ(parsed->getLanguageCode(), std::string("\x00\x80\xFF", 3));
    EXPECT_EQ(parsed->getText(), std::string("A\x00\xE3\x00", 4));
}

TEST(TComponentDescriptor, AFirstByteOfTheTextIsNoLength) {
    EXPECT_EQ(expectDescriptor<TComponentDescriptor>(component(hex("FF 41")), 5)->getText(), "\xFF"
                                                                                             "A");
    EXPECT_EQ(expectDescriptor<TComponentDescriptor>(component(hex("01")), 4)->getText(), "\x01");
}

TEST(TComponentDescriptor, TheTextRunsToTheEndOfTheBytesGiven) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(componentBeyondItsLength(text("Video")), 8);
    EXPECT_EQ(parsed->getText(), "Video");
}

TEST(TComponentDescriptor, TheTextIsCountedInEightBits) {
    EXPECT_EQ(expectDescriptor<TComponentDescriptor>(componentBeyondItsLength(fill(255, 'x')), 258)->getText(),
              std::string(255, 'x'));
    EXPECT_EQ(expectDescriptor<TComponentDescriptor>(componentBeyondItsLength(fill(256, 'x')), 3)->getText(),
              std::string(256, 'x'));
    EXPECT_EQ(expectDescriptor<TComponentDescriptor>(componentBeyondItsLength(fill(300, 'x')), 47)->getText(),
              std::string(300, 'x'));
}

TEST(TComponentDescriptor, StringsAreCopies) {
    const auto parsed = expectDescriptor<TComponentDescriptor>(component(text("Video")), 8);
    std::fill_n(parsed.bytes.data(), parsed.bytes.size(), QUOR_U8{0});
    EXPECT_EQ(parsed->getLanguageCode(), "por");
    EXPECT_EQ(parsed->getText(), "Video");
}
