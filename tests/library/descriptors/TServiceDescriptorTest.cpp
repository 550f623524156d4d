#include "descriptors/TServiceDescriptor.h"

#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <gtest/gtest.h>

using Quor::TISDBTTable;
using Quor::TServiceDescriptor;

namespace {

const std::string badProvider =
    "ISDBTUtils: TServiceDescriptor:: parse: ERROR: parsing Service Provider Name. Aborting!";
const std::string badName = "ISDBTUtils: TServiceDescriptor:: parse: ERROR: parsing Service Name. Aborting!";
const std::string noName = "ISDBTUtils: TServiceDescriptor::parse: Longer data length is required: 0 < 1. Aborting!";

std::string longString(int length, int left) {
    return "ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: " +
           std::to_string(length) + " > " + std::to_string(left) + ".Aborting!";
}

} // namespace

TEST(TServiceDescriptor, Constants) {
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DIGITAL_TV, 0x01);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DIGITAL_AUDIO, 0x02);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_TELETEXT, 0x03);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_NVOD_REFERENCE, 0x04);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_NVOD_TIME_SHIFTED, 0x05);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_MOSAIC, 0x06);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_RADIO, 0x0A);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_MOSAIC, 0x0B);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DATA_BROADCASTING, 0x0C);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_RESERVED_COMMON_INTERFACE, 0x0D);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_RCS_MAP, 0x0E);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_RCS_FLS, 0x0F);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DVB_MHP, 0x10);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DIGITAL_MPEG2_HD_TELEVISION, 0x11);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_SD_TV, 0x16);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_TIME_SHIFTED_TV, 0x17);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_SD_REFERENCE_TV, 0x18);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_HD_TV, 0x19);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_TIME_SHIFTED_TV, 0x1A);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ADVANCED_CODING_DIGITAL_NVOD_HD_REFERENCE_TV, 0x1B);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_SPECIAL_VIDEO, 0xA1);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_SPECIAL_AUDIO, 0xA2);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_SPECIAL_DATA, 0xA3);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_ENGINEERING, 0xA4);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_PROMOTIONAL_VIDEO, 0xA5);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_PROMOTIONAL_AUDIO, 0xA6);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_PROMOTIONAL_DATA, 0xA7);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DATA_SERVICE_FOR_ANTECIPATED_STORAGE, 0xA8);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_EXCLUSIVE_DATA_SERVICE_FOR_STORAGE, 0xA9);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_BOOKMARK_LIST, 0xAA);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_SIMULTANEOUS_SERVER_TYPE, 0xAB);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_INDEPENDENT_FILE_SERVICE, 0xAC);
    EXPECT_CONSTANT(QUOR_U8, TServiceDescriptor::SERVICE_DATA, 0xC0);
}

TEST(TServiceDescriptor, StartsEmpty) {
    HeapBytes bytes(hex("48 05 01  01 41  01 42"));
    const InDirtyMemory<TServiceDescriptor> service(bytes.data(), bytes.size());
    EXPECT_EQ(service->getDescriptorTag(), 0x48);
    EXPECT_EQ(service->getServiceType(), 0);
    EXPECT_EQ(service->getServiceProviderName(), "");
    EXPECT_EQ(service->getServiceName(), "");
}

TEST(TServiceDescriptor, ReadsTypeProviderAndName) {
    // The service_type is not counted.
    const auto service = expectDescriptor<TServiceDescriptor>(hex("48 0B 01  03 474C42  05 474C4F424F"), 10);
    EXPECT_EQ(service->getServiceType(), TServiceDescriptor::SERVICE_DIGITAL_TV);
    EXPECT_EQ(service->getServiceProviderName(), "GLB");
    EXPECT_EQ(service->getServiceName(), "GLOBO");
}

TEST(TServiceDescriptor, NamesAreKeptAsTheyAre) {
    const auto service = expectDescriptor<TServiceDescriptor>(hex("48 08 FF  02 C200  03 00FF0A"), 7);
    EXPECT_EQ(service->getServiceType(), 0xFF);
    EXPECT_EQ(service->getServiceProviderName(), std::string("\xC2\0", 2));
    EXPECT_EQ(service->getServiceName(), std::string("\0\xFF\n", 3));
}

