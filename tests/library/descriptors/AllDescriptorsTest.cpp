// What every descriptor class promises. A new class joins with its header and one line in descriptorClasses().

#include "descriptors/TAACDescriptor.h"
#include "descriptors/TAVCTimingAndHRDDescriptor.h"
#include "descriptors/TAVCVideoDescriptor.h"
#include "descriptors/TApplicationDescriptor.h"
#include "descriptors/TApplicationIconDescriptor.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TBouquetNameDescriptor.h"
#include "descriptors/TCAIdentifierDescriptor.h"
#include "descriptors/TCarouselCompatibleCompositeDescriptor.h"
#include "descriptors/TCarouselIdentifierDescriptor.h"
#include "descriptors/TComponentDescriptor.h"
#include "descriptors/TConditionalPlaybackDescriptor.h"
#include "descriptors/TContentAvailabilityDescriptor.h"
#include "descriptors/TCopyrightDescriptor.h"
#include "descriptors/TCountryAvailabilityDescriptor.h"
#include "descriptors/TDIILocationDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDigitalCopyControlDescriptor.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "descriptors/TEmergencyInformationDescriptor.h"
#include "descriptors/TExternalApplicationAuthorizationDescriptor.h"
#include "descriptors/TGeneralEventDescriptor.h"
#include "descriptors/TGingaJavaApplicationDescriptor.h"
#include "descriptors/TGingaJavaApplicationLocationDescriptor.h"
#include "descriptors/TGingaNCLApplicationDescriptor.h"
#include "descriptors/TGingaNCLApplicationLocationDescriptor.h"
#include "descriptors/THierarchicalTransmissionDescriptor.h"
#include "descriptors/TIPSignalingDescriptor.h"
#include "descriptors/TLinkageDescriptor.h"
#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "descriptors/TLogoTransmissionDescriptor.h"
#include "descriptors/TMosaicDescriptor.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TNVODReferenceDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TParentalRatingDescriptor.h"
#include "descriptors/TPartialReceptionDescriptor.h"
#include "descriptors/TPrefetchDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TStreamModeDescriptor.h"
#include "descriptors/TSystemManagementDescriptor.h"
#include "descriptors/TTSInformationDescriptor.h"
#include "descriptors/TTargetRegionDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "descriptors/TTimeShiftedServiceDescriptor.h"
#include "descriptors/TTransportProtocolDescriptor.h"
#include "descriptors/TVideoDecodeControlDescriptor.h"
#include "support/Outcome.h"
#include "support/Survival.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>

using Quor::TISDBTDescriptor;
using Quor::TISDBTTable;

namespace {

/// A descriptor class: what it must say of itself, and a good descriptor of it.
struct DescriptorClass {
    std::string name;
    QUOR_U8 tag;
    QUOR_U8 minimum;
    ByteVector good;
    QUOR_U32 unheld; ///< bytes of a descriptor that its data holder leaves out

    QUOR_U32 declaredTag;
    QUOR_U32 declaredMinimum;
    TISDBTDescriptor* (*parse)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*);
    void (*survives)(const ByteVector&);
};

/// Names the class in what GoogleTest prints.
void PrintTo(const DescriptorClass& descriptorClass, std::ostream* out) {
    *out << descriptorClass.name;
}

/// @param good the body of a good descriptor; it must be accepted
template <class T>
DescriptorClass describe(const char* name, QUOR_U8 tag, QUOR_U8 minimum, const char* good, QUOR_U32 unheld = 0) {
    static_assert(std::is_base_of_v<TISDBTDescriptor, T>, "every descriptor class has the same base");
    static_assert(std::has_virtual_destructor_v<T>, "descriptors are deleted by base");
    static_assert(!std::is_copy_constructible_v<T> && !std::is_copy_assignable_v<T>, "a copy would own what it copied");
    static_assert(std::is_same_v<decltype(T::DESCRIPTOR_TAG), const U8>, "DESCRIPTOR_TAG is a U8");
    static_assert(std::is_same_v<decltype(T::MINIMUM_DESCRIPTOR_LENGTH), const QUOR_U32>, "the minimum is a QUOR_U32");
    static_assert(std::is_same_v<decltype(&T::parse), T* (*)(QUOR_U8*, QUOR_U32, QUOR_U32*, QUOR_U16*)>, "parse");
    return {name,
            tag,
            minimum,
            descriptor(tag, hex(good)),
            unheld,
            T::DESCRIPTOR_TAG,
            T::MINIMUM_DESCRIPTOR_LENGTH,
            [](QUOR_U8* data, QUOR_U32 length, QUOR_U32* parsedLength, QUOR_U16* error) -> TISDBTDescriptor* {
                return T::parse(data, length, parsedLength, error);
            },
            [](const ByteVector& wire) { survival::expectSurvival<T>(wire); }};
}

