#include "descriptors/TTransportProtocolDescriptorIP.h"

#include "support/DirtyMemory.h"
#include "support/Fields.h"
#include "support/Outcome.h"

#include <type_traits>

using Quor::TISDBTTable;
using Quor::TTransportProtocolDescriptor;
using Quor::TTransportProtocolDescriptorIP;

static_assert(std::is_base_of<TTransportProtocolDescriptor, TTransportProtocolDescriptorIP>::value, "a variant");

EXPECT_GETTER(QUOR_BOOL, TTransportProtocolDescriptorIP, isRemoteConnection);
EXPECT_GETTER(QUOR_U16, TTransportProtocolDescriptorIP, getOriginalNetworkID);
EXPECT_GETTER(QUOR_U16, TTransportProtocolDescriptorIP, getTransportStreamID);
EXPECT_GETTER(QUOR_U16, TTransportProtocolDescriptorIP, getServiceID);
EXPECT_GETTER(QUOR_BOOL, TTransportProtocolDescriptorIP, isAligned);

namespace {

/// A descriptor of this variant: protocol_id and what follows it.
ByteVector wire(const ByteVector& selector) {
    return descriptor(0x02, join({hex("0002"), selector}));
}

ByteVector wire(const std::string& selector) {
    return wire(hex(selector));
}

/// URL_length and URL
ByteVector url(const std::string& characters) {
    return join({{static_cast<QUOR_U8>(characters.size())}, text(characters)});
}

const TTransportProtocolDescriptorIP& variant(const Parsed<TTransportProtocolDescriptor>& parsed) {
    return dynamic_cast<const TTransportProtocolDescriptorIP&>(*parsed.object);
}

void expectIds(const TTransportProtocolDescriptorIP& ip, unsigned network, unsigned stream, unsigned service) {
    EXPECT_EQ(ip.getOriginalNetworkID(), network);
    EXPECT_EQ(ip.getTransportStreamID(), stream);
    EXPECT_EQ(ip.getServiceID(), service);
}

std::vector<std::string> urls(const TTransportProtocolDescriptorIP& ip) {
    std::vector<std::string> all;
    for (QUOR_U32 index = 0; index < ip.getURLCount(); ++index) {
        all.push_back(ip.getURL(static_cast<QUOR_U8>(index)));
    }
    return all;
}

Lines invalidLength(unsigned length) {
    return {"ISDBTUtils: TTransportProtocolDescriptorIP::parse: Item length not valid: " + std::to_string(length) +
            ". Aborting!"};
}

/// The line of the application name item, which this class writes too.
const char* const NAME_LINE = "ISDBTUtils: TApplicationNameDescriptorItem:: parse: ERROR: parsing Name. Aborting!";

} // namespace

TEST(TTransportProtocolDescriptorIP, Constants) {
    const QUOR_U32& minimum = TTransportProtocolDescriptorIP::MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH;
    EXPECT_EQ(minimum, 5U);
}

TEST(TTransportProtocolDescriptorIP, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(fill(7, 0xFF));
    const InDirtyMemory<TTransportProtocolDescriptorIP> memory(bytes.data(), bytes.size());
    const TTransportProtocolDescriptorIP& ip = *memory;
    EXPECT_EQ(ip.getDescriptorTag(), 0x02);
    EXPECT_EQ(ip.getData(), bytes.data());
    EXPECT_EQ(ip.getDataLength(), 7U);
    EXPECT_EQ(ip.getType(), TTransportProtocolDescriptor::IP);
    EXPECT_EQ(ip.getProtocolID(), 2);
    EXPECT_EQ(ip.getTransportProtocolLabel(), 0);
    EXPECT_FALSE(ip.isRemoteConnection());
    expectIds(ip, 0, 0, 0);
    EXPECT_FALSE(ip.isAligned());
    EXPECT_EQ(ip.getURLCount(), 0U);
}

TEST(TTransportProtocolDescriptorIP, IsMadeOfOneUrl) {
    const InDirtyMemory<TTransportProtocolDescriptorIP> memory(std::string("http://tv.example/app"));
    const TTransportProtocolDescriptorIP& ip = *memory;
    EXPECT_EQ(ip.getDescriptorTag(), 0x02);
    EXPECT_EQ(ip.getData(), nullptr);
    EXPECT_EQ(ip.getDataLength(), 0U);
    EXPECT_EQ(ip.getType(), TTransportProtocolDescriptor::IP);
    EXPECT_EQ(ip.getProtocolID(), 2);
    EXPECT_EQ(ip.getTransportProtocolLabel(), 0);
    EXPECT_FALSE(ip.isRemoteConnection());
    expectIds(ip, 0, 0, 0);
    EXPECT_FALSE(ip.isAligned());
    EXPECT_EQ(urls(ip), std::vector<std::string>{"http://tv.example/app"});
}