TEST(TServiceDescriptor, NamesMayBeEmpty) {
    const auto nameless = expectDescriptor<TServiceDescriptor>(hex("48 03 C0  00  00"), 2);
    EXPECT_EQ(nameless->getServiceType(), 0xC0);
    EXPECT_EQ(nameless->getServiceProviderName(), "");
    EXPECT_EQ(nameless->getServiceName(), "");
    const auto provider = expectDescriptor<TServiceDescriptor>(hex("48 05 C0  02 4142  00"), 4);
    EXPECT_EQ(provider->getServiceProviderName(), "AB");
    EXPECT_EQ(provider->getServiceName(), "");
    const auto service = expectDescriptor<TServiceDescriptor>(hex("48 05 C0  00  02 4142"), 4);
    EXPECT_EQ(service->getServiceProviderName(), "");
    EXPECT_EQ(service->getServiceName(), "AB");
}

TEST(TServiceDescriptor, BytesBehindTheNameAreIgnored) {
    const auto service = expectDescriptor<TServiceDescriptor>(hex("48 07 01  01 41  01 42  FFFF"), 4);
    EXPECT_EQ(service->getServiceName(), "B");
}

TEST(TServiceDescriptor, ProviderThatFillsTheBodyFails) {
    expectFailure<TServiceDescriptor>(hex("48 05 01  03 414243"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH,
                                      {noName});
    expectFailure<TServiceDescriptor>(hex("48 03 01  01 41"), TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, {noName});
    expectFailure<TServiceDescriptor>(join({hex("48 FF 01  FD"), fill(253, 'p')}),
                                      TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, {noName});
}

TEST(TServiceDescriptor, ProviderPastTheEndFails) {
    expectFailure<TServiceDescriptor>(hex("48 03 01  02 41"), TISDBTTable::ERROR_INVALID_STRING,
                                      {longString(2, 1), badProvider});
    expectFailure<TServiceDescriptor>(hex("48 05 01  FF 414243"), TISDBTTable::ERROR_INVALID_STRING,
                                      {longString(255, 3), badProvider});
}

TEST(TServiceDescriptor, NamePastTheEndFails) {
    expectFailure<TServiceDescriptor>(hex("48 05 01  01 41  02 42"), TISDBTTable::ERROR_INVALID_STRING,
                                      {longString(2, 1), badName});
    expectFailure<TServiceDescriptor>(hex("48 04 01  01 41  01"), TISDBTTable::ERROR_INVALID_STRING,
                                      {longString(1, 0), badName});
}

TEST(TServiceDescriptor, NamesRunIntoAllTheGivenBytes) {
    const auto service = expectDescriptor<TServiceDescriptor>(hex("48 03 01  03 414243  02 4445"), 7);
    EXPECT_EQ(service->getServiceProviderName(), "ABC");
    EXPECT_EQ(service->getServiceName(), "DE");
}

TEST(TServiceDescriptor, LongestNames) {
    const auto service = expectDescriptor<TServiceDescriptor>(
        descriptor(0x48, join({hex("01  7E"), fill(126, 'p'), hex("7E"), fill(126, 'n')})), 254);
    EXPECT_EQ(service->getServiceProviderName(), std::string(126, 'p'));
    EXPECT_EQ(service->getServiceName(), std::string(126, 'n'));
}

TEST(TServiceDescriptor, LengthsAreKeptInEightBits) {
    // 255 bytes of provider and 2 of name are 257.
    const auto counted =
        expectDescriptor<TServiceDescriptor>(join({hex("48 FF 01  FE"), fill(254, 'p'), hex("01 42")}), 1);
    EXPECT_EQ(counted->getServiceProviderName(), std::string(254, 'p'));
    EXPECT_EQ(counted->getServiceName(), "B");

    expectFailure<TServiceDescriptor>(join({hex("48 FF 01  FE"), fill(254, 'p')}),
                                      TISDBTTable::ERROR_INVALID_DESCRIPTOR_LENGTH, {noName});

    // A provider of 256 bytes with its length counts as none, so that the name is read from the same place.
    const auto repeated = expectDescriptor<TServiceDescriptor>(join({hex("48 FF 01  FF"), fill(255, 'p')}), 0);
    EXPECT_EQ(repeated->getServiceProviderName(), std::string(255, 'p'));
    EXPECT_EQ(repeated->getServiceName(), std::string(255, 'p'));
}
