#include "placing/FieldFinder.h"

#include "describing/Describing.h"
#include "parsing/SectionParser.h"
#include "tool/json/ExampleSections.h"
#include "json/FieldJson.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace {

using namespace inspect;
using Json = nlohmann::ordered_json;

constexpr std::uint64_t ALL = 100'000'000;

Fields fieldsOf(const ByteVector& section) {
    const Section taken(section.data(), section.size(), {});
    const ParsedSection parsed = parse(taken);
    return parsed.table == nullptr ? Fields() : describe(*parsed.table);
}

Json placesBy(FieldFinder& finder, const ByteVector& section, std::uint64_t most = ALL) {
    const Fields fields = fieldsOf(section);
    EXPECT_FALSE(fields.empty());
    const FieldPlaces places = finder.find(Place{}, section, fields, most);
    return places.empty() ? Json() : placesJson(fields, places);
}

Json placesIn(const ByteVector& section) {
    FieldFinder finder;
    return placesBy(finder, section);
}

TEST(FieldFinder, FindsTheProgramsOfAPat) {
    const Json places = placesIn(longSection(0x00, {}, hex("0000 E010  0001 E101  0002 FFC8")));
    EXPECT_EQ(places["transport_stream_id"], "3-4");
    EXPECT_EQ(places["network_pid"], "10-11");
    EXPECT_EQ(places["programs"][0]["program_number"], "12-13");
    EXPECT_EQ(places["programs"][0]["program_map_pid"], "14-15");
    EXPECT_EQ(places["programs"][1]["program_number"], "16-17");
    EXPECT_EQ(places["programs"][1]["program_map_pid"], "18-19");
}

/// The library keeps them in the order of their numbers, and no change of the one in the middle leaves it there.
TEST(FieldFinder, FollowsEntriesThatMove) {
    const Json programs =
        placesIn(longSection(0x00, {}, hex("0003 E103  0001 E101  0002 E102  0004 E104")))["programs"];
    EXPECT_EQ(programs[0], Json({{"program_number", "12-13"}, {"program_map_pid", "14-15"}}));
    EXPECT_EQ(programs[1], Json({{"program_number", "16-17"}, {"program_map_pid", "18-19"}}));
    EXPECT_EQ(programs[2], Json({{"program_number", "8-9"}, {"program_map_pid", "10-11"}}));
    EXPECT_EQ(programs[3], Json({{"program_number", "20-21"}, {"program_map_pid", "22-23"}}));
}

/// Two streams with the same kinds of descriptors.
TEST(FieldFinder, FindsTheStreamsOfAPmt) {
    const Json places = placesIn(longSection(0x02, {},
                                             hex("E111 F000  1B E111 F006 52 01 81 C8 01 C7"
                                                 "0F E112 F00D 52 01 82 50 08 F2 03 83 70 6F 72 54 78")));
    EXPECT_EQ(places["program_number"], "3-4");
    EXPECT_EQ(places["pcr_pid"], "8-9");
    const Json& video = places["elementary_streams"][0];
    EXPECT_EQ(video["stream_type"], "12");
    EXPECT_EQ(video["elementary_pid"], "13-14");
    EXPECT_EQ(video["stream_identifier_descriptor"], Json({{"descriptor_tag", "17"}, {"component_tag", "19"}}));
    EXPECT_EQ(video["video_decode_control_descriptor"]["descriptor_tag"], "20");
    EXPECT_EQ(video["video_decode_control_descriptor"]["still_picture"], "22");
    EXPECT_EQ(video["video_decode_control_descriptor"]["video_encode_format"], "22");
    const Json& audio = places["elementary_streams"][1];
    EXPECT_EQ(audio["elementary_pid"], "24-25");
    EXPECT_EQ(audio["stream_identifier_descriptor"], Json({{"descriptor_tag", "28"}, {"component_tag", "30"}}));
    EXPECT_EQ(audio["component_descriptor"]["stream_content"], "33");
    EXPECT_EQ(audio["component_descriptor"]["component_type"], "34");
    EXPECT_EQ(audio["component_descriptor"]["stream_content_component_type"], "33-34");
    EXPECT_EQ(audio["component_descriptor"]["component_tag"], "35");
    EXPECT_EQ(audio["component_descriptor"]["language_code"], "36-38");
    EXPECT_EQ(audio["component_descriptor"]["text"], "39-40");
}