TEST(TTransportProtocolDescriptorIP, WithoutUrlsTheListIsEmpty) {
    const auto parsed = expectSuccess<TTransportProtocolDescriptor>(wire("07 00 80"), 5);
    EXPECT_EQ(parsed->getTransportProtocolLabel(), 7);
    EXPECT_FALSE(variant(parsed).isRemoteConnection());
    expectIds(variant(parsed), 0, 0, 0);
    EXPECT_TRUE(variant(parsed).isAligned());
    EXPECT_EQ(variant(parsed).getURLCount(), 0U);
}

TEST(TTransportProtocolDescriptorIP, UrlsKeepTheirOrder) {
    const auto parsed =
        expectSuccess<TTransportProtocolDescriptor>(wire(join({hex("07 00 00"), url("z"), url("ab")})), 10);
    EXPECT_FALSE(variant(parsed).isAligned());
    EXPECT_EQ(urls(variant(parsed)), (std::vector<std::string>{"z", "ab"}));
}

TEST(TTransportProtocolDescriptorIP, UrlsMayBeEmptyOrEqual) {
    const auto parsed = expectSuccess<TTransportProtocolDescriptor>(
        wire(join({hex("07 00 00"), url("a"), url(""), url("a"), url("")})), 11);
    EXPECT_EQ(urls(variant(parsed)), (std::vector<std::string>{"a", "", "a", ""}));
}

TEST(TTransportProtocolDescriptorIP, CharactersAreKeptAsReceived) {
    const auto parsed = expectSuccess<TTransportProtocolDescriptor>(wire("07 00 00  03 00E741"), 9);
    EXPECT_EQ(variant(parsed).getURL(0), std::string("\0\xE7"
                                                     "A",
                                                     3));
}

TEST(TTransportProtocolDescriptorIP, InAnotherServiceItsIdsComeFirst) {
    const auto without = expectSuccess<TTransportProtocolDescriptor>(wire("08 80  1122 3344 5566  80"), 11);
    EXPECT_EQ(without->getTransportProtocolLabel(), 8);
    EXPECT_TRUE(variant(without).isRemoteConnection());
    expectIds(variant(without), 0x1122, 0x3344, 0x5566);
    EXPECT_TRUE(variant(without).isAligned());
    EXPECT_EQ(variant(without).getURLCount(), 0U);

    const auto with = expectSuccess<TTransportProtocolDescriptor>(
        wire(join({hex("08 80  1122 3344 5566  00"), url("ab"), url("c")})), 16);
    EXPECT_FALSE(variant(with).isAligned());
    EXPECT_EQ(urls(variant(with)), (std::vector<std::string>{"ab", "c"}));
}

TEST(TTransportProtocolDescriptorIP, EachFieldTakesAllItsBitsAndNoOthers) {
    using Base = TTransportProtocolDescriptor;
    EXPECT_EQ(expectSuccess<Base>(wire("FF 00 00"), 5)->getTransportProtocolLabel(), 0xFF);
    const auto reserved = expectSuccess<Base>(wire("00 7F 7F"), 5);
    EXPECT_EQ(reserved->getTransportProtocolLabel(), 0);
    EXPECT_FALSE(variant(reserved).isRemoteConnection());
    EXPECT_FALSE(variant(reserved).isAligned());
    const auto flags = expectSuccess<Base>(wire("00 FF 0000 0000 0000 FF"), 11);
    EXPECT_TRUE(variant(flags).isRemoteConnection());
    EXPECT_TRUE(variant(flags).isAligned());
    expectIds(variant(flags), 0, 0, 0);
    expectIds(variant(expectSuccess<Base>(wire("00 80 FFFF 0000 0000 00"), 11)), 0xFFFF, 0, 0);
    expectIds(variant(expectSuccess<Base>(wire("00 80 0000 FFFF 0000 00"), 11)), 0, 0xFFFF, 0);
    const auto service = expectSuccess<Base>(wire("00 80 0000 0000 FFFF 00"), 11);
    expectIds(variant(service), 0, 0, 0xFFFF);
    EXPECT_FALSE(variant(service).isAligned());
}

