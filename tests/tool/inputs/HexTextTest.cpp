#include "inputs/HexText.h"

#include "support/Bytes.h"

#include <gtest/gtest.h>
#include <random>

namespace {

const ByteVector PAT = hex("00 B0 0D 00 01 C1 00 00 00 01 E1 00 E8 F9 5E 7D");
const ByteVector LONGER = hex("02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0 02 52 00 4D 74 93 47");

std::string complaint(const std::string& text) {
    try {
        inspect::readHex(text);
        return "none";
    } catch (const inspect::HexError& error) {
        return error.what();
    }
}

} // namespace

TEST(HexText, IsAsLogsHoldIt) {
    for (const char* const text : {
             "00B00D0001C100000001E100E8F95E7D",
             "00b00d0001c1000000 01e100e8f95e7d",
             "  00 B0 0D 00 01 C1 00 00\n  00 01 E1 00 E8 F9 5E 7D\t\r\n",
             "00B0 0D00 01C1 0000 0001 E100 E8F9 5E7D",
             "00B00D00 01C10000\n0001E100 E8F95E7D\n",
             "0x00 0xB0 0x0D 0x00 0x01 0xC1 0x00 0x00 0x00 0x01 0xE1 0x00 0xE8 0xF9 0x5E 0x7D",
             "0x0,0xb0,0xd,0x0,0x1,0xc1,0x0,0x0,0x0,0x1,0xe1,0x0,0xe8,0xf9,0x5e,0x7d",
             "0X00B00D0001C100000001E100E8F95E7D",
             "00:B0:0D:00:01:C1:00:00:00:01:E1:00:E8:F9:5E:7D",
             "00-B0-0D-00-01-C1-00-00-00-01-E1-00-E8-F9-5E-7D",
             "00, B0, 0D, 00, 01, C1, 00, 00,\n00, 01, E1, 00, E8, F9, 5E, 7D,\n",
             R"("\x00\xB0\x0D\x00\x01\xC1\x00\x00" "\x00\x01\xE1\x00\xE8\xF9\x5E\x7D")",
             "static const uint8_t pat[16] = {\n    0x00, 0xB0, 0x0D, /* length */ 0x00, 0x01, 0xC1, 0x00, 0x00,\n"
             "    0x00, 0x01, 0xE1, 0x00, // 1: 0x100\n    0xE8, 0xF9, 0x5E, 0x7D\n};\n",
         }) {
        EXPECT_EQ(inspect::readHex(text), PAT) << text;
    }
}

TEST(HexText, OfSeveralArraysIsTheBytesOfAll) {
    EXPECT_EQ(inspect::readHex("a[] = {0x01, 0x02}; b[2] = {0x03, 0x04};"), hex("01 02 03 04"));
}

TEST(HexText, MayBeADumpWithOffsetsAndCharacters) {
    for (const char* const text : {
             "    0000  02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0\n    0010  02 52 00 4D 74 93 47\n",
             "00000000  02 b0 14 e6 a0 c1 00 00  e1 00 f0 00 1b e1 11 f0  |................|\n"
             "00000010  02 52 00 4d 74 93 47                              |.R.Mt.G|\n00000017\n",
             "00000000: 02b0 14e6 a0c1 0000 e100 f000 1be1 11f0  ................\n"
             "00000010: 0252 004d 7493 47                        .R.Mt.G\n",
             "0000   02 b0 14 e6 a0 c1 00 00 e1 00 f0 00 1b e1 11 f0   ................\n"
             "0010   02 52 00 4d 74 93 47                              ab cd ef\n",
             "1f40: 02 b0 14 e6 a0 c1 00 00\r\n1f48: e1 00 f0 00 1b e1 11 f0\r\n1f50: 02 52 00 4d 74 93 47\r\n",
             "0000  02 B0 14 E6  A0 C1 00 00  E1 00 F0 00  1B E1 11 F0\n0010  02 52 00 4D  74 93 47\n",
         }) {
        EXPECT_EQ(inspect::readHex(text), LONGER) << text;
    }
}

TEST(HexText, MayBeASingleLineOfADump) {
    EXPECT_EQ(inspect::readHex("0000  02 B0 14"), hex("02 B0 14"));
    EXPECT_EQ(inspect::readHex("0000  02 b0 14 e6 a0 c1 00 00  e1 00   .....ab cd"),
              hex("02 B0 14 E6 A0 C1 00 00 E1 00"));
    EXPECT_EQ(inspect::readHex("0030: 02 B0 14  |ab|"), hex("02 B0 14"));
    EXPECT_EQ(inspect::readHex("0030 02 B0 14"), hex("00 30 02 B0 14")); // nothing says that it is an offset
}

