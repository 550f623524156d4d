#include "descriptors/TTransportProtocolDescriptor.h"

#include "descriptors/TTransportProtocolDescriptorDC.h"
#include "descriptors/TTransportProtocolDescriptorIP.h"
#include "descriptors/TTransportProtocolDescriptorOC.h"
#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"
#include "support/Survival.h"

#include <type_traits>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;
using Quor::TTransportProtocolDescriptor;
using Quor::TTransportProtocolDescriptorDC;
using Quor::TTransportProtocolDescriptorIP;
using Quor::TTransportProtocolDescriptorOC;

static_assert(std::is_abstract<TTransportProtocolDescriptor>::value, "there are only its variants");
static_assert(std::is_base_of<TISDBTDescriptor, TTransportProtocolDescriptor>::value, "a descriptor");

EXPECT_GETTER(TTransportProtocolDescriptor::Type, TTransportProtocolDescriptor, getType);
EXPECT_GETTER(QUOR_U16, TTransportProtocolDescriptor, getProtocolID);
EXPECT_GETTER(QUOR_U8, TTransportProtocolDescriptor, getTransportProtocolLabel);

namespace {

/// A transport that a receiver made up itself.
class OwnTransport : public TTransportProtocolDescriptor {
public:
    OwnTransport(Type type, QUOR_U16 protocolId, QUOR_U8* data, QUOR_U32 length)
        : TTransportProtocolDescriptor(type, protocolId, data, length) {}
    QUOR_BOOL parseData(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*) override { return 0; }
};

template <class Variant> const Variant* as(const Parsed<TTransportProtocolDescriptor>& parsed) {
    return dynamic_cast<const Variant*>(parsed.object.get());
}

} // namespace

TEST(TTransportProtocolDescriptor, TypesEqualTheProtocolIds) {
    EXPECT_EQ(static_cast<int>(TTransportProtocolDescriptor::ObjectCarousel), 1);
    EXPECT_EQ(static_cast<int>(TTransportProtocolDescriptor::IP), 2);
    EXPECT_EQ(static_cast<int>(TTransportProtocolDescriptor::DataPiping), 3);
    EXPECT_EQ(static_cast<int>(TTransportProtocolDescriptor::DataCarousel), 4);
}

TEST(TTransportProtocolDescriptor, StartsWithWhatItIsTold) {
    const HeapBytes bytes(hex("02 03 0009 07"));
    const InDirtyMemory<OwnTransport> memory(TTransportProtocolDescriptor::DataPiping, QUOR_U16{0x1234}, bytes.data(),
                                             bytes.size());
    const OwnTransport& transport = *memory;
    EXPECT_EQ(transport.getDescriptorTag(), 0x02);
    EXPECT_EQ(transport.getData(), bytes.data());
    EXPECT_EQ(transport.getDataLength(), 5U);
    EXPECT_EQ(transport.getType(), TTransportProtocolDescriptor::DataPiping);
    EXPECT_EQ(transport.getProtocolID(), 0x1234);
    EXPECT_EQ(transport.getTransportProtocolLabel(), 0);
}

TEST(TTransportProtocolDescriptor, ProtocolIdSelectsTheVariant) {
    const auto oc = expectSuccess<TTransportProtocolDescriptor>(hex("02 05  0001 07 00 33"), 5);
    ASSERT_NE(as<TTransportProtocolDescriptorOC>(oc), nullptr);
    EXPECT_EQ(as<TTransportProtocolDescriptorDC>(oc), nullptr);
    EXPECT_EQ(oc->getType(), TTransportProtocolDescriptor::ObjectCarousel);
    EXPECT_EQ(oc->getProtocolID(), 1);
    EXPECT_EQ(oc->getTransportProtocolLabel(), 7);
    EXPECT_EQ(as<TTransportProtocolDescriptorOC>(oc)->getComponentTag(), 0x33);

    const auto ip = expectSuccess<TTransportProtocolDescriptor>(hex("02 07  0002 08 00 80  01 61"), 7);
    ASSERT_NE(as<TTransportProtocolDescriptorIP>(ip), nullptr);
    EXPECT_EQ(ip->getType(), TTransportProtocolDescriptor::IP);
    EXPECT_EQ(ip->getProtocolID(), 2);
    EXPECT_EQ(ip->getTransportProtocolLabel(), 8);
    EXPECT_EQ(as<TTransportProtocolDescriptorIP>(ip)->getURL(0), "a");

    const auto dc = expectSuccess<TTransportProtocolDescriptor>(hex("02 05  0004 09 00 44"), 5);
    ASSERT_NE(as<TTransportProtocolDescriptorDC>(dc), nullptr);
    EXPECT_EQ(as<TTransportProtocolDescriptorOC>(dc), nullptr);
    EXPECT_EQ(dc->getType(), TTransportProtocolDescriptor::DataCarousel);
    EXPECT_EQ(dc->getProtocolID(), 4);
    EXPECT_EQ(dc->getTransportProtocolLabel(), 9);
    EXPECT_EQ(as<TTransportProtocolDescriptorDC>(dc)->getComponentTag(), 0x44);
}

