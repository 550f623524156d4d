#include "descriptors/TLogoTransmissionDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TLogoTransmissionDescriptor;

namespace {

void expectTooShort(const ByteVector& wire, int body) {
    expectFailure<TLogoTransmissionDescriptor>(
        wire, TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
        {"ISDBTUtils: TLogoTransmissionDescriptor::parse: Longer data length is required: " + std::to_string(body) +
         " < 6. Aborting!"});
}

} // namespace

TEST(TLogoTransmissionDescriptor, Constants) {
    EXPECT_EQ(TLogoTransmissionDescriptor::TYPE_CDT1, 1);
    EXPECT_EQ(TLogoTransmissionDescriptor::TYPE_CDT2, 2);
    EXPECT_EQ(TLogoTransmissionDescriptor::TYPE_SIMPLE, 3);
}

TEST(TLogoTransmissionDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("CF 07 01 0001 0002 0003"));
    const InDirtyMemory<TLogoTransmissionDescriptor> logo(bytes.data(), bytes.size());
    EXPECT_EQ(logo->getDescriptorTag(), 0xCF);
    EXPECT_EQ(logo->getLogoTransmType(), 0);
    EXPECT_EQ(logo->getLogoID(), 0);
    EXPECT_EQ(logo->getLogoVersion(), 0);
    EXPECT_EQ(logo->getDownloadDataID(), 0);
    EXPECT_EQ(logo->getLogoDataLength(), 0);
    EXPECT_EQ(logo->getLogoData(), nullptr);
}

TEST(TLogoTransmissionDescriptor, FirstTypeHasIdVersionAndDownload) {
    const auto logo = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 07 01 0123 0456 FEDC"), 7);
    EXPECT_EQ(logo->getLogoTransmType(), TLogoTransmissionDescriptor::TYPE_CDT1);
    EXPECT_EQ(logo->getLogoID(), 0x123);
    EXPECT_EQ(logo->getLogoVersion(), 0x456);
    EXPECT_EQ(logo->getDownloadDataID(), 0xFEDC);
    EXPECT_EQ(logo->getLogoDataLength(), 0);
    EXPECT_EQ(logo->getLogoData(), nullptr);
}

TEST(TLogoTransmissionDescriptor, FieldsTakeTheirBitsAlone) {
    const auto ones = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 07 01 FFFF FFFF FFFF"), 7);
    EXPECT_EQ(ones->getLogoID(), 0x1FF);
    EXPECT_EQ(ones->getLogoVersion(), 0xFFF);
    EXPECT_EQ(ones->getDownloadDataID(), 0xFFFF);
    const auto reserved = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 07 01 FE00 F000 0000"), 7);
    EXPECT_EQ(reserved->getLogoID(), 0);
    EXPECT_EQ(reserved->getLogoVersion(), 0);
    EXPECT_EQ(reserved->getDownloadDataID(), 0);
}

TEST(TLogoTransmissionDescriptor, FirstTypeIgnoresBytesBehind) {
    const auto logo = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 09 01 0123 0456 FEDC FFFF"), 7);
    EXPECT_EQ(logo->getDownloadDataID(), 0xFEDC);
    EXPECT_EQ(logo->getLogoData(), nullptr);
}

TEST(TLogoTransmissionDescriptor, SecondTypeHasAnIdAlone) {
    const auto logo = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 03 02 FF23"), 3);
    EXPECT_EQ(logo->getLogoTransmType(), TLogoTransmissionDescriptor::TYPE_CDT2);
    EXPECT_EQ(logo->getLogoID(), 0x123);
    const auto longer = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 07 02 0123 0456 FEDC"), 3);
    EXPECT_EQ(longer->getLogoID(), 0x123);
    EXPECT_EQ(longer->getLogoVersion(), 0);
    EXPECT_EQ(longer->getDownloadDataID(), 0);
    EXPECT_EQ(longer->getLogoData(), nullptr);
}