TEST(HexText, OfSeveralDumpsIsTheBytesOfAll) {
    EXPECT_EQ(inspect::readHex("0000  01 02 03 04\n0004  05\n\n0000  06 07\n"), hex("01 02 03 04 05 06 07"));
}

/// Old editors end lines so.
TEST(HexText, MayHaveLinesThatEndInACarriageReturnOnly) {
    EXPECT_EQ(inspect::readHex("0000  01 02 03 04\r0004  05 06\r"), hex("01 02 03 04 05 06"));
    EXPECT_EQ(inspect::readHex("01 02 // a\r03"), hex("01 02 03"));
    EXPECT_EQ(complaint("01\r02 x"), "line 2, column 4: two hexadecimal digits expected, not \"x\"");
}

/// od and hexdump without options.
TEST(HexText, OfWordsOrOctalOffsetsIsRefused) {
    for (const char* const text : {
             "0000000 130002 163024 140640 000000 000341 000360 160433 170021\n0000020 051002 046400 111564 000107\n",
             "0000000 b002 e614 c1a0 0000 00e1 00f0 e11b f011\n0000010 5202 4d00 9374 0047\n0000017\n",
             "0000000 b002 e614 c1a0\n",
             "0000000 002 260 024 346 240 301  \\0  \\0\n",
             "0000000 02 b0 14 e6 a0 c1 00 00 e1 00 f0 00 1b e1 11 f0\n0000020 02 52 00 4d 74 93 47\n0000027\n",
         }) {
        EXPECT_EQ(complaint(text),
                  "od and hexdump write octal offsets or words of 16 bits unless they are told otherwise; "
                  "od -A x -t x1, hexdump -C and xxd write a dump that can be read")
            << text;
    }
    EXPECT_EQ(inspect::readHex("0000000 02 b0 14 e6 a0 c1 00 00 e1 00 f0 00 1b e1 11 f0\n0000010 02 52\n0000012\n"),
              hex("02 B0 14 E6 A0 C1 00 00 E1 00 F0 00 1B E1 11 F0 02 52")); // od -A x -t x1 may write seven digits
}

TEST(HexText, SaysWhereSomethingElseStands) {
    EXPECT_EQ(complaint(""), "bytes in hexadecimal expected");
    EXPECT_EQ(complaint(" \n"), "bytes in hexadecimal expected");
    EXPECT_EQ(complaint("0"), "line 1, column 1: two hexadecimal digits expected, not \"0\"");
    EXPECT_EQ(complaint("00 B"), "line 1, column 4: two hexadecimal digits expected, not \"B\"");
    EXPECT_EQ(complaint("00 B0\n0D 0G 01"), "line 2, column 4: two hexadecimal digits expected, not \"0G\"");
    EXPECT_EQ(complaint("00 B0 0x 01"), "line 1, column 7: two hexadecimal digits expected, not \"0x\"");
    EXPECT_EQ(complaint("0x012"), "line 1, column 1: two hexadecimal digits expected, not \"0x012\"");
    EXPECT_EQ(complaint("section: 00 B0"), "line 1, column 1: two hexadecimal digits expected, not \"section:\"");
    EXPECT_EQ(complaint("{0x00, length}"), "line 1, column 8: two hexadecimal digits expected, not \"length}\"");
    EXPECT_EQ(complaint("00 B0 /* never closed"), "none");
    EXPECT_EQ(complaint("{"), "bytes in hexadecimal expected");
}

/// A line was lost, or cut: what follows would not be where its offset says.
TEST(HexText, OfADumpWithoutOneOfItsLinesIsRefused) {
    EXPECT_EQ(complaint("0000  02 B0 14 E6\n0008  A0 C1 00 00\n"),
              "the line at offset 0000 has 4 bytes, which does not lead to the next one");
    EXPECT_EQ(complaint("0000  02 B0 14 E6\n0004  A0 C1\n0008  00 00\n"),
              "the line at offset 0004 has 2 bytes, which does not lead to the next one");
    EXPECT_EQ(inspect::readHex("0000  01 02\n0002  03\n\n0002  04 05\n"), hex("01 02 03 04 05"));
}

/// Whatever is pasted, it is read or refused.
TEST(HexText, MayBeAnything) {
    std::mt19937 random(5);
    const std::string letters = "0123456789abcDEF  \n\n:,-{}/*\\x|\t#";
    int read = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text(random() % 40, ' ');
        for (char& letter : text) {
            letter = letters[random() % letters.size()];
        }
        read += complaint(text) == "none" ? 1 : 0;
    }
    EXPECT_GT(read, 500);
}
