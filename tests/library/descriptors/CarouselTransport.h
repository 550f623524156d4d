#pragma once

#include "descriptors/TTransportProtocolDescriptor.h"
#include "support/DirtyMemory.h"
#include "support/Outcome.h"

#include <type_traits>

/// What the two carousel variants have in common. @p Traits: the Variant, its PROTOCOL, NAME in log lines and TYPE.
template <class Traits> class CarouselTransport : public testing::Test {
protected:
    using Transport = Quor::TTransportProtocolDescriptor;
    using Carousel = typename Traits::Variant;

    /// A descriptor of this variant: protocol_id and what follows it.
    static ByteVector wire(const std::string& selector) {
        return descriptor(0x02, join({u16(Traits::PROTOCOL), hex(selector)}));
    }

    static Lines invalidLength(unsigned length) {
        return {"ISDBTUtils: " + std::string(Traits::NAME) +
                "::parse: Item length not valid: " + std::to_string(length) + ". Aborting!"};
    }

    /// Parses a good descriptor, which must be of this variant.
    static const Carousel& variant(const Parsed<Transport>& parsed) {
        return dynamic_cast<const Carousel&>(*parsed.object);
    }

    static void expectIds(const Carousel& carousel, unsigned network, unsigned stream, unsigned service) {
        EXPECT_EQ(carousel.getOriginalNetworkID(), network);
        EXPECT_EQ(carousel.getTransportStreamID(), stream);
        EXPECT_EQ(carousel.getServiceID(), service);
    }
};

TYPED_TEST_SUITE_P(CarouselTransport);

TYPED_TEST_P(CarouselTransport, Constants) {
    using Variant = typename TypeParam::Variant;
    static_assert(std::is_base_of<Quor::TTransportProtocolDescriptor, Variant>::value, "a variant");
    const QUOR_U32& minimum = Variant::MINIMUM_DESCRIPTOR_SPECIFIC_LENGTH;
    EXPECT_EQ(minimum, 5U);
}

TYPED_TEST_P(CarouselTransport, StartsEmptyOverTheCallersBytes) {
    const HeapBytes bytes(fill(7, 0xFF));
    const InDirtyMemory<typename TypeParam::Variant> memory(bytes.data(), bytes.size());
    const auto& carousel = *memory;
    EXPECT_EQ(carousel.getDescriptorTag(), 0x02);
    EXPECT_EQ(carousel.getData(), bytes.data());
    EXPECT_EQ(carousel.getDataLength(), 7U);
    EXPECT_EQ(carousel.getType(), TypeParam::TYPE);
    EXPECT_EQ(carousel.getProtocolID(), TypeParam::PROTOCOL);
    EXPECT_EQ(carousel.getTransportProtocolLabel(), 0);
    EXPECT_FALSE(carousel.isRemoteConnection());
    this->expectIds(carousel, 0, 0, 0);
    EXPECT_EQ(carousel.getComponentTag(), 0);
}

TYPED_TEST_P(CarouselTransport, InThisServiceOnlyTheComponentTagFollows) {
    const auto parsed = expectSuccess<Quor::TTransportProtocolDescriptor>(this->wire("07 00 33"), 5);
    const auto& carousel = this->variant(parsed);
    EXPECT_EQ(carousel.getTransportProtocolLabel(), 7);
    EXPECT_FALSE(carousel.isRemoteConnection());
    this->expectIds(carousel, 0, 0, 0);
    EXPECT_EQ(carousel.getComponentTag(), 0x33);
}

TYPED_TEST_P(CarouselTransport, InAnotherServiceItsIdsComeFirst) {
    const auto parsed = expectSuccess<Quor::TTransportProtocolDescriptor>(this->wire("08 80  1122 3344 5566  77"), 11);
    const auto& carousel = this->variant(parsed);
    EXPECT_EQ(carousel.getTransportProtocolLabel(), 8);
    EXPECT_TRUE(carousel.isRemoteConnection());
    this->expectIds(carousel, 0x1122, 0x3344, 0x5566);
    EXPECT_EQ(carousel.getComponentTag(), 0x77);
}