TEST(TTransportProtocolDescriptor, PointsAtItsTagWithALengthTwoBytesShort) {
    for (const char* const protocol : {"0001", "0002", "0004"}) {
        const auto parsed =
            expectSuccess<TTransportProtocolDescriptor>(hex("02 05" + std::string(protocol) + "07 00 00"), 5);
        EXPECT_EQ(parsed->getDescriptorTag(), 0x02);
        EXPECT_EQ(parsed->getData(), parsed.bytes.data());
        EXPECT_EQ(parsed->getDataLength(), 5U);
    }
}

TEST(TTransportProtocolDescriptor, DataPipingIsRejectedWithoutAnErrorCode) {
    const Lines notSupported{"ISDBTUtils: TTransportProtocolDescriptor::parse: DataPiping not supported. Aborting!"};
    expectFailure<TTransportProtocolDescriptor>(hex("02 05  0003 07 00 33"), TISDBTTable::ERROR_OK, notSupported);
    expectFailure<TTransportProtocolDescriptor>(hex("02 03  0003 07"), TISDBTTable::ERROR_OK, notSupported);
}

TEST(TTransportProtocolDescriptor, UnknownProtocolsAreRejectedWithoutAnErrorCode) {
    struct Case {
        const char* protocol;
        const char* shown;
    };
    for (const Case& each : {Case{"0000", "0x0000"}, Case{"0005", "0x0005"}, Case{"0101", "0x0101"},
                             Case{"0204", "0x0204"}, Case{"ABCD", "0xABCD"}, Case{"FFFF", "0xFFFF"}}) {
        expectFailure<TTransportProtocolDescriptor>(
            hex("02 05" + std::string(each.protocol) + "07 00 33"), TISDBTTable::ERROR_OK,
            {"ISDBTUtils: TTransportProtocolDescriptor::parse: Unknown protocol ID: " + std::string(each.shown) +
             ". Aborting!"});
    }
}

