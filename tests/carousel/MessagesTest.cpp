#include "dsmcc/Messages.h"
#include "CarouselMessages.h"
#include "support/Bytes.h"

#include <gtest/gtest.h>

using namespace wire;
using dsmcc::RefusalKind;

namespace {

/// Reads a heap copy of exactly the section. Blocks are looked at while it is there.
class Read {
public:
    explicit Read(const ByteVector& section, bool crc32 = true)
        : m_bytes(section), m_message(dsmcc::readMessage({m_bytes.data(), m_bytes.size()}, crc32)) {}

    template <class T> const T& as() const { return std::get<T>(m_message); }
    template <class T> bool is() const { return std::holds_alternative<T>(m_message); }

private:
    HeapBytes m_bytes;
    dsmcc::Message m_message;
};

using Dsi = dsmcc::DownloadServerInitiate;
using Indication = dsmcc::DownloadInfoIndication;
using Block = dsmcc::DownloadDataBlock;

void expectRefusal(const ByteVector& section, RefusalKind kind, std::size_t at, const std::string& text) {
    const Read read(section);
    ASSERT_TRUE(read.is<dsmcc::Refusal>());
    EXPECT_EQ(read.as<dsmcc::Refusal>().kind, kind);
    EXPECT_EQ(read.as<dsmcc::Refusal>().at, at);
    EXPECT_EQ(read.as<dsmcc::Refusal>().text, text);
}

/// The section with a right CRC_32 again.
ByteVector mended(ByteVector section) {
    section.resize(section.size() - 4);
    const QUOR_U32 crc = crc32(section);
    return join({section, u32(crc)});
}

const ByteVector DDB = hex("3C B01D 0007 C3 02 02"
                           "11 03 1003 0000002A FF 00 0008"
                           "0007 21 FF 0102 AABB"
                           "00000000");

} // namespace

TEST(DataBlock, AllFields) {
    const Read read(mended(DDB));
    const auto& ddb = read.as<Block>();
    EXPECT_EQ(ddb.downloadId, 42U);
    EXPECT_EQ(ddb.moduleId, 7);
    EXPECT_EQ(ddb.moduleVersion, 0x21);
    EXPECT_EQ(ddb.blockNumber, 0x0102);
    EXPECT_EQ(ByteVector(ddb.data.begin(), ddb.data.end()), hex("AABB"));
    EXPECT_EQ(ddb.at, 26U);
}

TEST(DataBlock, WithoutABlock) {
    const Read read(block({}, {}));
    EXPECT_EQ(read.as<Block>().data.size, 0U);
}

TEST(DataBlock, BehindAnAdaptationHeader) {
    const Read read(mended(hex("3C B020 0007 C3 02 02"
                               "11 03 1003 0000002A FF 03 000B 010203"
                               "0007 21 FF 0102 AABB"
                               "00000000")));
    EXPECT_EQ(read.as<Block>().moduleId, 7);
    EXPECT_EQ(read.as<Block>().at, 29U);
}

TEST(DataBlock, InATableOfMessagesIsNone) {
    ByteVector section = DDB;
    section[0] = 0x3B;
    EXPECT_EQ(Read(mended(section)).as<dsmcc::OtherMessage>().messageId, 0x1003);
}