TEST(TLogoTransmissionDescriptor, SimpleTypeHasCharacters) {
    const auto logo = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 06 03 41 00 FF 42 0A"), 6);
    EXPECT_EQ(logo->getLogoTransmType(), TLogoTransmissionDescriptor::TYPE_SIMPLE);
    EXPECT_EQ(logo->getLogoDataLength(), 5);
    logo.bytes.data()[3] = 0x55;
    EXPECT_EQ(elements(logo->getLogoData(), 5), hex("41 00 FF 42 0A"));
    EXPECT_EQ(logo->getLogoID(), 0);
    EXPECT_EQ(logo->getLogoVersion(), 0);
    EXPECT_EQ(logo->getDownloadDataID(), 0);
}

TEST(TLogoTransmissionDescriptor, SimpleTypeMayHaveNoCharacters) {
    const auto logo = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 01 03"), 1);
    EXPECT_EQ(logo->getLogoTransmType(), 3);
    EXPECT_EQ(logo->getLogoDataLength(), 0);
}

TEST(TLogoTransmissionDescriptor, CharactersRunToTheEndOfTheGivenBytes) {
    const auto logo = expectDescriptor<TLogoTransmissionDescriptor>(hex("CF 01 03 4142"), 3);
    EXPECT_EQ(logo->getLogoDataLength(), 2);
    EXPECT_EQ(elements(logo->getLogoData(), 2), hex("4142"));
}

TEST(TLogoTransmissionDescriptor, NumberOfCharactersIsKeptInEightBits) {
    const auto wrapped = expectDescriptor<TLogoTransmissionDescriptor>(join({hex("CF 01 03"), fill(256, 'c')}), 257);
    EXPECT_EQ(wrapped->getLogoDataLength(), 0);
    const auto longer = expectDescriptor<TLogoTransmissionDescriptor>(join({hex("CF 01 03"), fill(300, 'c')}), 301);
    EXPECT_EQ(longer->getLogoDataLength(), 44);
    EXPECT_EQ(elements(longer->getLogoData(), 44), fill(44, 'c'));
}

TEST(TLogoTransmissionDescriptor, UnknownTypeIsKeptWithoutItsBody) {
    const auto zero = expectDescriptor<TLogoTransmissionDescriptor>(
        hex("CF 01 00"), 1,
        {"ISDBTUtils: TLogoTransmissionDescriptor::parse: Unsupported Logo Transmission Type: 0x00 (0)"});
    EXPECT_EQ(zero->getLogoTransmType(), 0);
    const auto unknown = expectDescriptor<TLogoTransmissionDescriptor>(
        hex("CF 07 FF 0123 0456 FEDC"), 1,
        {"ISDBTUtils: TLogoTransmissionDescriptor::parse: Unsupported Logo Transmission Type: 0xFF (255)"});
    EXPECT_EQ(unknown->getLogoTransmType(), 0xFF);
    EXPECT_EQ(unknown->getLogoID(), 0);
    EXPECT_EQ(unknown->getLogoVersion(), 0);
    EXPECT_EQ(unknown->getDownloadDataID(), 0);
    EXPECT_EQ(unknown->getLogoDataLength(), 0);
    EXPECT_EQ(unknown->getLogoData(), nullptr);
    expectDescriptor<TLogoTransmissionDescriptor>(
        hex("CF 01 04"), 1,
        {"ISDBTUtils: TLogoTransmissionDescriptor::parse: Unsupported Logo Transmission Type: 0x04 (4)"});
}

TEST(TLogoTransmissionDescriptor, FirstTypeNeedsSixBytes) {
    expectTooShort(hex("CF 01 01"), 0);
    expectTooShort(hex("CF 06 01 0123 0456 FE"), 5);
}

TEST(TLogoTransmissionDescriptor, SecondTypeNeedsTwoBytesButTheLineSaysSix) {
    expectTooShort(hex("CF 01 02"), 0);
    expectTooShort(hex("CF 02 02 01"), 1);
}
