#pragma once

#include "support/Outcome.h"

/// The checks of the two header bytes of a class that accepts an empty body, in their order.
template <class T> void expectHeaderChecksWithoutMinimum(QUOR_U8 tag) {
    EXPECT_CONSTANT(U8, T::DESCRIPTOR_TAG, tag);
    EXPECT_CONSTANT(QUOR_U32, T::MINIMUM_DESCRIPTOR_LENGTH, 0U);

    using Table = Quor::TISDBTTable;
    const std::string place = "ISDBTUtils: TISDBTDescriptor::parseCommonHeader: ";
    const auto wrongTag = static_cast<QUOR_U8>(tag ^ 0x01U);
    char tags[64];
    std::snprintf(tags, sizeof tags, "Got 0x%02X, instead of 0x%02X", unsigned{wrongTag}, unsigned{tag});

    {
        QUOR_U32 parsedLength = PRESET_LENGTH;
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        EXPECT_EQ(T::parse(nullptr, 257, &parsedLength, &error), nullptr);
        EXPECT_EQ(error, Table::ERROR_INVALID_DATA);
        EXPECT_EQ(parsedLength, PRESET_LENGTH);
        EXPECT_EQ(log.lines(), Lines{place + "(1) Invalid data. Aborting!"});
    }
    expectFailure<T>({}, Table::ERROR_INVALID_DESCRIPTOR_LENGTH,
                     {place + "(2) Longer data length is required: 0 < 2. Aborting!"});
    expectFailure<T>({wrongTag}, Table::ERROR_INVALID_DESCRIPTOR_LENGTH,
                     {place + "(2) Longer data length is required: 1 < 2. Aborting!"});
    expectFailure<T>({wrongTag, 0xFF}, Table::ERROR_INVALID_DESCRIPTOR_TAG,
                     {place + "(3) Unexpected Descriptor Tag. " + tags + ". Aborting!"});
    expectFailure<T>({tag, 0x01}, Table::ERROR_INVALID_DESCRIPTOR_LENGTH,
                     {place + "(4) Longer data length is required: 3 < 2. Aborting!"});
}
