#include "descriptors/TMosaicDescriptorCell.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TMosaicDescriptorCell;

namespace {

void expectRejected(const ByteVector& cell, const std::string& reason) {
    expectFailure<TMosaicDescriptorCell>(cell, TISDBTTable::ERROR_INVALID_DATA_LENGTH,
                                         {"ISDBTUtils: TMosaicDescriptorCell::parse: " + reason + ". Aborting!"});
}

} // namespace

TEST(TMosaicDescriptorCell, Constants) {
    EXPECT_EQ(TMosaicDescriptorCell::PRESENTATION_TYPE_UNDEFINED, 0);
    EXPECT_EQ(TMosaicDescriptorCell::PRESENTATION_TYPE_VIDEO, 1);
    EXPECT_EQ(TMosaicDescriptorCell::PRESENTATION_TYPE_STILL_PICTURE, 2);
    EXPECT_EQ(TMosaicDescriptorCell::PRESENTATION_TYPE_GRAPHICS_OR_TEXT, 3);
    EXPECT_EQ(TMosaicDescriptorCell::LINKAGE_TYPE_UNDEFINED, 0);
    EXPECT_EQ(TMosaicDescriptorCell::LINKAGE_TYPE_BOUQUET_RELATED, 1);
    EXPECT_EQ(TMosaicDescriptorCell::LINKAGE_TYPE_SERVICE_RELATED, 2);
    EXPECT_EQ(TMosaicDescriptorCell::LINKAGE_TYPE_OTHER_MOSAIC_RELATED, 3);
    EXPECT_EQ(TMosaicDescriptorCell::LINKAGE_TYPE_EVENT_RELATED, 4);
}

TEST(TMosaicDescriptorCell, StartsWithZeros) {
    const InDirtyMemory<TMosaicDescriptorCell> cell;
    EXPECT_EQ(cell->getLogicalCellID(), 0);
    EXPECT_EQ(cell->getLogicalCellPresentationInfo(), 0);
    EXPECT_EQ(cell->getElementaryCellFieldLength(), 0);
    EXPECT_EQ(cell->getElementaryCellIDs(), nullptr);
    EXPECT_EQ(cell->getCellLinkageInfo(), 0);
    EXPECT_EQ(cell->getBouquetID(), 0);
    EXPECT_EQ(cell->getOriginalNetworkID(), 0);
    EXPECT_EQ(cell->getTransportStreamID(), 0);
    EXPECT_EQ(cell->getServiceID(), 0);
    EXPECT_EQ(cell->getEventID(), 0);
}

TEST(TMosaicDescriptorCell, FieldsTakeTheirBitsAlone) {
    const auto ones = expectSuccess<TMosaicDescriptorCell>(hex("FC 07 00 01 0001"), 6);
    EXPECT_EQ(ones->getLogicalCellID(), 63);
    EXPECT_EQ(ones->getLogicalCellPresentationInfo(), 7);
    const auto reserved = expectSuccess<TMosaicDescriptorCell>(hex("03 F8 00 01 0001"), 6);
    EXPECT_EQ(reserved->getLogicalCellID(), 0);
    EXPECT_EQ(reserved->getLogicalCellPresentationInfo(), 0);
}

TEST(TMosaicDescriptorCell, ReadsElementaryCellsOfSixBits) {
    const auto cell = expectSuccess<TMosaicDescriptorCell>(hex("04 01 04 FF 40 81 3E 01 0001"), 10);
    EXPECT_EQ(cell->getElementaryCellFieldLength(), 4);
    EXPECT_EQ(elements(cell->getElementaryCellIDs(), 4), hex("3F 00 01 3E"));
}

TEST(TMosaicDescriptorCell, HoldsUpTo255ElementaryCells) {
    const auto cell =
        expectSuccess<TMosaicDescriptorCell>(join({hex("04 01 FF"), fill(255, 0x05), hex("01 0001")}), 261);
    EXPECT_EQ(cell->getElementaryCellFieldLength(), 255);
    EXPECT_EQ(elements(cell->getElementaryCellIDs(), 255), fill(255, 0x05));
}

TEST(TMosaicDescriptorCell, LinksToABouquet) {
    const auto cell = expectSuccess<TMosaicDescriptorCell>(hex("04 01 01 02 01 FEDC"), 7);
    EXPECT_EQ(cell->getCellLinkageInfo(), TMosaicDescriptorCell::LINKAGE_TYPE_BOUQUET_RELATED);
    EXPECT_EQ(cell->getBouquetID(), 0xFEDC);
    EXPECT_EQ(cell->getOriginalNetworkID(), 0);
    EXPECT_EQ(cell->getTransportStreamID(), 0);
    EXPECT_EQ(cell->getServiceID(), 0);
    EXPECT_EQ(cell->getEventID(), 0);
}

