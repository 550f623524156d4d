#include "descriptors/TMosaicDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TMosaicDescriptor;
using Quor::TMosaicDescriptorCell;

namespace {

/// @p count cells of six bytes, with the logical_cell_ids 0, 1, 2 and so on.
ByteVector cells(unsigned count) {
    ByteVector all;
    for (unsigned id = 0; id < count; ++id) {
        all = join({all, {static_cast<QUOR_U8>(id << 2)}, hex("01 00 01 0001")});
    }
    return all;
}

Lines invalidCell(const std::string& reason) {
    return {"ISDBTUtils: TMosaicDescriptorCell::parse: " + reason + ". Aborting!",
            "ISDBTUtils: TMosaicDescriptor::parse: Invalid Cell. Aborting!"};
}

} // namespace

TEST(TMosaicDescriptor, Constants) {
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_1, 0);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_2, 1);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_3, 2);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_4, 3);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_5, 4);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_6, 5);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_7, 6);
    EXPECT_EQ(TMosaicDescriptor::NUMBER_OF_CELLS_8, 7);
}

TEST(TMosaicDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("51 01 33"));
    const InDirtyMemory<TMosaicDescriptor> mosaic(bytes.data(), bytes.size());
    EXPECT_EQ(mosaic->getDescriptorTag(), 0x51);
    EXPECT_EQ(mosaic->getNumberOfHorizontalCells(), 0);
    EXPECT_EQ(mosaic->getNumberOfVerticalCells(), 0);
    EXPECT_EQ(mosaic->size(), 0U);
    EXPECT_EQ(mosaic->getCell(0), nullptr);
}

TEST(TMosaicDescriptor, WithoutCellsTakesOneByte) {
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(hex("51 01 11"), 1);
    EXPECT_EQ(mosaic->getNumberOfHorizontalCells(), 1);
    EXPECT_EQ(mosaic->getNumberOfVerticalCells(), 1);
    EXPECT_EQ(mosaic->size(), 0U);
}

TEST(TMosaicDescriptor, CellCodesAreTwoBitsWide) {
    const auto horizontal = expectDescriptor<TMosaicDescriptor>(hex("51 01 30"), 1);
    EXPECT_EQ(horizontal->getNumberOfHorizontalCells(), 3);
    EXPECT_EQ(horizontal->getNumberOfVerticalCells(), 0);
    const auto vertical = expectDescriptor<TMosaicDescriptor>(hex("51 01 03"), 1);
    EXPECT_EQ(vertical->getNumberOfHorizontalCells(), 0);
    EXPECT_EQ(vertical->getNumberOfVerticalCells(), 3);
    const auto others = expectDescriptor<TMosaicDescriptor>(hex("51 01 CC"), 1);
    EXPECT_EQ(others->getNumberOfHorizontalCells(), 0);
    EXPECT_EQ(others->getNumberOfVerticalCells(), 0);
}

TEST(TMosaicDescriptor, ReadsTwoByTwoCells) {
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("11"), cells(4)})), 25);
    ASSERT_EQ(mosaic->size(), 4U);
    EXPECT_EQ(mosaic->getCell(0)->getLogicalCellID(), 0);
    EXPECT_EQ(mosaic->getCell(3)->getLogicalCellID(), 3);
    EXPECT_EQ(mosaic->getCell(4), nullptr);
    EXPECT_EQ(mosaic->getCell(0xFFFFFFFF), nullptr);
    // A fifth cell is not read.
    EXPECT_EQ(expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("11"), cells(5)})), 25)->size(), 4U);
}

TEST(TMosaicDescriptor, ReadsFourByFourCells) {
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("77"), cells(17)})), 97);
    EXPECT_EQ(mosaic->getNumberOfHorizontalCells(), 3);
    EXPECT_EQ(mosaic->getNumberOfVerticalCells(), 3);
    ASSERT_EQ(mosaic->size(), 16U);
    EXPECT_EQ(mosaic->getCell(15)->getLogicalCellID(), 15);
}

TEST(TMosaicDescriptor, MultipliesItsSides) {
    EXPECT_EQ(expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("00"), cells(9)})), 7)->size(), 1U);
    EXPECT_EQ(expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("21"), cells(9)})), 37)->size(), 6U);
    EXPECT_EQ(expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("02"), cells(9)})), 19)->size(), 3U);
}

TEST(TMosaicDescriptor, EndsWithItsBytesBeforeItsCount) {
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(descriptor(0x51, join({hex("11"), cells(2)})), 13);
    EXPECT_EQ(mosaic->size(), 2U);
}

TEST(TMosaicDescriptor, ReportsTheBytesOfAllItsCells) {
    // 7 for the bouquet, 10 for the service, 12 for the event.
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(
        hex("51 1E 02  04 01 01 05 01 0001  08 02 00 02 0001 0002 0003  0C 03 00 04 0001 0002 0003 0004"), 30);
    ASSERT_EQ(mosaic->size(), 3U);
    EXPECT_EQ(mosaic->getCell(0)->getElementaryCellIDs()[0], 5);
    EXPECT_EQ(mosaic->getCell(1)->getServiceID(), 3);
    EXPECT_EQ(mosaic->getCell(2)->getEventID(), 4);
}

TEST(TMosaicDescriptor, CellWithUndefinedLinkageFails) {
    expectFailure<TMosaicDescriptor>(hex("51 07 00  04 01 00 00 0001"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                     invalidCell("Unknown Cell Linkage Info: 00 (0)"));
}

TEST(TMosaicDescriptor, IncompleteCellFails) {
    expectFailure<TMosaicDescriptor>(hex("51 0B 11  04 01 00 01 0001  04 01 00 01"),
                                     TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                     invalidCell("Item length not valid: 4"));
    expectFailure<TMosaicDescriptor>(hex("51 06 11  04 01 09 01 00"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                     invalidCell("Item length not valid: 1 < 9"));
    expectFailure<TMosaicDescriptor>(hex("51 06 11  04 01 00 01 00"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                     invalidCell("Item length not valid: 1 < 1"));
}

TEST(TMosaicDescriptor, BrokenBytesBehindTheCountDoNoHarm) {
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(hex("51 0A 00  04 01 00 01 0001  04 01 00"), 7);
    EXPECT_EQ(mosaic->size(), 1U);
}

TEST(TMosaicDescriptor, CellsRunToTheEndOfTheGivenBytes) {
    const auto mosaic = expectDescriptor<TMosaicDescriptor>(join({hex("51 01 11"), cells(3)}), 19);
    EXPECT_EQ(mosaic->size(), 3U);
}