TEST(ServerInitiate, OfAnObjectCarousel) {
    const Read read(mended(hex("3B B078 0001 C1 00 00"
                               "11 03 1006 80010001 FF 00 0063"
                               "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF 0000 0049"
                               "00000004 73726700 00000001"
                               "49534F06 0000002B 00 02"
                               "49534F50 0D 00000002 0001 01 00 04 00000001"
                               "49534F40 12 01 0000 0016 000C 0A 0001 80010003 0000FFFF"
                               "00 01 00000005 0002 AABB 0000"
                               "00000000")));
    ASSERT_TRUE(read.is<dsmcc::Refusal>()); // its privateDataLength ends within the contexts
    EXPECT_EQ(read.as<dsmcc::Refusal>().kind, RefusalKind::Truncated);

    const Read right(mended(hex("3B B078 0001 C1 00 00"
                                "11 03 1006 80010001 FF 00 0063"
                                "FFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFFF 0000 004B"
                                "00000004 73726700 00000001"
                                "49534F06 0000002B 00 02"
                                "49534F50 0D 00000002 0001 01 00 04 00000001"
                                "49534F40 12 01 0000 0016 000C 0A 0001 80010003 0000FFFF"
                                "00 01 00000005 0002 AABB 0000"
                                "00000000")));
    const auto& dsi = right.as<Dsi>();
    EXPECT_EQ(dsi.transactionId, 0x80010001U);
    ASSERT_TRUE(dsi.gateway && dsi.gateway->location);
    EXPECT_EQ(dsi.gateway->typeId, "srg");
    EXPECT_EQ(dsi.gateway->location->carouselId, 2U);
    EXPECT_EQ(dsi.gateway->location->moduleId, 1);
    EXPECT_EQ(dsi.gateway->location->objectKey, hex("00000001"));
    ASSERT_EQ(dsi.gateway->taps.size(), 1U);
    EXPECT_EQ(dsi.gateway->taps[0].use, 0x0016);
    EXPECT_EQ(dsi.gateway->taps[0].associationTag, 0x000C);
    EXPECT_EQ(dsi.gateway->taps[0].selector, hex("0001 80010003 0000FFFF"));
    EXPECT_EQ(dsi.gateway->taps[0].transactionId, 0x80010003U);
    EXPECT_EQ(dsi.gateway->taps[0].timeout, 65535U);
    EXPECT_TRUE(dsi.groups.empty());
}

