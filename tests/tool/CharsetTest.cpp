#include "Process.h"
#include "Streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

/// What is shown of a network whose name is these bytes.
std::string nameShown(const std::string& bytes, const std::vector<std::string>& options = {}) {
    const ByteVector name = descriptor(0x40, hex(bytes));
    const ByteVector loop = join({u16(static_cast<unsigned>(name.size()), 0xF000), name});
    const ByteVector nit = longSection(0x40, {}, join({loop, hex("F006 0735 0735 F000")}));
    const TemporaryFile file(StreamBuilder().section(0x0010, nit).bytes());
    std::vector<std::string> arguments = options;
    arguments.insert(arguments.end(), {"--table", "nit", file.path()});
    const Finished finished = inspectTables(arguments);
    EXPECT_EQ(finished.status, 0);
    EXPECT_EQ(finished.errors, "");
    const std::string marker = "network_name_descriptor (0x40)  network_name ";
    const std::size_t begin = finished.output.find(marker) + marker.size();
    return finished.output.substr(begin, finished.output.find('\n', begin) - begin);
}

} // namespace

TEST(InspectCharset, IsThatOfBrazilWithoutAWord) {
    EXPECT_EQ(nameShown("54 56 20 49 4E 54 45 47 52 41 C7 C3 4F 20 20", {"--charset", "latin-america"}),
              "\"TV INTEGRAÇÃO\"");
    EXPECT_EQ(nameShown("43 E2 6D 61 72 61 20 A4"), "\"Câmara €\"");
}

/// Names in Japan begin with kanji, which are no texts of Latin America.
TEST(InspectCharset, IsThatOfJapanInItsNetworks) {
    LongHeader header;
    header.extension = 0x7FE8;
    const ByteVector nit = longSection(0x40, header, hex("F005 40 03 C6 EC D3  F000"));
    const TemporaryFile file(StreamBuilder().section(0x0010, nit).bytes());
    const std::string shown = inspectTables({"--table", "nit", file.path()}).output;
    if (inspectTables({"--charset", "japan", file.path()}).status == 2) {
        EXPECT_THAT(shown, HasSubstr("\"ÆìÓ\" (in the coding of Japan, which this build cannot read)\n"));
    } else {
        EXPECT_THAT(shown, HasSubstr("network_name \"てれび\"\n"));
    }
    EXPECT_THAT(inspectTables({"--table", "nit", "--charset", "latin-america", file.path()}).output,
                HasSubstr("network_name \"ÆìÓ\"\n"));
}

TEST(InspectCharset, AnyThatIconvKnows) {
    EXPECT_EQ(nameShown("A4", {"--charset", "ISO-8859-1"}), "\"¤\"");
    EXPECT_EQ(nameShown("43 C3A2 6D 61 72 61", {"--charset", "UTF-8"}), "\"Câmara\"");
    EXPECT_EQ(nameShown("80", {"--charset=windows-1252"}), "\"€\"");
    EXPECT_EQ(nameShown("93FA 967B", {"--charset", "SHIFT_JIS"}), "\"日本\"");
    EXPECT_EQ(nameShown("A4", {"--charset", "ISO-8859-1//"}), "\"¤\""); // as they are listed
    EXPECT_EQ(nameShown("C3A2", {"--charset", "ISO-10646/UTF8/"}), "\"â\"");
}

TEST(InspectCharset, BytesThatAreNoCharactersAreShownEscaped) {
    EXPECT_EQ(nameShown("41 FF C3 42", {"--charset", "UTF-8"}), "\"A\\xFF\\xC3B\"");
    EXPECT_EQ(nameShown("41 E9 42", {"--charset", "ASCII"}), "\"A\\xE9B\"");
}

/// What is broadcast must not steer the terminal.
TEST(InspectCharset, ControlCharactersAreShownEscapedOrNotAtAll) {
    const std::string name = "1B 5B 33 31 6D 0A 9B 7F 41";
    EXPECT_EQ(nameShown(name, {"--charset", "ISO-8859-15"}), "\"\\x1B[31m\\x0A\\x9B\\x7FA\"");
    EXPECT_EQ(nameShown(name), "\"31m A\" (2 control codes left out)");
}

TEST(InspectCharset, QuotationMarksAndBackslashesAreTold) {
    EXPECT_EQ(nameShown("22 5C 22"), "\"\\\"\\\\\\\"\"");
}

/// Columns are as wide as their characters, not as their bytes.
TEST(InspectCharset, TablesStayAligned) {
    const ByteVector names = descriptor(0x01, hex("656E67 02 4F4B  706F72 03 E3E7E9"));
    const ByteVector prefetch = descriptor(0x0C, hex("01  03 E3E7E9 05  05 6162636465 06"));
    const ByteVector both = join({u16(static_cast<unsigned>(prefetch.size() + names.size()), 0xF000), prefetch, names});
    const TemporaryFile file(StreamBuilder().section(0x0321, longSection(0x74, {}, join({both, hex("F000")}))).bytes());
    EXPECT_THAT(inspectTables({"--pid", "0x321", file.path()}).output, HasSubstr("      label    priority\n"
                                                                                 "      \"ãçé\"    5\n"
                                                                                 "      \"abcde\"  6\n"));
}

TEST(InspectCharset, UnknownNames) {
    for (const char* const name : {"KLINGON", "UTF-8//IGNORE", "UTF-8/", "//"}) {
        const Finished finished = inspectTables({"--charset", name, SAMPLE_FILE});
        EXPECT_EQ(finished.status, 2);
        EXPECT_EQ(finished.output, "");
        EXPECT_THAT(finished.errors,
                    StartsWith(std::string("isdbt-inspect: --charset: unknown character set: ") + name + "\n"));
    }
}