TEST(TTransportProtocolDescriptor, ABodyThatIsTooShortFailsInItsVariant) {
    expectFailure<TTransportProtocolDescriptor>(
        hex("02 03  0001 07"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TTransportProtocolDescriptorOC::parse: Item length not valid: 3. Aborting!"});
    expectFailure<TTransportProtocolDescriptor>(
        hex("02 03  0002 07"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TTransportProtocolDescriptorIP::parse: Item length not valid: 3. Aborting!"});
    expectFailure<TTransportProtocolDescriptor>(
        hex("02 03  0004 07"), TISDBTTable::ERROR_INVALID_DATA_LENGTH,
        {"ISDBTUtils: TTransportProtocolDescriptorDC::parse: Item length not valid: 3. Aborting!"});
}

TEST(TTransportProtocolDescriptor, TheBodyRunsToTheEndOfTheCallersLength) {
    const auto oc = expectSuccess<TTransportProtocolDescriptor>(hex("02 03  0001 07 00 33"), 5);
    EXPECT_EQ(as<TTransportProtocolDescriptorOC>(oc)->getComponentTag(), 0x33);
    EXPECT_EQ(oc->getDataLength(), 5U);
    const auto ip = expectSuccess<TTransportProtocolDescriptor>(hex("02 03  0002 07 00 80  02 6162"), 8);
    EXPECT_EQ(as<TTransportProtocolDescriptorIP>(ip)->getURL(0), "ab");
    EXPECT_EQ(ip->getDataLength(), 8U);
}

TEST(TTransportProtocolDescriptor, ACloneIsOfTheSameVariantWithTheLabel) {
    for (const QUOR_U8 protocol : {QUOR_U8{1}, QUOR_U8{2}, QUOR_U8{4}}) {
        SCOPED_TRACE(int{protocol});
        std::unique_ptr<TTransportProtocolDescriptor> clone;
        const LogCapture log;
        {
            const auto parsed =
                parseBytes<TTransportProtocolDescriptor>({0x02, 0x05, 0x00, protocol, 0x07, 0x00, 0xB3});
            ASSERT_NE(parsed.object, nullptr);
            clone.reset(TTransportProtocolDescriptor::clone(parsed.object.get()));
        }
        ASSERT_NE(clone, nullptr);
        EXPECT_EQ(log.lines(), Lines{});
        EXPECT_EQ(clone->getDescriptorTag(), 0x02);
        EXPECT_EQ(clone->getData(), nullptr);
        EXPECT_EQ(clone->getDataLength(), 0U);
        EXPECT_EQ(static_cast<unsigned>(clone->getType()), unsigned{protocol});
        EXPECT_EQ(clone->getProtocolID(), protocol);
        EXPECT_EQ(clone->getTransportProtocolLabel(), 7);
        EXPECT_EQ(dynamic_cast<TTransportProtocolDescriptorOC*>(clone.get()) != nullptr, protocol == 1);
        EXPECT_EQ(dynamic_cast<TTransportProtocolDescriptorIP*>(clone.get()) != nullptr, protocol == 2);
        EXPECT_EQ(dynamic_cast<TTransportProtocolDescriptorDC*>(clone.get()) != nullptr, protocol == 4);
    }
}

TEST(TTransportProtocolDescriptor, DataPipingHasNoClone) {
    OwnTransport transport(TTransportProtocolDescriptor::DataPiping, 3, nullptr, 0);
    const LogCapture log;
    EXPECT_EQ(TTransportProtocolDescriptor::clone(&transport), nullptr);
    EXPECT_EQ(log.lines(),
              Lines{"ISDBTUtils: TTransportProtocolDescriptor::clone: DataPiping not supported. Aborting!"});
    expectLevelAndTag(log);
}

TEST(TTransportProtocolDescriptor, UnknownTypesHaveNoClone) {
    // The line shows the type, not the protocol id.
    OwnTransport transport(static_cast<TTransportProtocolDescriptor::Type>(5), 1, nullptr, 0);
    const LogCapture log;
    EXPECT_EQ(TTransportProtocolDescriptor::clone(&transport), nullptr);
    OwnTransport none(static_cast<TTransportProtocolDescriptor::Type>(0), 2, nullptr, 0);
    EXPECT_EQ(TTransportProtocolDescriptor::clone(&none), nullptr);
    EXPECT_EQ(log.lines(),
              (Lines{"ISDBTUtils: TTransportProtocolDescriptor::clone: Unknown protocol ID: 0x0005. Aborting!",
                     "ISDBTUtils: TTransportProtocolDescriptor::clone: Unknown protocol ID: 0x0000. Aborting!"}));
    expectLevelAndTag(log);
}

TEST(TTransportProtocolDescriptor, DamageIsSurvived) {
    for (const char* const wire :
         {"02 05  0001 07 00 33", "02 0B  0001 07 80  0001 0002 0003 33", "02 0A  0002 07 00 80  01 61 02 6263",
          "02 0F  0002 07 80  0001 0002 0003 00  00 02 6263", "02 0B  0004 07 80  0001 0002 0003 33"}) {
        expectEveryPrefixSurvives<TTransportProtocolDescriptor>(hex(wire));
        expectEveryByteChangeSurvives<TTransportProtocolDescriptor>(hex(wire));
    }
}