TYPED_TEST_P(CarouselTransport, EachFieldTakesAllItsBitsAndNoOthers) {
    using Base = Quor::TTransportProtocolDescriptor;
    const auto label = expectSuccess<Base>(this->wire("FF 00 00"), 5);
    EXPECT_EQ(label->getTransportProtocolLabel(), 0xFF);
    EXPECT_FALSE(this->variant(label).isRemoteConnection());
    const auto reserved = expectSuccess<Base>(this->wire("00 7F 00"), 5);
    EXPECT_FALSE(this->variant(reserved).isRemoteConnection());
    EXPECT_EQ(reserved->getTransportProtocolLabel(), 0);
    EXPECT_EQ(this->variant(reserved).getComponentTag(), 0);
    EXPECT_EQ(this->variant(expectSuccess<Base>(this->wire("00 00 FF"), 5)).getComponentTag(), 0xFF);

    EXPECT_TRUE(this->variant(expectSuccess<Base>(this->wire("00 FF 0000 0000 0000 00"), 11)).isRemoteConnection());
    this->expectIds(this->variant(expectSuccess<Base>(this->wire("00 80 FFFF 0000 0000 00"), 11)), 0xFFFF, 0, 0);
    this->expectIds(this->variant(expectSuccess<Base>(this->wire("00 80 0000 FFFF 0000 00"), 11)), 0, 0xFFFF, 0);
    const auto service = expectSuccess<Base>(this->wire("00 80 0000 0000 FFFF 00"), 11);
    this->expectIds(this->variant(service), 0, 0, 0xFFFF);
    EXPECT_EQ(this->variant(service).getComponentTag(), 0);
}

TYPED_TEST_P(CarouselTransport, BytesBehindTheComponentTagAreIgnored) {
    const auto local = expectSuccess<Quor::TTransportProtocolDescriptor>(this->wire("07 00 33 FF FF"), 5);
    EXPECT_EQ(this->variant(local).getComponentTag(), 0x33);
    const auto remote =
        expectSuccess<Quor::TTransportProtocolDescriptor>(this->wire("08 80  1122 3344 5566  77 FF"), 11);
    EXPECT_EQ(this->variant(remote).getComponentTag(), 0x77);
}

TYPED_TEST_P(CarouselTransport, LessThanFiveBytesFail) {
    using Base = Quor::TTransportProtocolDescriptor;
    expectFailure<Base>(this->wire("07"), Quor::TISDBTTable::ERROR_INVALID_DATA_LENGTH, this->invalidLength(3));
    expectFailure<Base>(this->wire("07 80"), Quor::TISDBTTable::ERROR_INVALID_DATA_LENGTH, this->invalidLength(4));
}

TYPED_TEST_P(CarouselTransport, AnotherServiceNeedsSevenBytesMore) {
    using Base = Quor::TTransportProtocolDescriptor;
    const ByteVector whole = this->wire("07 80  1122 3344 5566  77");
    for (unsigned left = 1; left < 7; ++left) {
        ByteVector cut(whole.begin(), whole.begin() + 6 + static_cast<std::ptrdiff_t>(left));
        cut[1] = static_cast<QUOR_U8>(4 + left);
        expectFailure<Base>(cut, Quor::TISDBTTable::ERROR_INVALID_DATA_LENGTH, this->invalidLength(left));
    }
}

TYPED_TEST_P(CarouselTransport, DecodesABodyByItself) {
    typename TypeParam::Variant carousel(nullptr, 0);
    const HeapBytes body(hex("0000 07 80  1122 3344 5566  77"));
    QUOR_U32 length = PRESET_LENGTH;
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    EXPECT_TRUE(carousel.parseData(body.data(), body.size(), &length, &error));
    EXPECT_EQ(length, 11U);
    EXPECT_EQ(error, Quor::TISDBTTable::ERROR_OK);
    EXPECT_EQ(carousel.getProtocolID(), TypeParam::PROTOCOL); // the body's own is not looked at
    EXPECT_EQ(carousel.getTransportProtocolLabel(), 7);
    EXPECT_TRUE(carousel.isRemoteConnection());
    this->expectIds(carousel, 0x1122, 0x3344, 0x5566);
    EXPECT_EQ(carousel.getComponentTag(), 0x77);
    EXPECT_TRUE(carousel.parseData(body.data(), body.size(), nullptr, nullptr));
    EXPECT_EQ(log.lines(), Lines{});
}