TEST(TTransportProtocolDescriptorIP, LessThanFiveBytesFail) {
    using Base = TTransportProtocolDescriptor;
    expectFailure<Base>(wire("07"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(3));
    expectFailure<Base>(wire("07 80"), TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(4));
}

TEST(TTransportProtocolDescriptorIP, AnotherServiceNeedsSevenBytesMore) {
    const ByteVector whole = hex("07 80  1122 3344 5566  80");
    for (unsigned left = 1; left < 7; ++left) {
        expectFailure<TTransportProtocolDescriptor>(
            wire(ByteVector(whole.begin(), whole.begin() + 2 + static_cast<std::ptrdiff_t>(left))),
            TISDBTTable::ERROR_INVALID_DATA_LENGTH, invalidLength(left));
    }
}

TEST(TTransportProtocolDescriptorIP, AUrlThatDoesNotFitFailsWithTheLineOfTheApplicationName) {
    const auto doesNotFit = [](const char* numbers) {
        return Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data length: " +
                         std::string(numbers) + ".Aborting!",
                     NAME_LINE};
    };
    using Base = TTransportProtocolDescriptor;
    expectFailure<Base>(wire(join({hex("07 00 80"), hex("03"), text("ab")})), TISDBTTable::ERROR_INVALID_STRING,
                        doesNotFit("3 > 2"));
    expectFailure<Base>(wire(join({hex("07 00 80"), url("abc"), hex("01")})), TISDBTTable::ERROR_INVALID_STRING,
                        doesNotFit("1 > 0"));
    expectFailure<Base>(wire(join({hex("07 80  1122 3344 5566  80"), url("abc"), hex("FF 61")})),
                        TISDBTTable::ERROR_INVALID_STRING, doesNotFit("255 > 1"));
}

TEST(TTransportProtocolDescriptorIP, UrlsRunToTheEndOfTheCallersLength) {
    const ByteVector urlOf254 = url(std::string(254, 'u'));
    const auto parsed = expectSuccess<TTransportProtocolDescriptor>(
        join({hex("02 05  0002 07 00 00"), urlOf254, urlOf254, url("end")}), 5 + 255 + 255 + 4);
    EXPECT_EQ(urls(variant(parsed)), (std::vector<std::string>{std::string(254, 'u'), std::string(254, 'u'), "end"}));
}

TEST(TTransportProtocolDescriptorIP, AUrlWhoseLengthComesToNothingFails) {
    // Its 256 bytes count 0 in eight bits.
    expectFailure<TTransportProtocolDescriptor>(join({hex("02 05  0002 07 00 00"), url(std::string(255, 'u'))}),
                                                TISDBTTable::ERROR_INVALID_STRING, {NAME_LINE});
    expectFailure<TTransportProtocolDescriptor>(
        join({hex("02 05  0002 07 00 00"), url("a"), url(std::string(255, 'u')), url("b")}),
        TISDBTTable::ERROR_INVALID_STRING, {NAME_LINE});
}

TEST(TTransportProtocolDescriptorIP, DecodesABodyByItself) {
    TTransportProtocolDescriptorIP ip(nullptr, 0);
    const HeapBytes body(join({hex("0000 07 80  1122 3344 5566  80"), url("ab")}));
    QUOR_U32 length = PRESET_LENGTH;
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_TRUE(ip.parseData(body.data(), body.size(), &length, &error));
    EXPECT_EQ(length, 14U);
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(ip.getProtocolID(), 2); // the body's own is not looked at
    EXPECT_EQ(ip.getTransportProtocolLabel(), 7);
    EXPECT_TRUE(ip.isRemoteConnection());
    expectIds(ip, 0x1122, 0x3344, 0x5566);
    EXPECT_TRUE(ip.isAligned());
    EXPECT_EQ(urls(ip), std::vector<std::string>{"ab"});
    EXPECT_TRUE(ip.parseData(body.data(), body.size(), nullptr, nullptr));
    EXPECT_EQ(log.lines(), Lines{});
}