TEST(TMosaicDescriptorCell, LinksToAServiceOrAnotherMosaic) {
    const auto service = expectSuccess<TMosaicDescriptorCell>(hex("04 01 00 02 FEDC BA98 7654"), 10);
    EXPECT_EQ(service->getCellLinkageInfo(), TMosaicDescriptorCell::LINKAGE_TYPE_SERVICE_RELATED);
    EXPECT_EQ(service->getBouquetID(), 0);
    EXPECT_EQ(service->getOriginalNetworkID(), 0xFEDC);
    EXPECT_EQ(service->getTransportStreamID(), 0xBA98);
    EXPECT_EQ(service->getServiceID(), 0x7654);
    EXPECT_EQ(service->getEventID(), 0);
    const auto mosaic = expectSuccess<TMosaicDescriptorCell>(hex("04 01 00 03 0001 0002 0003"), 10);
    EXPECT_EQ(mosaic->getCellLinkageInfo(), TMosaicDescriptorCell::LINKAGE_TYPE_OTHER_MOSAIC_RELATED);
    EXPECT_EQ(mosaic->getOriginalNetworkID(), 1);
    EXPECT_EQ(mosaic->getTransportStreamID(), 2);
    EXPECT_EQ(mosaic->getServiceID(), 3);
    EXPECT_EQ(mosaic->getEventID(), 0);
}

TEST(TMosaicDescriptorCell, LinksToAnEvent) {
    const auto cell = expectSuccess<TMosaicDescriptorCell>(hex("04 01 01 02 04 0001 0002 0003 FEDC FF"), 13);
    EXPECT_EQ(cell->getCellLinkageInfo(), TMosaicDescriptorCell::LINKAGE_TYPE_EVENT_RELATED);
    EXPECT_EQ(cell->getBouquetID(), 0);
    EXPECT_EQ(cell->getOriginalNetworkID(), 1);
    EXPECT_EQ(cell->getTransportStreamID(), 2);
    EXPECT_EQ(cell->getServiceID(), 3);
    EXPECT_EQ(cell->getEventID(), 0xFEDC);
}

TEST(TMosaicDescriptorCell, NeedsFiveBytes) {
    expectRejected(hex(""), "Item length not valid: 0");
    // Shorter than that, neither the elementary cells nor the linkage are looked at.
    expectRejected(hex("04 01 FF 00"), "Item length not valid: 4");
}

TEST(TMosaicDescriptorCell, ElementaryCellsPastTheEndFail) {
    expectRejected(hex("04 01 02 05 00"), "Item length not valid: 1 < 2");
    expectRejected(join({hex("04 01 FF"), fill(255, 0x00)}), "Item length not valid: 254 < 255");
    // That is found before the linkage, which would be unknown.
    expectRejected(hex("04 01 FF 00 00 00"), "Item length not valid: 2 < 255");
}

TEST(TMosaicDescriptorCell, UndefinedAndUnknownLinkageFail) {
    expectRejected(hex("04 01 00 00 0001 0002 0003 0004"), "Unknown Cell Linkage Info: 00 (0)");
    expectRejected(hex("04 01 00 05 0001 0002 0003 0004"), "Unknown Cell Linkage Info: 05 (5)");
    expectRejected(hex("04 01 00 10 0001 0002 0003 0004"), "Unknown Cell Linkage Info: 10 (16)");
    expectRejected(hex("04 01 01 02 FF"), "Unknown Cell Linkage Info: FF (255)");
}

TEST(TMosaicDescriptorCell, LinkagePastTheEndFails) {
    // For a bouquet the line shows 1, though two bytes are needed.
    expectRejected(hex("04 01 01 02 01"), "Item length not valid: 0 < 1");
    expectRejected(hex("04 01 00 01 FE"), "Item length not valid: 1 < 1");
    expectRejected(hex("04 01 00 02 0001 0002 00"), "Item length not valid: 5 < 6");
    expectRejected(hex("04 01 01 02 03"), "Item length not valid: 0 < 6");
    expectRejected(hex("04 01 00 03 0001 0002 00"), "Item length not valid: 5 < 6");
    expectRejected(hex("04 01 00 04 0001 0002 0003 00"), "Item length not valid: 7 < 8");
    expectRejected(hex("04 01 01 02 04"), "Item length not valid: 0 < 8");
}
