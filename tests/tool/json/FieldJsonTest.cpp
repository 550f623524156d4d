#include "json/FieldJson.h"

#include "tool/json/Examples.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <nlohmann/json.hpp>

namespace {

using namespace inspect;

std::string jsonOf(const Fields& fields) {
    return fieldsJson(fields).dump();
}

Field decoded(std::string_view name, std::string_view raw, std::string_view shown) {
    Field field = text(name, raw);
    std::get<Text>(field.value).decoded = shown;
    return field;
}

TEST(FieldJson, NumbersStayNumbersHoweverLarge) {
    EXPECT_EQ(jsonOf({number("a", 0), number("b", std::numeric_limits<std::int64_t>::max()),
                      number("c", std::numeric_limits<std::int64_t>::min()), number("d", -1),
                      identifier("e", std::numeric_limits<std::uint32_t>::max(), 8)}),
              R"({"a":0,"b":9223372036854775807,"c":-9223372036854775808,"d":-1,"e":4294967295})");
}

TEST(FieldJson, NamesStandBesideCodes) {
    constexpr Name ROWS[] = {{27, 27, "H.264 video"}};
    const NameList NAMES(ROWS);
    EXPECT_EQ(jsonOf({code("stream_type", 27, NAMES), code("other_type", 28, NAMES)}),
              R"({"stream_type":27,"stream_type_name":"H.264 video","other_type":28,"other_type_name":null})");
}

TEST(FieldJson, BytesStandBesideTexts) {
    EXPECT_EQ(jsonOf({decoded("network_name", "TV \xE9", "TV é"), decoded("empty", "", "")}),
              R"({"network_name":"TV é","network_name_hex":"545620E9","empty":"","empty_hex":""})");
}

TEST(FieldJson, BytesAreDigits) {
    constexpr std::uint8_t BYTES[] = {0x00, 0xAB, 0x0F};
    EXPECT_EQ(jsonOf({bytes("some", BYTES, 3), bytes("none", nullptr, 0)}), R"({"some":"00AB0F","none":""})");
}

TEST(FieldJson, ReadingsStandBesideValuesThatHaveThem) {
    EXPECT_EQ(jsonOf({number("local_time_offset", 10800).in("s").reads("-03:00"), number("duration", 170).reads("")}),
              R"({"local_time_offset":10800,"local_time_offset_reading":"-03:00","duration":170})");
}

TEST(FieldJson, FlagsAndWhatIsAbsent) {
    EXPECT_EQ(jsonOf({flag("set", true), flag("clear", false), absent("aac_type")}),
              R"({"set":true,"clear":false,"aac_type":null})");
}

TEST(FieldJson, ObjectsAndListsOfThem) {
    EXPECT_EQ(jsonOf({object("descriptor", {number("n", 1)}),
                      list("items", {object("", {number("n", 2)}), object("", {number("n", 3)})}).reads("of 4 sent"),
                      list("none", {})}),
              R"({"descriptor":{"n":1},"items":[{"n":2},{"n":3}],"items_reading":"of 4 sent","none":[]})");
}

TEST(FieldJson, TimesHaveTheirInstantBesideThem) {
    Field time = clockTime("unix_time", 1750012200).reads("2025-06-15 18:30:00 UTC-3");
    time.instant = "2025-06-15T18:30:00-03:00";
    EXPECT_EQ(jsonOf({time}), R"({"unix_time":1750012200,"unix_time_reading":"2025-06-15 18:30:00 UTC-3",)"
                              R"("unix_time_instant":"2025-06-15T18:30:00-03:00"})");
}

TEST(FieldJson, WhatStandsBesideTheElementsOfAListIsInAListOfItsOwn) {
    EXPECT_EQ(jsonOf({list("parameters", {decoded("", "a", "a"), decoded("", "\xE9", "é")})}),
              R"({"parameters":["a","é"],"parameters_hex":["61","E9"]})");
    EXPECT_EQ(jsonOf({list("frequencies", {number("", 3311).reads("473 MHz"), number("", 0)})}),
              R"({"frequencies":[3311,0],"frequencies_readings":["473 MHz",null]})");
}

std::size_t membersFor(const Fields& fields);

/// Its own, and those below it.
std::size_t membersFor(const Field& field) {
    std::size_t count = 1;
    count += field.isCode ? 1 : 0;
    count += field.reading.empty() ? 0 : 1;
    count += field.isTime ? 1 : 0;
    count += field.isDuration ? 1 : 0;
    count += std::holds_alternative<Text>(field.value) ? 1 : 0;
    if (const auto* const object = std::get_if<Object>(&field.value)) {
        count += membersFor(object->fields);
    } else if (const auto* const list = std::get_if<List>(&field.value)) {
        bool codes = false;
        bool texts = false;
        bool readings = false;
        for (const Field& element : list->elements) {
            codes = codes || element.isCode;
            texts = texts || std::holds_alternative<Text>(element.value);
            readings = readings || !element.reading.empty();
            const auto* const members = std::get_if<Object>(&element.value);
            count += members == nullptr ? 0 : membersFor(members->fields);
        }
        count += (codes ? 1U : 0U) + (texts ? 1U : 0U) + (readings ? 1U : 0U);
    }
    return count;
}

std::size_t membersFor(const Fields& fields) {
    std::size_t count = 0;
    for (const Field& field : fields) {
        count += membersFor(field);
    }
    return count;
}

std::size_t membersIn(const nlohmann::ordered_json& json) {
    std::size_t count = json.is_object() ? json.size() : 0;
    for (const nlohmann::ordered_json& each : json) {
        count += each.is_structured() ? membersIn(each) : 0;
    }
    return count;
}

/// A second member of a name would take the place of the first.
TEST(FieldJson, NoTwoMembersHaveOneName) {
    std::size_t members = 0;
    for (const Example& example : examples()) {
        EXPECT_EQ(membersIn(fieldsJson(example.fields)), membersFor(example.fields)) << example.table;
        members += membersFor(example.fields);
    }
    EXPECT_GT(members, 1000U);
}

} // namespace