TYPED_TEST_P(CarouselTransport, ABodyByItselfMustBeLongEnough) {
    typename TypeParam::Variant carousel(nullptr, 0);
    for (const unsigned size : {0U, 1U, 4U}) {
        const HeapBytes body(fill(size, 0xFF));
        QUOR_U32 length = PRESET_LENGTH;
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        EXPECT_FALSE(carousel.parseData(body.data(), body.size(), &length, &error));
        EXPECT_EQ(length, PRESET_LENGTH);
        EXPECT_EQ(error, Quor::TISDBTTable::ERROR_INVALID_DATA_LENGTH);
        EXPECT_EQ(log.lines(), this->invalidLength(size));
        EXPECT_FALSE(carousel.parseData(body.data(), body.size(), nullptr, nullptr));
    }
}

TYPED_TEST_P(CarouselTransport, ACopyLeavesOutTheLabel) {
    using Variant = typename TypeParam::Variant;
    std::unique_ptr<Variant> copy;
    {
        const auto parsed = parseBytes<Quor::TTransportProtocolDescriptor>(this->wire("07 80  1122 3344 5566  77"));
        ASSERT_NE(parsed.object, nullptr);
        copy = std::make_unique<Variant>(dynamic_cast<Variant*>(parsed.object.get()));
    }
    EXPECT_EQ(copy->getDescriptorTag(), 0x02);
    EXPECT_EQ(copy->getData(), nullptr);
    EXPECT_EQ(copy->getDataLength(), 0U);
    EXPECT_EQ(copy->getType(), TypeParam::TYPE);
    EXPECT_EQ(copy->getProtocolID(), TypeParam::PROTOCOL);
    EXPECT_EQ(copy->getTransportProtocolLabel(), 0);
    EXPECT_TRUE(copy->isRemoteConnection());
    this->expectIds(*copy, 0x1122, 0x3344, 0x5566);
    EXPECT_EQ(copy->getComponentTag(), 0x77);
}

TYPED_TEST_P(CarouselTransport, ACloneHasEverythingAndTheLabel) {
    using Base = Quor::TTransportProtocolDescriptor;
    std::unique_ptr<Base> clone;
    {
        const auto parsed = parseBytes<Base>(this->wire("07 80  1122 3344 5566  77"));
        ASSERT_NE(parsed.object, nullptr);
        clone.reset(Base::clone(parsed.object.get()));
    }
    const auto& carousel = dynamic_cast<const typename TypeParam::Variant&>(*clone);
    EXPECT_EQ(carousel.getData(), nullptr);
    EXPECT_EQ(carousel.getProtocolID(), TypeParam::PROTOCOL);
    EXPECT_EQ(carousel.getTransportProtocolLabel(), 7);
    EXPECT_TRUE(carousel.isRemoteConnection());
    this->expectIds(carousel, 0x1122, 0x3344, 0x5566);
    EXPECT_EQ(carousel.getComponentTag(), 0x77);
}

REGISTER_TYPED_TEST_SUITE_P(CarouselTransport, Constants, StartsEmptyOverTheCallersBytes,
                            InThisServiceOnlyTheComponentTagFollows, InAnotherServiceItsIdsComeFirst,
                            EachFieldTakesAllItsBitsAndNoOthers, BytesBehindTheComponentTagAreIgnored,
                            LessThanFiveBytesFail, AnotherServiceNeedsSevenBytesMore, DecodesABodyByItself,
                            ABodyByItselfMustBeLongEnough, ACopyLeavesOutTheLabel, ACloneHasEverythingAndTheLabel);