#define DESCRIPTOR(Class, ...) describe<Quor::Class>(#Class, __VA_ARGS__)

/// Class, tag, minimum of descriptor_length, body of a good descriptor.
std::vector<DescriptorClass> descriptorClasses() {
    return {
        DESCRIPTOR(TLocalTimeOffsetDescriptor, 0x58, 11,
                   "425241 0C 0300 0000000000 0000  415247 04 0300 0000000000 0000", 2),

        DESCRIPTOR(TStreamIdentifierDescriptor, 0x52, 1, "07"),
        DESCRIPTOR(TComponentDescriptor, 0x50, 6, "F1 B3 10 706F72 566964656F"),
        DESCRIPTOR(TCopyrightDescriptor, 0x0D, 3, "01 E123"),
        DESCRIPTOR(THierarchicalTransmissionDescriptor, 0xC0, 3, "01 E111"),
        DESCRIPTOR(TDataComponentDescriptor, 0xFD, 2, "00A0 112233"),
        DESCRIPTOR(TVideoDecodeControlDescriptor, 0xC8, 1, "47"),
        DESCRIPTOR(TAVCVideoDescriptor, 0x28, 4, "64 00 28 3F"),
        DESCRIPTOR(TAVCTimingAndHRDDescriptor, 0x2A, 2, "81 80 00000001 0000012C A0000BB8 1F"),
        DESCRIPTOR(TAACDescriptor, 0x7C, 2, "2C 80 11 AABB"),

        DESCRIPTOR(TCAIdentifierDescriptor, 0x53, 2, "0005 8001 02"),
        DESCRIPTOR(TDigitalCopyControlDescriptor, 0xC1, 1, "70 7F 03 25 40 C0"),
        DESCRIPTOR(TContentAvailabilityDescriptor, 0xDE, 1, "31"),
        DESCRIPTOR(TParentalRatingDescriptor, 0x55, 0, "425241 05 415247 07"),
        DESCRIPTOR(TTargetRegionDescriptor, 0xC6, 1, "01 11223344"),
        DESCRIPTOR(TConditionalPlaybackDescriptor, 0xF8, 4, "0005 E100 1122"),

        DESCRIPTOR(TNetworkNameDescriptor, 0x40, 1, "474C4F424F"),
        DESCRIPTOR(TServiceListDescriptor, 0x41, 2, "20 01 38 C0"),
        DESCRIPTOR(TLinkageDescriptor, 0x4A, 7, "02E1 7ED4 5C20 06 1122"),
        DESCRIPTOR(TTSInformationDescriptor, 0xCD, 8, "07 0E 474C42 AF 01 5C38 0F 02 5C20 5C21"),
        DESCRIPTOR(TTerrestrialDeliverySystemDescriptor, 0xFA, 4, "8916 0F90 0E27"),
        DESCRIPTOR(TPartialReceptionDescriptor, 0xFB, 2, "5C38 5C20"),
        DESCRIPTOR(TEmergencyInformationDescriptor, 0xFC, 4, "5C20 80 02 1230 5C38 40 04 4560 7890"),
        DESCRIPTOR(TSystemManagementDescriptor, 0xFE, 2, "0301 1122"),

        DESCRIPTOR(TBouquetNameDescriptor, 0x47, 1, "474C42"),
        DESCRIPTOR(TServiceDescriptor, 0x48, 3, "01 03 474C42 05 474C4F424F"),
        DESCRIPTOR(TCountryAvailabilityDescriptor, 0x49, 4, "80 425241 415247"),
        DESCRIPTOR(TNVODReferenceDescriptor, 0x4B, 6, "0001 0002 0003 0004 0005 0006"),
        DESCRIPTOR(TTimeShiftedServiceDescriptor, 0x4C, 2, "5C20"),
        DESCRIPTOR(TMosaicDescriptor, 0x51, 1,
                   "12  04 01 01 05 01 0001  08 02 00 02 0001 0002 0003  0C 03 00 04 0001 0002 0003 0004"),
        DESCRIPTOR(TLogoTransmissionDescriptor, 0xCF, 1, "01 0123 0456 FEDC"),

        DESCRIPTOR(TCarouselIdentifierDescriptor, 0x13, 4, "0000002A 01 0500"),
        DESCRIPTOR(TCarouselCompatibleCompositeDescriptor, 0xF7, 4, "01020304 05"),
        DESCRIPTOR(TNPTReferenceDescriptor, 0x01, 18, "A5 01 89ABCDEF FFFFFF 01 01234567 0001 0002"),
        DESCRIPTOR(TStreamModeDescriptor, 0x03, 2, "07 FF"),
        DESCRIPTOR(TStreamEventDescriptor, 0x04, 10, "0102 FFFFFFFF 00015F90 1122"),
        DESCRIPTOR(TGeneralEventDescriptor, 0x04, 16, "ABCD 01 C079 123456 0102030405 66 7788 99"),

        DESCRIPTOR(TApplicationDescriptor, 0x00, 3, "05 8001 01 02 03 FF 05 0102"),
        DESCRIPTOR(TApplicationNameDescriptor, 0x01, 4, "706F72 03 4A6F67  656E67 04 47616D65"),
        DESCRIPTOR(TApplicationIconDescriptor, 0x0B, 2, "03 2F6963 01FF"),
        DESCRIPTOR(TTransportProtocolDescriptor, 0x02, 3, "0002 07 80 0102 0304 0506 80 01 61 02 6263", 2),
        DESCRIPTOR(TExternalApplicationAuthorizationDescriptor, 0x05, 0, "0000000A 0001 05  0000000B 0002 06"),
        DESCRIPTOR(TIPSignalingDescriptor, 0x11, 3, "010203"),
        DESCRIPTOR(TPrefetchDescriptor, 0x0C, 4, "07 02 6162 01 01 63 02"),
        DESCRIPTOR(TDIILocationDescriptor, 0x0D, 4, "07 FF01 0002 0003 0004"),
        DESCRIPTOR(TGingaJavaApplicationDescriptor, 0x03, 0, "03 616263 02 6465"),
        DESCRIPTOR(TGingaJavaApplicationLocationDescriptor, 0x04, 4, "02 2F61 03 2F6263 4D61696E"),
        DESCRIPTOR(TGingaNCLApplicationDescriptor, 0x06, 0, "03 616263 02 6465"),
        DESCRIPTOR(TGingaNCLApplicationLocationDescriptor, 0x07, 4, "02 2F61 03 2F6263 4D61696E"),

        DESCRIPTOR(TDownloadContentDescriptor, 0xC9, 18,
                   "FF 00001000 00000001 00000064 001F43 40"
                   "0011 0001 01 0D 01 000001 0002 0003 01 01 02 AABB"
                   "0002 0100 00000800 01 CC 0200 00000800 00"
                   "02 DDEE 706F72 03 4E6577"),
    };
}