TEST(ServerInitiate, TapsContextsAndUserInfo) {
    const ByteVector data = join({ior("srg", 2, 1, hex("01")), hex("01"), objectTap(0x0C), hex("01 00000005 0002 AABB"),
                                  hex("0005 70 03 414243")});
    const Read read(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0002 1234"), counted16(data)})));
    const auto& dsi = read.as<Dsi>();
    EXPECT_EQ(dsi.compatibility, hex("1234"));
    ASSERT_EQ(dsi.taps.size(), 1U);
    EXPECT_EQ(dsi.taps[0].use, 0x0017);
    EXPECT_FALSE(dsi.taps[0].transactionId);
    ASSERT_EQ(dsi.descriptors.size(), 1U);
    EXPECT_EQ(dsi.descriptors[0].tag, dsmcc::Descriptor::LABEL);
    EXPECT_EQ(dsi.descriptors[0].body, text("ABC"));
}

TEST(ServerInitiate, LongTypeIdWithItsGap) {
    ByteVector reference = ior("srg", 2, 1, hex("01"));
    reference.erase(reference.begin(), reference.begin() + 8);
    const ByteVector data = join({u32(20), text("DSM::ServiceGateway"), hex("00"), reference, hex("00 00 0000")});
    const Read even(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0000"), counted16(data)})));
    EXPECT_EQ(even.as<Dsi>().gateway->typeId, "DSM::ServiceGateway");

    const ByteVector odd = join({u32(19), text("DSM::ServiceGateway"), hex("FF"), reference, hex("00 00 0000")});
    const Read padded(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0000"), counted16(odd)})));
    EXPECT_EQ(padded.as<Dsi>().gateway->typeId, "DSM::ServiceGateway");
}

TEST(ServerInitiate, GatewayOfAnotherServiceIsRefused) {
    const ByteVector service = join({hex("49534F46"), counted32(join({counted8(fill(20, 0x11)), u32(0), u32(0)}))});
    const ByteVector reference = join({counted32(join({text("srg"), hex("00")})), u32(1), hex("49534F05"),
                                       counted32(join({hex("00 01"), service})), hex("00 00 0000")});
    expectRefusal(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0000"), counted16(reference)})),
                  RefusalKind::Location, 44, "the IOR of the service gateway has no ObjectLocation");
}

TEST(ServerInitiate, LittleEndianProfile) {
    const ByteVector profile = hex("01 01  504F5349 0D 02000000 0100 01 00 04 00000001");
    const ByteVector data = join(
        {counted32(join({text("srg"), hex("00")})), u32(1), hex("49534F06"), counted32(profile), hex("00 00 0000")});
    const Read read(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0000"), counted16(data)})));
    EXPECT_EQ(read.as<Dsi>().gateway->location->carouselId, 2U);
    EXPECT_EQ(read.as<Dsi>().gateway->location->moduleId, 1);
}

TEST(ServerInitiate, Groups) {
    const ByteVector groups = hex("0002"
                                  "80000002 00001000 0002 1122 0004 02 02 4142"
                                  "80000004 00002000 0000 0000"
                                  "0001 99");
    const Read read(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0000"), counted16(groups)})));
    const auto& dsi = read.as<Dsi>();
    EXPECT_FALSE(dsi.gateway);
    ASSERT_EQ(dsi.groups.size(), 2U);
    EXPECT_EQ(dsi.groups[0].id, 0x80000002U);
    EXPECT_EQ(dsi.groups[0].size, 4096U);
    EXPECT_EQ(dsi.groups[0].compatibility, hex("1122"));
    EXPECT_EQ(dsi.groups[0].descriptors[0].body, text("AB"));
    EXPECT_EQ(dsi.groups[1].id, 0x80000004U);
    EXPECT_EQ(dsi.privateData, hex("99"));
}

TEST(ServerInitiate, WithoutPrivateData) {
    const Read read(messageSection(0x1006, 0x80000000, join({fill(20, 0xFF), hex("0000 0000")})));
    EXPECT_FALSE(read.as<Dsi>().gateway);
    EXPECT_TRUE(read.as<Dsi>().groups.empty());
}

TEST(InfoIndication, OfAnObjectCarousel) {
    const Read read(objectDii({2, 4066, 0x80020002}, {{1, 70000, 5, hex("09 05 78 00020000 02 01 41")}, {3, 0}}));
    const auto& dii = read.as<Indication>();
    EXPECT_TRUE(dii.object);
    EXPECT_EQ(dii.transactionId, 0x80020002U);
    EXPECT_EQ(dsmcc::identificationOf(dii.transactionId), 1);
    EXPECT_EQ(dsmcc::versionOf(dii.transactionId), 2);
    EXPECT_EQ(dii.downloadId, 2U);
    EXPECT_EQ(dii.blockSize, 4066);
    ASSERT_EQ(dii.modules.size(), 2U);
    EXPECT_EQ(dii.modules[0].id, 1);
    EXPECT_EQ(dii.modules[0].size, 70000U);
    EXPECT_EQ(dii.modules[0].version, 5);
    EXPECT_EQ(dii.modules[0].moduleTimeOut, 100U);
    EXPECT_EQ(dii.modules[0].blockTimeOut, 101U);
    EXPECT_EQ(dii.modules[0].minBlockTime, 102U);
    EXPECT_EQ(dii.modules[0].taps.at(0).associationTag, 0x000B);
    EXPECT_EQ(dii.modules[0].descriptor(dsmcc::Descriptor::COMPRESSED_MODULE)->body, hex("78 00020000"));
    EXPECT_EQ(dii.modules[0].text(dsmcc::Descriptor::NAME), "A");
    EXPECT_EQ(dii.modules[1].descriptor(dsmcc::Descriptor::NAME), nullptr);
    EXPECT_EQ(dii.modules[1].text(dsmcc::Descriptor::NAME), "");
}

TEST(InfoIndication, OfADataCarousel) {
    const Read read(dataDii({}, {{0, 20, 1, hex("01 03 612F62 02 01 41 C2 05 00 00000020")}, {1, 5, 9, {}}}));
    const auto& dii = read.as<Indication>();
    EXPECT_FALSE(dii.object);
    ASSERT_EQ(dii.modules.size(), 2U);
    EXPECT_EQ(dii.modules[0].descriptors.size(), 3U);
    EXPECT_EQ(dii.modules[0].text(dsmcc::Descriptor::TYPE), "a/b");
    EXPECT_EQ(dii.modules[1].version, 9);
    EXPECT_TRUE(dii.modules[1].taps.empty());
}

TEST(InfoIndication, DescriptorsEndWithTheFirstThatDoesNotFit) {
    const Read read(dataDii({}, {{0, 20, 1, hex("02 01 41 01 09 61")}}));
    ASSERT_EQ(read.as<Indication>().modules.at(0).descriptors.size(), 1U);
}

TEST(InfoIndication, WithoutModules) {
    const Read read(diiOf({}, 0, {}));
    EXPECT_TRUE(read.as<Indication>().modules.empty());
    EXPECT_FALSE(read.as<Indication>().object);
}

TEST(InfoIndication, MoreModulesThanThereAre) {
    expectRefusal(diiOf({}, 0xFFFF, hex("0001 00000010 01 00")), RefusalKind::Truncated, 50,
                  "moduleSize takes 4 bytes, and 0 are left");
}

TEST(Section, OfAnotherTable) {
    expectRefusal(hex("3E"), RefusalKind::TableId, 0, "table_id 62 is not of a carousel");
}

TEST(Section, WithAWrongLength) {
    expectRefusal(hex("3C B01C 00"), RefusalKind::SectionLength, 1, "section_length is 28, and 1 bytes follow");
}

TEST(Section, Empty) {
    expectRefusal({}, RefusalKind::Truncated, 0, "table_id takes 1 bytes, and 0 are left");
    EXPECT_TRUE(std::holds_alternative<dsmcc::Refusal>(dsmcc::readMessage({nullptr, 0})));
}

TEST(Section, WithAWrongCrc32) {
    expectRefusal(DDB, RefusalKind::Crc32, 26 + 2, "the CRC_32 is wrong");
    EXPECT_TRUE(Read(DDB, false).is<Block>());
}

TEST(Section, WithAChecksumIsTaken) {
    ByteVector section = DDB;
    section[1] = 0x30;
    EXPECT_TRUE(Read(section).is<Block>());
}

/// A generator that is widely used sets both.
TEST(Section, PrivateIndicatorIsNotLookedAt) {
    ByteVector section = DDB;
    section[1] = 0xF0;
    EXPECT_TRUE(Read(mended(section)).is<Block>());
}

TEST(Section, OfAnotherProtocol) {
    ByteVector section = DDB;
    section[9] = 0x02;
    expectRefusal(mended(section), RefusalKind::Protocol, 8, "no message of the download protocol");
}

TEST(Section, MessageBeyondItsEnd) {
    ByteVector section = DDB;
    section[19] = 0x09;
    expectRefusal(mended(section), RefusalKind::Truncated, 20, "message takes 9 bytes, and 8 are left");
}

TEST(Section, AdaptationHeaderBeyondItsMessage) {
    ByteVector section = DDB;
    section[17] = 0x09;
    expectRefusal(mended(section), RefusalKind::Truncated, 20, "adaptation header takes 9 bytes, and 8 are left");
}

TEST(Section, DownloadCancelIsAnotherMessage) {
    EXPECT_EQ(Read(messageSection(0x1005, 0, hex("00"))).as<dsmcc::OtherMessage>().messageId, 0x1005);
}

/// Whatever is missing or changed, nothing is read that is not there.
TEST(Section, EveryPrefixAndEveryChangedByteIsSurvived) {
    const ByteVector wholes[] = {
        gatewaySection(2, 1, hex("01")), objectDii({}, {{1, 70000, 5, hex("09 05 78 00020000")}}),
        dataDii({}, {{0, 20, 1, hex("02 01 41")}}), block({}, hex("0011223344")),
        messageSection(0x1006, 0x80000000,
                       join({fill(20, 0xFF), hex("0000"), counted16(hex("0001 80000002 00001000 0002 1122 0000"))}))};
    for (const ByteVector& whole : wholes) {
        for (std::size_t size = 0; size < whole.size(); ++size) {
            ByteVector cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_TRUE(Read(cut).is<dsmcc::Refusal>());
            if (size >= 3) {
                Read fitting(withSectionLength(cut, static_cast<unsigned>(size - 3)), false);
            }
        }
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const QUOR_U8 value : hex("00 01 7F 80 FF")) {
                ByteVector changed = whole;
                changed[at] = value;
                Read read(changed, false);
            }
        }
    }
}
