#include "utils/ParserUtils.h"

#include "support/Parse.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

using Quor::ParserUtils;

namespace {

const std::string NO_TARGET = "ISDBTUils: ParserUtils::parseByteArray: ERROR: Invalid data target. Aborting!";
const std::string NO_LENGTH =
    "ISDBTUils: ParserUtils::parseByteArray: ERROR: Byte array length is not greater than zero.Aborting!";

/// What became of a byte array field.
struct Array {
    std::unique_ptr<QUOR_U8[]> bytes;
    Lines lines;
};

Array parseByteArray(const ByteVector& wire, QUOR_U8 length, QUOR_U8* before = nullptr) {
    const HeapBytes bytes(wire);
    const LogCapture log;
    QUOR_U8* target = before;
    ParserUtils::parseByteArray(bytes.data(), target, length);
    return {std::unique_ptr<QUOR_U8[]>(target), log.lines()};
}

/// What became of a string field.
struct Text {
    QUOR_S32 taken;
    std::string value;
    Lines lines;
};

Text parseStr(const ByteVector& wire, QUOR_U32 length, QUOR_U32 maxLength) {
    const HeapBytes bytes(wire);
    const LogCapture log;
    Text result{0, "as before", {}};
    result.taken = ParserUtils::parseStr(bytes.data(), result.value, length, maxLength);
    result.lines = log.lines();
    return result;
}

} // namespace

TEST(ParserUtils, ByteArrayIsCopied) {
    const Array array = parseByteArray(hex("01 00 FF 7F"), 4);
    ASSERT_NE(array.bytes, nullptr);
    EXPECT_EQ(ByteVector(array.bytes.get(), array.bytes.get() + 4), hex("01 00 FF 7F"));
}

TEST(ParserUtils, ByteArrayTakesTheLengthOfBytesOnly) {
    const Array array = parseByteArray(hex("01 02 03"), 1);
    ASSERT_NE(array.bytes, nullptr);
    EXPECT_EQ(array.bytes[0], 0x01);
}

TEST(ParserUtils, LongestByteArrayIsCopiedWhole) {
    const Array array = parseByteArray(join({fill(254, 0x11), hex("22")}), 255);
    ASSERT_NE(array.bytes, nullptr);
    EXPECT_EQ(array.bytes[253], 0x11);
    EXPECT_EQ(array.bytes[254], 0x22);
}

TEST(ParserUtils, ByteArrayIntoANullTargetIsLoggedAndCopiedAllTheSame) {
    const Array array = parseByteArray(hex("2A"), 1);
    EXPECT_EQ(array.lines, Lines{NO_TARGET});
    ASSERT_NE(array.bytes, nullptr);
    EXPECT_EQ(array.bytes[0], 0x2A);
}

TEST(ParserUtils, ByteArrayOverwritesATargetWithoutFreeingIt) {
    const std::unique_ptr<QUOR_U8[]> old(new QUOR_U8[2]{0x55, 0xAA});
    const Array array = parseByteArray(hex("2A"), 1, old.get());
    EXPECT_EQ(array.lines, Lines{});
    EXPECT_NE(array.bytes.get(), old.get());
    EXPECT_EQ(old[0], 0x55);
    EXPECT_EQ(old[1], 0xAA);
}

TEST(ParserUtils, EmptyByteArrayIsNullAndLogsTwice) {
    const Array array = parseByteArray(hex("2A"), 0);
    EXPECT_EQ(array.bytes, nullptr);
    EXPECT_EQ(array.lines, (Lines{NO_TARGET, NO_LENGTH}));
}

TEST(ParserUtils, EmptyByteArrayClearsATarget) {
    const std::unique_ptr<QUOR_U8[]> old(new QUOR_U8[1]{0x55});
    const Array array = parseByteArray(hex("2A"), 0, old.get());
    EXPECT_EQ(array.bytes, nullptr);
    EXPECT_EQ(array.lines, Lines{NO_LENGTH});
    EXPECT_EQ(old[0], 0x55);
}

TEST(ParserUtils, StringOfExplicitLengthIsTaken) {
    const Text result = parseStr(text("Ginga"), 5, 5);
    EXPECT_EQ(result.taken, 5);
    EXPECT_EQ(result.value, "Ginga");
    EXPECT_EQ(result.lines, Lines{});
}

TEST(ParserUtils, StringOfExplicitLengthLeavesTheRest) {
    const Text result = parseStr(text("Ginga"), 2, 5);
    EXPECT_EQ(result.taken, 2);
    EXPECT_EQ(result.value, "Gi");
}

TEST(ParserUtils, NothingLeftGivesTheEmptyString) {
    const Text result = parseStr({}, 0, 0);
    EXPECT_EQ(result.taken, 0);
    EXPECT_EQ(result.value, "");
    EXPECT_EQ(result.lines, Lines{});
}

TEST(ParserUtils, PrefixedStringTakesItsLengthByteAsWell) {
    const Text result = parseStr(join({hex("04"), text("Rede")}), 0, 5);
    EXPECT_EQ(result.taken, 5);
    EXPECT_EQ(result.value, "Rede");
    EXPECT_EQ(result.lines, Lines{});
}

