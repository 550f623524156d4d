#include "comparing/Comparison.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace inspect;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::string valueOf(const Field& field) {
    if (const auto* const number = std::get_if<Number>(&field.value)) {
        return std::to_string(number->value);
    }
    if (const auto* const text = std::get_if<Text>(&field.value)) {
        return text->raw;
    }
    return std::holds_alternative<Absent>(field.value) ? "none" : "...";
}

/// "~ path 1 2", "- path 1", "+ path 2"
std::vector<std::string> changes(const Fields& before, const Fields& after) {
    std::vector<std::string> lines;
    for (const Change& change : compare(before, after)) {
        std::string line = change.before == nullptr ? "+ " : change.after == nullptr ? "- " : "~ ";
        line += change.path;
        line += change.before == nullptr ? "" : ' ' + valueOf(*change.before);
        line += change.after == nullptr ? "" : ' ' + valueOf(*change.after);
        lines.push_back(line);
    }
    return lines;
}

Field stream(std::uint32_t pid, std::uint32_t type, std::uint32_t tag) {
    return object("", {identifier("stream_type", type, 2), identifier("elementary_pid", pid, 4),
                       object("stream_identifier_descriptor", {identifier("component_tag", tag, 2)})});
}

Field country(std::string_view code, std::int64_t region, std::int64_t offset) {
    Field name = text("country_code", code);
    std::get<Text>(name.value).decoded = code;
    return object("", {name, number("country_region_id", region), number("local_time_offset", offset)});
}

Field service(std::uint32_t streamId, std::uint32_t serviceId, std::int64_t status) {
    return object("", {identifier("transport_stream_id", streamId, 4), identifier("service_id", serviceId, 4),
                       number("running_status", status)});
}

Field pair(std::int64_t one, std::int64_t other) {
    return object("", {number("one", one), number("other", other)});
}

} // namespace

TEST(Comparison, NothingChangesInTheSameFields) {
    const Fields fields{number("n", 1), flag("f", true),        text("t", "x"),
                        absent("a"),    bytes("b", nullptr, 0), list("streams", {stream(0x0131, 0x1B, 0)})};
    EXPECT_THAT(changes(fields, fields), IsEmpty());
}

TEST(Comparison, TellsEachKindOfValue) {
    const std::uint8_t byte = 0x2A;
    const Fields before{number("n", 1), flag("f", true), text("t", "x"), absent("a"), bytes("b", nullptr, 0)};
    const Fields after{number("n", 2), flag("f", false), text("t", "y"), number("a", 3), bytes("b", &byte, 1)};
    EXPECT_THAT(changes(before, after), ElementsAre("~ n 1 2", "~ f ... ...", "~ t x y", "~ a none 3", "~ b ... ..."));
}

TEST(Comparison, FindsFieldsByName) {
    EXPECT_THAT(changes({number("gone", 1), number("kept", 2)}, {number("new", 3), number("kept", 2)}),
                ElementsAre("- gone 1", "+ new 3"));
}

TEST(Comparison, SaysWhatIsNewInTheOrderOfTheTable) {
    EXPECT_THAT(changes({}, {number("z", 1), number("a", 2), number("m", 3)}), ElementsAre("+ z 1", "+ a 2", "+ m 3"));
}

TEST(Comparison, MatchesStreamsByPidWhateverTheirOrder) {
    const Fields before{list("elementary_streams", {stream(0x0130, 0x1B, 0), stream(0x0131, 0x11, 0x10)})};
    const Fields after{
        list("elementary_streams", {stream(0x0132, 0x05, 0x20), stream(0x0131, 0x11, 0x11), stream(0x0130, 0x1B, 0)})};
    EXPECT_THAT(changes(before, after),
                ElementsAre("~ elementary_streams[0x0131].stream_identifier_descriptor.component_tag 16 17",
                            "+ elementary_streams[0x0132] ..."));
}

TEST(Comparison, SaysThatADescriptorIsGone) {
    const Fields before{list("elementary_streams", {stream(0x0130, 0x1B, 0)})};
    const Fields after{list("elementary_streams", {object("", {identifier("stream_type", 0x1B, 2),
                                                               identifier("elementary_pid", 0x0130, 4)})})};
    EXPECT_THAT(changes(before, after), ElementsAre("- elementary_streams[0x0130].stream_identifier_descriptor ..."));
}

TEST(Comparison, MatchesByTextToo) {
    EXPECT_THAT(changes({list("items", {country("BRA", 2, 10800), country("URY", 0, 10800)})},
                        {list("items", {country("URY", 0, 7200), country("BRA", 2, 10800)})}),
                ElementsAre("~ items[URY].local_time_offset 10800 7200"));
}

TEST(Comparison, MatchesByTheFieldThatTellsAllElementsApart) {
    EXPECT_THAT(changes({list("items", {service(1, 7, 0), service(1, 8, 0)})},
                        {list("items", {service(1, 8, 4), service(1, 7, 0)})}),
                ElementsAre("~ items[0x0008].running_status 0 4"));
    // the same service in two transport streams
    EXPECT_THAT(changes({list("items", {service(1, 7, 0), service(2, 7, 0)})},
                        {list("items", {service(2, 7, 4), service(1, 7, 0)})}),
                ElementsAre("~ items[0x0002].running_status 0 4"));
}

TEST(Comparison, MatchesByPositionWhereNothingIdentifies) {
    EXPECT_THAT(changes({list("pairs", {pair(1, 2), pair(3, 4)})}, {list("pairs", {pair(1, 5)})}),
                ElementsAre("~ pairs[0].other 2 5", "- pairs[1] ..."));
    EXPECT_THAT(changes({list("items", {service(1, 7, 0), service(1, 7, 0)})},
                        {list("items", {service(1, 7, 0), service(1, 7, 4)})}),
                ElementsAre("~ items[1].running_status 0 4"));
}

TEST(Comparison, SingleValuesStandForThemselves) {
    const auto values = [](std::initializer_list<std::uint32_t> ids) {
        Fields elements;
        for (const std::uint32_t id : ids) {
            elements.push_back(identifier("", id, 4));
        }
        return Fields{list("service_ids", elements)};
    };
    EXPECT_THAT(changes(values({1, 2, 3}), values({3, 1, 2})), IsEmpty());
    EXPECT_THAT(changes(values({1, 2, 2}), values({2, 4, 1})), ElementsAre("- service_ids 2", "+ service_ids 4"));
}

TEST(Comparison, AnotherKindOfFieldIsAnotherValue) {
    EXPECT_THAT(changes({object("x", {})}, {absent("x")}), ElementsAre("~ x ... none"));
}