TEST(FieldFinder, FindsTheTextsOfAnSdt) {
    const Json places = placesIn(longSection(0x42, {}, hex("0001 FF  E6A0 FF 800A 48 08 01 02 54 56 03 55 6D 31")));
    EXPECT_EQ(places["transport_stream_id"], "3-4");
    EXPECT_EQ(places["original_network_id"], "8-9");
    const Json& service = places["services"][0];
    EXPECT_EQ(service["service_id"], "11-12");
    EXPECT_EQ(service["eit_schedule"], "13");
    EXPECT_EQ(service["running_status"], "14");
    EXPECT_EQ(service["service_descriptor"]["service_type"], "18");
    EXPECT_EQ(service["service_descriptor"]["service_provider_name"], "20-21");
    EXPECT_EQ(service["service_descriptor"]["service_name"], "23-25");
}

TEST(FieldFinder, FindsTimesWithTheirOffsets) {
    const Json places = placesIn(shortSection(0x73, hex("EDA9 123456  F00F 58 0D 425241 0D 0300 EE35 030000 0200")));
    EXPECT_EQ(places["unix_time"], "3-7");
    const Json& descriptor = places["local_time_offset_descriptor"];
    EXPECT_EQ(descriptor["items"][0]["country_code"], "12-14");
    EXPECT_EQ(descriptor["items"][0]["country_region_id"], "15");
    EXPECT_EQ(descriptor["items"][0]["local_time_offset"], "16-17");
    EXPECT_EQ(descriptor["standard"]["regions"][0]["local_time_offset"], "15-17"); // with its sign
    EXPECT_EQ(descriptor["standard"]["regions"][0]["time_of_change"], "18-22");
    EXPECT_EQ(descriptor["standard"]["regions"][0]["next_time_offset"], "15,23-24");
}

/// The receiver keeps the last region of a country. With another country there is another entry, of whose code the
/// bytes of either might be.
TEST(FieldFinder, FindsTheCodesThatTellEntriesApart) {
    const Json places =
        placesIn(shortSection(0x73, hex("EDA9 123456  F01C 58 1A 425241 09 0300 EE35 030000 0200"
                                        "425241 0D 0400 EE35 030000 0300")))["local_time_offset_descriptor"];
    EXPECT_EQ(places["items"][0]["country_code"], Json());
    EXPECT_EQ(places["items"][0]["country_region_id"], "28");
    EXPECT_EQ(places["standard"]["regions"][0]["country_code"], "12-14");
    EXPECT_EQ(places["standard"]["regions"][1]["country_code"], "25-27");
}

/// Services of two bytes, where the standard has three; the receiver's are in the order of their numbers.
TEST(FieldFinder, FindsWhatTheReceiverReadsOtherwise) {
    const Json places =
        placesIn(longSection(0x40, {}, hex("F000 F00E  0735 0001 F008 41 06 E6A0 01 E6B8 C0")))["transport_streams"][0];
    EXPECT_EQ(places["transport_stream_id"], "12-13");
    const Json& descriptor = places["service_list_descriptor"];
    EXPECT_EQ(descriptor["items"][0], Json({{"service_id", "22"}, {"service_type", "23"}}));
    EXPECT_EQ(descriptor["items"][1], Json({{"service_id", "24"}, {"service_type", "25"}}));
    EXPECT_EQ(descriptor["items"][2], Json({{"service_id", "20"}, {"service_type", "21"}}));
    EXPECT_EQ(descriptor["standard"]["services"][0], Json({{"service_id", "20-21"}, {"service_type", "22"}}));
    EXPECT_EQ(descriptor["standard"]["services"][1], Json({{"service_id", "23-24"}, {"service_type", "25"}}));
}