TEST(ParserUtils, PrefixedStringLeavesTheRest) {
    const Text result = parseStr(join({hex("02"), text("Rede")}), 0, 5);
    EXPECT_EQ(result.taken, 3);
    EXPECT_EQ(result.value, "Re");
}

TEST(ParserUtils, PrefixedStringOfLengthZeroIsEmptyAndTakesOneByte) {
    EXPECT_EQ(parseStr(hex("00"), 0, 1).taken, 1);
    EXPECT_EQ(parseStr(hex("00"), 0, 1).value, "");
    EXPECT_EQ(parseStr(hex("00 41"), 0, 2).taken, 1);
    EXPECT_EQ(parseStr(hex("00 41"), 0, 2).lines, Lines{});
}

TEST(ParserUtils, PrefixedStringLongerThanWhatIsLeftFails) {
    const Text result = parseStr(join({hex("05"), text("Rede")}), 0, 5);
    EXPECT_EQ(result.taken, -1);
    EXPECT_EQ(result.value, "as before");
    EXPECT_EQ(result.lines, Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data "
                                  "length: 5 > 4.Aborting!"});
}

TEST(ParserUtils, PrefixWithNothingBehindItFails) {
    const Text result = parseStr(hex("01"), 0, 1);
    EXPECT_EQ(result.taken, -1);
    EXPECT_EQ(result.value, "as before");
    EXPECT_EQ(result.lines, Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data "
                                  "length: 1 > 0.Aborting!"});
}

TEST(ParserUtils, ExplicitLengthLongerThanWhatIsLeftFails) {
    const Text result = parseStr(text("Rede"), 5, 4);
    EXPECT_EQ(result.taken, -1);
    EXPECT_EQ(result.value, "as before");
    EXPECT_EQ(result.lines, Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data "
                                  "length: 5 > 4.Aborting!"});
}

TEST(ParserUtils, ExplicitLengthWithNothingLeftFails) {
    const Text result = parseStr({}, 3, 0);
    EXPECT_EQ(result.taken, -1);
    EXPECT_EQ(result.value, "as before");
    EXPECT_EQ(result.lines, Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data "
                                  "length: 3 > 0.Aborting!"});
}

TEST(ParserUtils, LengthsInTheLogAreUnsigned) {
    EXPECT_EQ(parseStr(hex("41"), 0xFFFFFFFF, 1).lines,
              Lines{"ISDBTUils: ParserUtils::parseStr: ERROR: String length exceeds available data "
                    "length: 4294967295 > 1.Aborting!"});
}

TEST(ParserUtils, ZeroBytesStayInTheString) {
    EXPECT_EQ(parseStr(hex("41 00 42 00"), 4, 4).value, std::string("A\0B\0", 4));
    EXPECT_EQ(parseStr(hex("03 00 00 43"), 0, 4).value, std::string("\0\0C", 3));
}

TEST(ParserUtils, CharactersAreNotConverted) {
    EXPECT_EQ(parseStr(hex("1B 24 E7 FF"), 4, 4).value, "\x1B\x24\xE7\xFF");
}

TEST(ParserUtils, BytesTakenAreCountedInEightBits) {
    EXPECT_EQ(parseStr(fill(255, 'x'), 255, 255).taken, 255);
    EXPECT_EQ(parseStr(fill(256, 'x'), 256, 256).taken, 0);
    EXPECT_EQ(parseStr(fill(300, 'x'), 300, 300).taken, 44);
    EXPECT_EQ(parseStr(join({hex("FE"), fill(254, 'x')}), 0, 255).taken, 255);
    EXPECT_EQ(parseStr(join({hex("FF"), fill(255, 'x')}), 0, 256).taken, 0);
}

TEST(ParserUtils, LongStringsAreTakenWholeThoughTheirCountIsCut) {
    EXPECT_EQ(parseStr(fill(300, 'x'), 300, 300).value, std::string(300, 'x'));
    EXPECT_EQ(parseStr(join({hex("FF"), fill(255, 'x')}), 0, 256).value, std::string(255, 'x'));
}

TEST(ParserUtils, LogsAtLevelFourUnderItsOwnTag) {
    const LogCapture log;
    QUOR_U8* target = nullptr;
    ParserUtils::parseByteArray(nullptr, target, 0);
    std::string value;
    ParserUtils::parseStr(nullptr, value, 1, 0);
    ASSERT_EQ(log.records().size(), 3U);
    for (const LogCapture::Line& line : log.records()) {
        EXPECT_EQ(line.level, 4);
        EXPECT_EQ(line.tag, "ISDBTUils");
    }
}

TEST(ParserUtils, HasTheSignaturesThatReceiversCall) {
    testing::StaticAssertTypeEq<decltype(&ParserUtils::parseByteArray), void (*)(QUOR_U8*, QUOR_U8*&, QUOR_U8)>();
    testing::StaticAssertTypeEq<decltype(&ParserUtils::parseStr),
                                QUOR_S32 (*)(QUOR_U8*, std::string&, QUOR_U32, QUOR_U32)>();
    EXPECT_FALSE(std::is_polymorphic<ParserUtils>::value);
    EXPECT_TRUE(std::is_empty<ParserUtils>::value);
}
