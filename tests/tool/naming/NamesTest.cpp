#include "naming/Names.h"

#include "packets/Pid.h"

#include <fmt/format.h>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>
#include <sstream>

namespace {

using namespace inspect;

TEST(Names, AreThoseOfOneNumberOrOfSeveral) {
    EXPECT_EQ(names::STREAM_TYPE.of(0x1B), "H.264 video");
    EXPECT_EQ(names::TABLE_ID.of(0x4E), "EIT p/f (present and following events of this stream)");
    EXPECT_EQ(names::TABLE_ID.of(0x50), "EIT schedule (events of this stream)");
    EXPECT_EQ(names::TABLE_ID.of(0x57), "EIT schedule (events of this stream)");
    EXPECT_EQ(names::TABLE_ID.of(0x58), "EIT schedule extended (events of this stream, at length)");
    EXPECT_EQ(names::PID.of(0x1FFF), "null packets");
    EXPECT_EQ(names::AREA_CODE_JAPAN.of(0xAAC), "Tokyo, Japan");
}

TEST(Names, NumbersWithoutOneHaveNone) {
    EXPECT_EQ(names::TABLE_ID.of(0x0B), "");
    EXPECT_EQ(names::TABLE_ID.of(0x37), "");
    EXPECT_EQ(names::TABLE_ID.of(0x100), "");
    EXPECT_EQ(names::STREAM_MODE.of(-1), "");
    EXPECT_EQ(names::PID.of(std::int64_t{1} << 32U), "");
}

TEST(Names, HaveAbbreviations) {
    EXPECT_EQ(abbreviation("EIT p/f (present and following events)"), "EIT p/f");
    EXPECT_EQ(abbreviation("stuffing"), "stuffing");
    EXPECT_EQ(abbreviation(""), "");
}

/// A list whose rows are out of order would not be searched whole.
TEST(Names, EachListIsInOrder) {
    for (const NameList* const list : {&names::TABLE_ID, &names::PID, &names::DESCRIPTOR_MPEG, &names::DESCRIPTOR_ISDB,
                                       &names::DESCRIPTOR_DVB, &names::STREAM_TYPE, &names::COMPONENT_TYPE}) {
        std::int64_t before = -1;
        for (const Name& name : *list) {
            EXPECT_LT(before, name.first) << name.text;
            EXPECT_LE(name.first, name.last) << name.text;
            before = name.last;
        }
    }
}

TEST(Names, OfPidsAreOfferedByTheCompletion) {
    std::ifstream file(COMPLETION_FILE);
    const std::string script(std::istreambuf_iterator<char>(file), {});
    const std::size_t begin = script.find("local pids='") + std::string_view("local pids='").size();
    std::istringstream words(script.substr(begin, script.find('\'', begin) - begin));
    const std::vector<std::string> offered(std::istream_iterator<std::string>(words), {});
    std::vector<std::string> named;
    for (const Name& name : names::PID) {
        for (std::uint32_t pid = name.first; pid <= name.last && pid != NULL_PID; ++pid) {
            named.push_back(fmt::format("0x{:04X}", pid));
        }
    }
    EXPECT_EQ(offered, named);
}

} // namespace