#undef DESCRIPTOR

class AllDescriptors : public testing::TestWithParam<DescriptorClass> {
protected:
    const QUOR_U8 tag = GetParam().tag;
    const QUOR_U32 minimum = GetParam().minimum;

    /// Parses exactly these bytes, which the header check must refuse: null, the code, this one line; the length
    /// unwritten.
    void expectRefused(const ByteVector& wire, QUOR_U16 code, const std::string& line) const {
        const HeapBytes bytes(wire);
        expectRefused(bytes.data(), bytes.size(), code, line);
    }

    void expectRefused(QUOR_U8* data, QUOR_U32 length, QUOR_U16 code, const std::string& line) const {
        const Lines lines{"ISDBTUtils: TISDBTDescriptor::parseCommonHeader: " + line + " Aborting!"};
        QUOR_U32 parsedLength = PRESET_LENGTH;
        QUOR_U16 error = PRESET_ERROR;
        const LogCapture log;
        const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(data, length, &parsedLength, &error));
        EXPECT_EQ(parsed, nullptr);
        EXPECT_EQ(error, code);
        EXPECT_EQ(parsedLength, PRESET_LENGTH);
        EXPECT_EQ(log.lines(), lines);
        expectLevelAndTag(log);

        const LogCapture again;
        const std::unique_ptr<TISDBTDescriptor> unasked(GetParam().parse(data, length, nullptr, nullptr));
        EXPECT_EQ(unasked, nullptr);
        EXPECT_EQ(again.lines(), lines);
    }

    /// tag and descriptor_length with @p count bytes of zero behind them
    ByteVector zeros(QUOR_U8 first, QUOR_U32 descriptorLength, QUOR_U32 count) const {
        return join({{first, static_cast<QUOR_U8>(descriptorLength)}, fill(count, 0x00)});
    }
};

