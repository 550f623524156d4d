#include "json/JsonRenderer.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <unistd.h>

namespace {

using namespace inspect;
using Json = nlohmann::ordered_json;

/// What the renderer writes of a section.
std::string lineOf(const SectionReport& report, const std::string& input = "a.ts", const Faults& faults = {}) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe(ends.data()), 0);
    Output output(ends[1]);
    JsonRenderer renderer(output);
    renderer.begin(input);
    renderer.section(report);
    const CurrentSections nothing;
    const Tables tables(nothing, {});
    const Multiplex multiplex(tables);
    renderer.end({}, multiplex, faults);
    close(ends[1]);
    std::array<char, 4096> text{};
    const ssize_t count = read(ends[0], text.data(), text.size());
    close(ends[0]);
    return {text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

SectionReport report() {
    SectionReport report{};
    report.pid = 0x1FC8;
    report.tableId = 0x02;
    report.tableName = "PMT";
    report.position = {12, 2068, 0.05833333};
    report.header = LongHeader{0xE6B8, 31, true, 1, 2};
    report.fields = {number("n", 1)};
    return report;
}

TEST(JsonRenderer, WritesASectionAsOneLine) {
    EXPECT_EQ(
        lineOf(report()),
        R"({"type":"section","schema_version":1,"source":"a.ts","pid":8136,"table":"PMT",)"
        R"("table_id":2,"table_id_extension":59064,"version":31,"current":true,"section_number":1,"last_section_number":2,"packet":12,"offset":2068,)"
        R"("seconds":0.058333,"time":null,"time_source":null,"same_version":false,"damaged":false,"fields":{"n":1}})"
        "\n");
}

TEST(JsonRenderer, WhatASectionDoesNotHaveIsNull) {
    SectionReport bare = report();
    bare.pid.reset();
    bare.header.reset();
    bare.position = {0, 77, std::nullopt};
    bare.sameVersion = true;
    bare.damaged = true;
    EXPECT_EQ(
        lineOf(bare),
        R"({"type":"section","schema_version":1,"source":"a.ts","pid":null,"table":"PMT",)"
        R"("table_id":2,"table_id_extension":null,"version":null,"current":null,"section_number":null,"last_section_number":null,"packet":null,)"
        R"("offset":77,"seconds":null,"time":null,"time_source":null,"same_version":true,"damaged":true,"fields":{"n":1}})"
        "\n");
}

TEST(JsonRenderer, SaysWhyASectionIsRejected) {
    SectionReport rejected = report();
    rejected.fields.clear();
    rejected.rejection = Rejection{2570, "ERROR_INVALID_ITEM", {"one", "two"}, {}, {0x02, 0xB0}};
    const Json object = Json::parse(lineOf(rejected));
    EXPECT_FALSE(object.contains("fields"));
    EXPECT_EQ(object["error"].dump(), R"({"code":2570,"name":"ERROR_INVALID_ITEM"})");
    EXPECT_EQ(object["log"].dump(), R"(["one","two"])");
    EXPECT_EQ(object["loops"].dump(), "[]");
    EXPECT_EQ(object["bytes"], "02B0");
}

TEST(JsonRenderer, NoNameAndNoLogLineBreaksTheLine) {
    SectionReport rejected = report();
    rejected.rejection = Rejection{1, "E", {"\xE9t\xE9\n\x01\"\\", std::string("\xC3\0", 2), "\xED\xA0\x80"}, {}, {}};
    const std::string line = lineOf(rejected, "caf\xE9 \xF0\x9F\n\x1B[2J.ts");
    EXPECT_EQ(line.find('\n'), line.size() - 1);
    EXPECT_EQ(line.find('\x1B'), std::string::npos);
    const Json object = Json::parse(line);
    EXPECT_EQ(object["source"], "caf\uFFFD \uFFFD\n\x1B[2J.ts");
    EXPECT_EQ(object["log"][0], "\uFFFDt\uFFFD\n\x01\"\\");
    EXPECT_EQ(object["log"][1], std::string("\uFFFD\0", 4));
    EXPECT_EQ(Json::parse(lineOf(report(), "Maré.ts"))["source"], "Maré.ts");
}

} // namespace