/// Where the standard has an object key, too, whose length makes it another descriptor.
TEST(FieldFinder, FindsAllOfATextThatIsReadInPieces) {
    const Json places =
        placesIn(longSection(0x02, {},
                             hex("E100 F01A 13 18 0000002A 01 02 0003 0FA2 00000100 01 00000200 3C 02 ABCD EF"
                                 "1B E111 F000")))["carousel_identifier_descriptor"];
    EXPECT_EQ(places["carousel_id"], "14-17");
    EXPECT_EQ(places["private_data"], "18-37");
    EXPECT_EQ(places["standard"]["module_id"], "20-21");
    EXPECT_EQ(places["standard"]["object_key_data"], "35-36");
}

TEST(FieldFinder, FindsElementsOfLists) {
    const Json places = placesIn(longSection(0x40, {}, hex("F000 F010  0735 0001 F00A FA 08 1234 0CF0 0D1A 0D44")));
    const Json& descriptor = places["transport_streams"][0]["terrestrial_delivery_system_descriptor"];
    EXPECT_EQ(descriptor["area_code"], "20-21");
    EXPECT_EQ(descriptor["guard_interval"], "21");
    EXPECT_EQ(descriptor["transmission_mode"], "21");
    EXPECT_EQ(descriptor["frequencies"], Json({"22-23", "24-25", "26-27"}));
}

TEST(FieldFinder, FindsWhatApplicationsInheritWhereItStands) {
    const Json places = placesIn(longSection(0x74, {1},
                                             hex("F011  02 05 0001 01 00 0B  04 08 01 2F 00 4D61696E65"
                                                 "F009  0000000A 0001 01 F000")));
    EXPECT_EQ(places["application_type"], "3-4");
    EXPECT_EQ(places["transport_protocol_descriptor"]["component_tag"], "16");
    const Json& application = places["applications"][0];
    EXPECT_EQ(application["application_identifier"], Json({{"organization_id", "29-32"}, {"application_id", "33-34"}}));
    EXPECT_EQ(application["control_code"], "35");
    EXPECT_EQ(application["transport_protocol_descriptor"]["component_tag"], "16");
    EXPECT_EQ(application["ginga_application_location_descriptor"]["initial_class"], "22-26");
    EXPECT_EQ(application["ginga_application_location_descriptor"]["base_directory"], "20");
}

/// A flag on which other fields depend, and the length of a descriptor that is left out.
TEST(FieldFinder, FindsFlagsAndLengthsOnWhichOthersDepend) {
    const Json avc = placesIn(longSection(
        0x02, {},
        hex("E100 F011 2A 0F 81 7F 00000002 00000003 00000004 A0 1B E111 F000")))["avc_timing_and_hrd_descriptor"];
    EXPECT_EQ(avc["hrd_management_valid"], "14");
    EXPECT_EQ(avc["standard"]["90khz_flag"], "15");
    EXPECT_EQ(avc["standard"]["n"], "16-19");
    const Json other =
        placesIn(longSection(0x02, {}, hex("E100 F005 99 03 AA0100 1B E111 F000")))["unknown_descriptors"];
    EXPECT_EQ(other[0]["descriptor_tag"], "12");
    EXPECT_EQ(other[0]["length"], "13");
    EXPECT_EQ(other[0]["bytes"], "14-16");
}