std::string tags(QUOR_U8 got, QUOR_U8 expected) {
    char text[80];
    std::snprintf(text, sizeof text, "(3) Unexpected Descriptor Tag. Got 0x%02X, instead of 0x%02X.", unsigned{got},
                  unsigned{expected});
    return text;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Each, AllDescriptors, testing::ValuesIn(descriptorClasses()),
                         [](const testing::TestParamInfo<DescriptorClass>& each) { return each.param.name; });

TEST_P(AllDescriptors, DeclareTagAndMinimum) {
    EXPECT_EQ(GetParam().declaredTag, tag);
    EXPECT_EQ(GetParam().declaredMinimum, minimum);
}

TEST_P(AllDescriptors, AcceptAGoodDescriptor) {
    const HeapBytes bytes(GetParam().good);
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(bytes.data(), bytes.size(), nullptr, &error));
    ASSERT_NE(parsed, nullptr) << testing::PrintToString(log.lines());
    EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    EXPECT_EQ(parsed->getDescriptorTag(), tag);
    EXPECT_EQ(parsed->getData(), bytes.data());
    EXPECT_EQ(parsed->getDataLength(), bytes.size() - GetParam().unheld);
}

TEST_P(AllDescriptors, AcceptAGoodDescriptorWithoutPlacesForLengthAndCode) {
    const HeapBytes bytes(GetParam().good);
    const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(bytes.data(), bytes.size(), nullptr, nullptr));
    EXPECT_NE(parsed, nullptr);
}

TEST_P(AllDescriptors, RefuseANullPointer) {
    for (const QUOR_U32 length : {0U, minimum + 1, minimum + 2, 257U, 0xFFFFFFFFU}) {
        SCOPED_TRACE(length);
        expectRefused(nullptr, length, 2562, "(1) Invalid data.");
    }
}

TEST_P(AllDescriptors, RefuseDataShorterThanTheMinimum) {
    // Whatever the bytes say: neither another tag nor a long descriptor_length is looked at.
    for (QUOR_U32 length = 0; length < minimum + 2; ++length) {
        const std::string line =
            "(2) Longer data length is required: " + std::to_string(length) + " < " + std::to_string(minimum + 2) + ".";
        SCOPED_TRACE(line);
        for (const QUOR_U8 first : {tag, static_cast<QUOR_U8>(tag ^ 0xFFU)}) {
            ByteVector wire = zeros(first, 0xFF, minimum);
            wire.resize(length);
            expectRefused(wire, 2568, line);
        }
    }
}