TEST(TTransportProtocolDescriptorIP, ABodyByItselfMustBeLongEnough) {
    TTransportProtocolDescriptorIP ip(nullptr, 0);
    for (const unsigned size : {0U, 1U, 4U}) {
        const HeapBytes body(fill(size, 0xFF));
        QUOR_U32 length = PRESET_LENGTH;
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        EXPECT_FALSE(ip.parseData(body.data(), body.size(), &length, &error));
        EXPECT_EQ(length, PRESET_LENGTH);
        EXPECT_EQ(error, TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(log.lines(), invalidLength(size));
        EXPECT_FALSE(ip.parseData(body.data(), body.size(), nullptr, nullptr));
    }
}

TEST(TTransportProtocolDescriptorIP, UrlsReadBeforeABadOneStay) {
    TTransportProtocolDescriptorIP ip(nullptr, 0);
    const HeapBytes body(join({hex("0002 07 00 80"), url("ab"), hex("02 63")}));
    const LogCapture log;
    EXPECT_FALSE(ip.parseData(body.data(), body.size(), nullptr, nullptr));
    EXPECT_EQ(urls(ip), std::vector<std::string>{"ab"});
}

TEST(TTransportProtocolDescriptorIP, AddedUrlsComeLast) {
    TTransportProtocolDescriptorIP ip(std::string("first"));
    ip.addURL("second");
    ip.addURL("");
    EXPECT_EQ(urls(ip), (std::vector<std::string>{"first", "second", ""}));
}

TEST(TTransportProtocolDescriptorIP, UrlsAreRemovedByTheirPlace) {
    TTransportProtocolDescriptorIP ip(std::string("a"));
    ip.addURL("b");
    ip.addURL("c");
    EXPECT_TRUE(ip.removeURL(1));
    EXPECT_EQ(urls(ip), (std::vector<std::string>{"a", "c"}));
    EXPECT_TRUE(ip.removeURL(0));
    EXPECT_EQ(urls(ip), std::vector<std::string>{"c"});
    EXPECT_TRUE(ip.removeURL(0));
    EXPECT_EQ(ip.getURLCount(), 0U);
    EXPECT_FALSE(ip.removeURL(0));
}

TEST(TTransportProtocolDescriptorIP, PlacesBehindTheLastUrlHoldNothing) {
    TTransportProtocolDescriptorIP ip(std::string("a"));
    ip.addURL("b");
    EXPECT_EQ(ip.getURL(2), "");
    EXPECT_EQ(ip.getURL(255), "");
    EXPECT_FALSE(ip.removeURL(static_cast<QUOR_U8>(ip.getURLCount())));
    EXPECT_FALSE(ip.removeURL(255));
    EXPECT_EQ(urls(ip), (std::vector<std::string>{"a", "b"}));
}

TEST(TTransportProtocolDescriptorIP, CountsMoreUrlsThanAPlaceCanName) {
    const auto parsed =
        expectSuccess<TTransportProtocolDescriptor>(join({hex("02 05  0002 07 00 00"), fill(300, 0x00)}), 305);
    EXPECT_EQ(variant(parsed).getURLCount(), 300U);
}

TEST(TTransportProtocolDescriptorIP, ACopyLeavesOutTheLabel) {
    std::unique_ptr<TTransportProtocolDescriptorIP> copy;
    {
        const auto parsed = parseBytes<TTransportProtocolDescriptor>(
            wire(join({hex("07 80  1122 3344 5566  80"), url("http://tv.example/one"), url("two")})));
        ASSERT_NE(parsed.object, nullptr);
        auto& source = dynamic_cast<TTransportProtocolDescriptorIP&>(*parsed.object);
        copy = std::make_unique<TTransportProtocolDescriptorIP>(&source);
        EXPECT_TRUE(source.removeURL(0));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x02);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(copy->getType(), TTransportProtocolDescriptor::IP);
    EXPECT_EQ(copy->getProtocolID(), 2);
    EXPECT_EQ(copy->getTransportProtocolLabel(), 0);
    EXPECT_TRUE(copy->isRemoteConnection());
    expectIds(*copy, 0x1122, 0x3344, 0x5566);
    EXPECT_TRUE(copy->isAligned());
    EXPECT_EQ(urls(*copy), (std::vector<std::string>{"http://tv.example/one", "two"}));
}

TEST(TTransportProtocolDescriptorIP, ACloneHasEverythingAndTheLabel) {
    std::unique_ptr<TTransportProtocolDescriptor> clone;
    {
        const auto parsed = parseBytes<TTransportProtocolDescriptor>(
            wire(join({hex("07 80  1122 3344 5566  80"), url("http://tv.example/one"), url("two")})));
        ASSERT_NE(parsed.object, nullptr);
        clone.reset(TTransportProtocolDescriptor::clone(parsed.object.get()));
    }
    const auto& ip = dynamic_cast<const TTransportProtocolDescriptorIP&>(*clone);
    EXPECT_EQ(ip.getData(), nullptr);
    EXPECT_EQ(ip.getProtocolID(), 2);
    EXPECT_EQ(ip.getTransportProtocolLabel(), 7);
    EXPECT_TRUE(ip.isRemoteConnection());
    expectIds(ip, 0x1122, 0x3344, 0x5566);
    EXPECT_TRUE(ip.isAligned());
    EXPECT_EQ(urls(ip), (std::vector<std::string>{"http://tv.example/one", "two"}));
}