/// What the receiver counts itself stands nowhere, and neither does what it has where nothing was sent.
TEST(FieldFinder, DoesNotMakeUpPlaces) {
    const Json places =
        placesIn(longSection(0x02, {}, hex("E100 F012 53 04 0005 000E 13 04 0000002A 7C 04 2C 80 03 AA 1B E111 F000")));
    EXPECT_EQ(places["ca_identifier_descriptor"]["ca_system_ids"], Json({"14-15", "16-17"}));
    EXPECT_EQ(places["ca_identifier_descriptor"]["ca_system_id_count"], Json());
    EXPECT_EQ(places["carousel_identifier_descriptor"]["carousel_id"], "20-23");
    EXPECT_EQ(places["carousel_identifier_descriptor"]["module_id"], Json());
    EXPECT_EQ(places["carousel_identifier_descriptor"]["private_data"], Json());
}

TEST(FieldFinder, TriesNoMoreThanItMay) {
    const ByteVector section = longSection(0x00, {}, hex("0001 E101  0002 E102"));
    for (const std::uint64_t most : {std::uint64_t{0}, std::uint64_t{399}, std::uint64_t{450}}) {
        FieldFinder finder;
        EXPECT_EQ(placesBy(finder, section, most), Json());
        EXPECT_LE(finder.tried(), most + 9 * section.size());
    }
    FieldFinder finder;
    EXPECT_EQ(placesBy(finder, section, 2000)["programs"][0]["program_number"], "8-9");
}

/// Most times a TOT has another time, and nothing else.
TEST(FieldFinder, TriesOnceWhatIsLikeTheOneBefore) {
    FieldFinder finder;
    const Json places = placesBy(finder, shortSection(0x73, hex("EDA9 123456 F000")));
    const std::uint64_t tried = finder.tried();
    EXPECT_GT(tried, 0U);
    EXPECT_EQ(placesBy(finder, shortSection(0x73, hex("EDA9 123501 F000"))), places);
    EXPECT_EQ(placesBy(finder, shortSection(0x73, hex("EDAA 000000 F000")), tried), places);
    EXPECT_EQ(finder.tried(), tried);
    EXPECT_EQ(placesBy(finder, shortSection(0x73, hex("EDAA 000000 F003 99 01 AA")), tried), Json());
    EXPECT_EQ(placesBy(finder, shortSection(0x73, hex("EDAA 000000 F003 99 01 AA")))["unix_time"], "3-7");
    EXPECT_GT(finder.tried(), tried);
}

TEST(FieldFinder, TriesAgainWhereEntriesStandElsewhere) {
    FieldFinder finder;
    const auto first = [&finder](const char* programs) {
        return placesBy(finder, longSection(0x00, {}, hex(programs)))["programs"][0]["program_number"];
    };
    EXPECT_EQ(first("0001 E101  0002 E102"), "8-9");
    EXPECT_EQ(first("0002 E102  0001 E101"), "12-13");
    EXPECT_EQ(first("0002 E102  0003 E101"), "8-9");
    EXPECT_EQ(first("0004 E102  0003 E101"), "12-13");
}

/// Whatever is in a section: what is changed is taken or not, and nothing else happens.
TEST(FieldFinder, PutsTextsWhereTheyStand) {
    std::size_t texts = 0;
    for (const ByteVector& section : exampleSections()) {
        const Fields fields = fieldsOf(section);
        FieldFinder finder;
        FieldPlaces places = finder.find(Place{}, section, fields, ALL);
        forEachValue(fields, places, [&](const Field& field, const FieldPlace& place) {
            const auto* const text = std::get_if<Text>(&field.value);
            if (text == nullptr || place.bytes.all().empty() || field.name == "hash_id") {
                return;
            }
            ++texts;
            const auto [from, to] = place.bytes.all().front();
            EXPECT_EQ(place.bytes.all().size(), 1U) << field.name;
            EXPECT_EQ(std::string(section.begin() + static_cast<std::ptrdiff_t>(from),
                                  section.begin() + static_cast<std::ptrdiff_t>(to) + 1),
                      text->raw)
                << field.name;
        });
    }
    EXPECT_GT(texts, 50U);
}

} // namespace