TEST_P(AllDescriptors, RefuseEveryOtherTag) {
    for (unsigned value = 0; value < 0x100; ++value) {
        const auto other = static_cast<QUOR_U8>(value);
        if (other != tag) {
            SCOPED_TRACE(value);
            // A descriptor_length above the data or below the minimum is not looked at.
            expectRefused(zeros(other, minimum, minimum), 2567, tags(other, tag));
            expectRefused(zeros(other, 0xFF, minimum), 2567, tags(other, tag));
            expectRefused(zeros(other, 0x00, minimum), 2567, tags(other, tag));
        }
    }
}

TEST_P(AllDescriptors, RefuseADescriptorLengthAboveTheData) {
    for (QUOR_U32 descriptorLength = minimum + 1; descriptorLength < 0x100; ++descriptorLength) {
        for (const QUOR_U32 given : {minimum, descriptorLength - 1}) {
            const std::string line = "(4) Longer data length is required: " + std::to_string(descriptorLength + 2) +
                                     " < " + std::to_string(given + 2) + ".";
            SCOPED_TRACE(line);
            expectRefused(zeros(tag, descriptorLength, given), 2568, line);
        }
    }
}

TEST_P(AllDescriptors, RefuseADescriptorLengthBelowTheMinimum) {
    if (minimum == 0) {
        // Nothing is below: an empty body passes the header check.
        ByteVector empty{tag, 0x00};
        QUOR_U16 error = PRESET_ERROR;
        EXPECT_TRUE(TISDBTDescriptor::parseCommonHeader(empty.data(), 2, &error, 0, tag));
        EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    }
    for (QUOR_U32 descriptorLength = 0; descriptorLength < minimum; ++descriptorLength) {
        for (const QUOR_U32 given : {minimum, minimum + 5, QUOR_U32{300}}) {
            const std::string line = "(5) Longer descriptor length is required: " + std::to_string(descriptorLength) +
                                     " < " + std::to_string(minimum) + ".";
            SCOPED_TRACE(line);
            expectRefused(zeros(tag, descriptorLength, given), 2568, line);
        }
    }
}

TEST_P(AllDescriptors, ReadABodyOfTheMinimumLength) {
    // What the class makes of the body is its own matter; the header check lets it pass.
    const HeapBytes bytes(zeros(tag, minimum, minimum));
    QUOR_U16 error = PRESET_ERROR;
    const LogCapture log;
    const std::unique_ptr<TISDBTDescriptor> parsed(GetParam().parse(bytes.data(), bytes.size(), nullptr, &error));
    for (const std::string& line : log.lines()) {
        EXPECT_EQ(line.find("parseCommonHeader"), std::string::npos) << line;
    }
    if (parsed == nullptr) {
        EXPECT_FALSE(log.lines().empty());
    } else {
        EXPECT_EQ(error, TISDBTTable::ERROR_OK);
    }
}

TEST_P(AllDescriptors, SurviveEveryPrefix) {
    const ByteVector& good = GetParam().good;
    for (std::size_t size = 0; size <= good.size(); ++size) {
        SCOPED_TRACE(size);
        ByteVector wire(good.begin(), good.begin() + static_cast<std::ptrdiff_t>(size));
        GetParam().survives(wire);
        // With a fitting descriptor_length, so that the cut reaches the body.
        GetParam().survives(repairedDescriptor(wire));
    }
}

TEST_P(AllDescriptors, SurviveEveryChangeOfOneByte) {
    ByteVector wire = GetParam().good;
    for (std::size_t at = 0; at < wire.size(); ++at) {
        SCOPED_TRACE(at);
        const QUOR_U8 good = wire[at];
        for (unsigned value = 0; value < 0x100; ++value) {
            wire[at] = static_cast<QUOR_U8>(value);
            GetParam().survives(wire);
        }
        wire[at] = good;
    }
}

TEST_P(AllDescriptors, SurviveBytesBehindTheDescriptor) {
    // Few, and as many as make a count of eight bits wrap.
    for (const std::size_t from : {1U, 240U}) {
        for (std::size_t count = from; count < from + 30; ++count) {
            SCOPED_TRACE(count);
            for (const unsigned more : {0x00U, 0x01U, 0xFFU}) {
                GetParam().survives(join({GetParam().good, fill(count, static_cast<QUOR_U8>(more))}));
            }
        }
    }
}
