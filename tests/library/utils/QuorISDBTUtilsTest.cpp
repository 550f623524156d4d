#include "utils/QuorISDBTUtils.h"

#include "support/Parse.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using Quor::ISDBTUtils;

namespace {

/// What getSectionCRC32() returns and what it prints to standard output.
struct Trace {
    U32 crc;
    std::string printed;
    Lines logged;
};

Trace traced(const ByteVector& wire) {
    const HeapBytes bytes(wire);
    const LogCapture log;
    testing::internal::CaptureStdout();
    const U32 crc = ISDBTUtils::getSectionCRC32(bytes.data(), bytes.size());
    return {crc, testing::internal::GetCapturedStdout(), log.lines()};
}

} // namespace

TEST(ISDBTUtils, ErrorCodeIsStored) {
    QUOR_U16 code = PRESET_ERROR;
    ISDBTUtils::setErrorCode(&code, 0x0A03);
    EXPECT_EQ(code, 0x0A03);
    ISDBTUtils::setErrorCode(&code, 0);
    EXPECT_EQ(code, 0);
    ISDBTUtils::setErrorCode(&code, 0xFFFF);
    EXPECT_EQ(code, 0xFFFF);
}

TEST(ISDBTUtils, NullErrorCodeIsIgnoredSilently) {
    const LogCapture log;
    ISDBTUtils::setErrorCode(nullptr, 0x0A03);
    EXPECT_EQ(log.lines(), Lines{});
}

TEST(ISDBTUtils, BcdDigitsAreTensAndOnes) {
    EXPECT_EQ(ISDBTUtils::bcd2U8(0x00), 0);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0x09), 9);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0x10), 10);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0x59), 59);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0x99), 99);
}

TEST(ISDBTUtils, BcdDigitsAboveNineCountOn) {
    EXPECT_EQ(ISDBTUtils::bcd2U8(0x0A), 10);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0xA0), 100);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0xAB), 111);
    EXPECT_EQ(ISDBTUtils::bcd2U8(0xFF), 165);
}

TEST(ISDBTUtils, UnixTimeBeginsAtItsMjd) {
    testing::StaticAssertTypeEq<decltype(ISDBTUtils::MJD_1970), const QUOR_S32>();
    const QUOR_S32& bound = ISDBTUtils::MJD_1970;
    EXPECT_EQ(bound, 40587);
}

TEST(ISDBTUtils, DatesBeforeTheSecondDayAreZero) {
    EXPECT_EQ(ISDBTUtils::mjd2unix(0), 0);
    EXPECT_EQ(ISDBTUtils::mjd2unix(1), 0);
    EXPECT_EQ(ISDBTUtils::mjd2unix(40586), 0);
    EXPECT_EQ(ISDBTUtils::mjd2unix(40587), 0);
}

TEST(ISDBTUtils, DatesCountInDaysOf86400Seconds) {
    EXPECT_EQ(ISDBTUtils::mjd2unix(40588), 86400);
    EXPECT_EQ(ISDBTUtils::mjd2unix(40589), 172800);
    EXPECT_EQ(ISDBTUtils::mjd2unix(0xC079), 750470400); // 1993-10-13
    EXPECT_EQ(ISDBTUtils::mjd2unix(65442), 2147472000); // 2038-01-19, the last one of 31 bits
}

TEST(ISDBTUtils, DatesFrom2038OnWrapToNegative) {
    EXPECT_EQ(ISDBTUtils::mjd2unix(65443), -2147408896); // 2147558400 - 2^32
    EXPECT_EQ(ISDBTUtils::mjd2unix(65535), -2139460096); // 2155507200 - 2^32
}

TEST(ISDBTUtils, CrcOfNothingIsZeroAndPrintsTwoLines) {
    const Trace trace = traced({});
    EXPECT_EQ(trace.crc, 0U);
    EXPECT_EQ(trace.printed, "    Initial: 0x00000000\n"
                             "    Final:   0x00000000\n");
}

TEST(ISDBTUtils, CrcOfZerosIsZeroAndPrintsALineForEachByte) {
    const Trace trace = traced(hex("00 00 00 00"));
    EXPECT_EQ(trace.crc, 0U);
    EXPECT_EQ(trace.printed, "    Initial: 0x00000000\n"
                             "    0x00 --> 0x00000000\n"
                             "    0x00 --> 0x00000000\n"
                             "    0x00 --> 0x00000000\n"
                             "    0x00 --> 0x00000000\n"
                             "    Final:   0x00000000\n");
}

TEST(ISDBTUtils, CrcTraceShowsEachByteWithTheCrcBehindIt) {
    const Trace trace = traced(hex("47 00 FF"));
    EXPECT_EQ(trace.crc, 0xC2D726E1U);
    EXPECT_EQ(trace.printed, "    Initial: 0x00000000\n"
                             "    0x47 --> 0x2AC12072\n"
                             "    0x00 --> 0x76891236\n"
                             "    0xFF --> 0xC2D726E1\n"
                             "    Final:   0xC2D726E1\n");
}

TEST(ISDBTUtils, CrcTraceIsNotLogged) {
    EXPECT_EQ(traced(hex("47 00 FF")).logged, Lines{});
}

TEST(ISDBTUtils, CrcOfOneByteIsItsEntryOfThePolynomialsTable) {
    EXPECT_EQ(traced(hex("01")).crc, 0x04C11DB7U);
    EXPECT_EQ(traced(hex("02")).crc, 0x09823B6EU);
    EXPECT_EQ(traced(hex("80")).crc, 0x690CE0EEU);
    EXPECT_EQ(traced(hex("FF")).crc, 0xB1F740B4U);
}

TEST(ISDBTUtils, CrcStartsAtZeroUnlikeThatOfASection) {
    const ByteVector section = hex("00 B015 02E1 D9 00 00  0000 E010  5C38 FFC8  5C20 E101");
    ASSERT_EQ(crc32(section), 0x53631C24U); // what the section carries behind these bytes
    EXPECT_EQ(traced(section).crc, 0x1D45482BU);
    EXPECT_EQ(traced(text("123456789")).crc, 0x89A1897FU);
}

TEST(ISDBTUtils, IsDestroyedThroughItsVirtualDestructor) {
    struct Derived : ISDBTUtils {
        explicit Derived(int& count) : deleted(count) {}
        ~Derived() override { ++deleted; }
        Derived(const Derived&) = delete;
        Derived& operator=(const Derived&) = delete;
        int& deleted;
    };
    int deleted = 0;
    std::unique_ptr<ISDBTUtils> object(new Derived(deleted));
    object.reset(new ISDBTUtils);
    EXPECT_EQ(deleted, 1);
    EXPECT_TRUE(std::has_virtual_destructor<ISDBTUtils>::value);
}

TEST(ISDBTUtils, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&ISDBTUtils::setErrorCode), void (*)(QUOR_U16*, QUOR_U16)>();
    testing::StaticAssertTypeEq<decltype(&ISDBTUtils::bcd2U8), U8 (*)(QUOR_U8)>();
    testing::StaticAssertTypeEq<decltype(&ISDBTUtils::mjd2unix), S32 (*)(QUOR_U16)>();
    testing::StaticAssertTypeEq<decltype(&ISDBTUtils::getSectionCRC32), U32 (*)(QUOR_U8*, QUOR_U32)>();
    EXPECT_TRUE(std::is_default_constructible<ISDBTUtils>::value);
    EXPECT_EQ(sizeof(ISDBTUtils), sizeof(void*)); // no member but its virtual functions
}
