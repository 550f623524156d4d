#include "descriptors/TStreamModeDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TStreamModeDescriptor;

TEST(TStreamModeDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_OPEN, 0);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_PAUSE, 1);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_TRANSPORT, 2);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_TRANSPORT_PAUSE, 3);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_SEARCH_TRANSPORT, 4);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_SEARCH_TRANSPORT_PAUSE, 5);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_PAUSE_SEARCH_TRANSPORT, 6);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_END_OF_STREAM, 7);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_PRE_SEARCH_TRANSPORT, 8);
    EXPECT_CONSTANT(QUOR_U8, TStreamModeDescriptor::STREAM_MODE_PRE_SEARCH_TRANSPORT_PAUSE, 9);
}

TEST(TStreamModeDescriptor, TellsTheMode) {
    EXPECT_GETTER(QUOR_U8, TStreamModeDescriptor, getStreamMode);
    const auto parsed = expectDescriptor<TStreamModeDescriptor>(hex("03 02  07 FF"), PRESET_LENGTH);
    EXPECT_EQ(parsed->getStreamMode(), TStreamModeDescriptor::STREAM_MODE_END_OF_STREAM);
}

TEST(TStreamModeDescriptor, StartsAtZero) {
    ByteVector bytes = hex("03 02  07 FF");
    const InDirtyMemory<TStreamModeDescriptor> descriptor(bytes.data(), QUOR_U32{4});
    EXPECT_EQ(descriptor->getDescriptorTag(), 3);
    EXPECT_EQ(descriptor->getStreamMode(), 0);
}

TEST(TStreamModeDescriptor, AnyValueIsKeptAndTheReservedByteIgnored) {
    expectFields<TStreamModeDescriptor>(hex("03 02"), 2,
                                        {{"streamMode", 2, 7, 8, &TStreamModeDescriptor::getStreamMode}});
}

TEST(TStreamModeDescriptor, LeavesTheParsedLengthAlone) {
    const HeapBytes bytes(hex("03 02  01 FF"));
    QUOR_U32 parsedLength = 77;
    QUOR_U16 error = PRESET_ERROR;
    const std::unique_ptr<TStreamModeDescriptor> parsed(
        TStreamModeDescriptor::parse(bytes.data(), bytes.size(), &parsedLength, &error));
    ASSERT_NE(parsed, nullptr);
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsedLength, 77U);
}

TEST(TStreamModeDescriptor, LongerBodiesReadTheSame) {
    EXPECT_EQ(expectDescriptor<TStreamModeDescriptor>(hex("03 04  01 FF EE EE"), PRESET_LENGTH)->getStreamMode(), 1);
    EXPECT_EQ(expectDescriptor<TStreamModeDescriptor>(join({hex("03 02  09 FF"), fill(296, 0xEE)}), PRESET_LENGTH)
                  ->getStreamMode(),
              9);
}
