#include "tool/Process.h"
#include "tool/Streams.h"
#include "tool/describing/Taken.h"
#include "tool/json/CarriedSections.h"

#include "DSMCCSection/TDSMCCSectionTable.h"
#include "ait/TAITTable.h"
#include "descriptors/TApplicationNameDescriptor.h"
#include "descriptors/TDataComponentDescriptor.h"
#include "descriptors/TDownloadContentDescriptor.h"
#include "descriptors/TGingaApplicationDescriptor.h"
#include "descriptors/TGingaApplicationLocationDescriptor.h"
#include "descriptors/TLocalTimeOffsetDescriptor.h"
#include "descriptors/TNPTReferenceDescriptor.h"
#include "descriptors/TNetworkNameDescriptor.h"
#include "descriptors/TServiceDescriptor.h"
#include "descriptors/TServiceListDescriptor.h"
#include "descriptors/TStreamEventDescriptor.h"
#include "descriptors/TStreamIdentifierDescriptor.h"
#include "descriptors/TTerrestrialDeliverySystemDescriptor.h"
#include "nit/TNITTable.h"
#include "pat/TPATTable.h"
#include "pmt/TPMTTable.h"
#include "sdt/TSDTTable.h"
#include "sdtt/TSDTTTable.h"
#include "tot/TTOTTable.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sstream>

namespace {

using Json = nlohmann::json;

std::string digitsOf(const QUOR_U8* data, std::size_t size) {
    constexpr const char* DIGITS = "0123456789ABCDEF";
    std::string digits;
    for (std::size_t at = 0; at < size; ++at) {
        digits += {DIGITS[data[at] >> 4U], DIGITS[data[at] & 0x0FU]};
    }
    return digits;
}

std::string digitsOf(const std::string& characters) {
    const ByteVector bytes = text(characters);
    return digitsOf(bytes.data(), bytes.size());
}

/// The objects of a table that the tool writes for the sample.
std::vector<Json> objectsOf(const std::string& table) {
    std::istringstream lines(inspect({"--json", SAMPLE_FILE}).output);
    std::vector<Json> objects;
    for (std::string line; std::getline(lines, line);) {
        Json object = Json::parse(line);
        if (object["table"] == table) {
            objects.push_back(std::move(object));
        }
    }
    return objects;
}

/// What the library makes of the section that an object stands for, after comparing what their headers say.
template <class Table> Taken<Table> tableFor(const Json& object) {
    const std::vector<CarriedSection> sections = sectionsOn(object["pid"], sampleStream());
    const auto found = std::find_if(sections.begin(), sections.end(), [&object](const CarriedSection& section) {
        return object["packet"] == section.packet && object["table_id"] == section.bytes[0];
    });
    EXPECT_NE(found, sections.end()) << object;
    Taken<Table> taken = takenSection<Table>(found->bytes);
    EXPECT_NE(taken.object, nullptr) << object;
    return taken;
}

template <class Table> void compareHeaders(const Json& object, const Table& table) {
    EXPECT_EQ(object["version"], table.getVersion());
    EXPECT_EQ(object["current"], table.getCurrentIndicator() != 0);
    EXPECT_EQ(object["section_number"], table.getSectionNumber());
    EXPECT_EQ(object["last_section_number"], table.getLastSectionNumber());
}

TEST(LibraryValues, OfThePat) {
    const std::vector<Json> objects = objectsOf("PAT");
    ASSERT_EQ(objects.size(), 1U);
    const auto pat = tableFor<Quor::TPATTable>(objects[0]);
    const Json& fields = objects[0]["fields"];
    compareHeaders(objects[0], *pat.object);
    EXPECT_EQ(objects[0]["table_id_extension"], pat.object->getTransportStreamID());
    EXPECT_EQ(fields["transport_stream_id"], pat.object->getTransportStreamID());
    EXPECT_EQ(fields["network_pid"], pat.object->getNetworkPid());
    ASSERT_EQ(fields["programs"].size(), pat.object->size());
    for (const Json& program : fields["programs"]) {
        EXPECT_EQ(program["program_map_pid"], pat.object->get(program["program_number"])->getProgramMapPid());
    }
}

TEST(LibraryValues, OfThePmts) {
    const std::vector<Json> objects = objectsOf("PMT");
    ASSERT_EQ(objects.size(), 2U);
    for (const Json& object : objects) {
        const auto pmt = tableFor<Quor::TPMTTable>(object);
        compareHeaders(object, *pmt.object);
        EXPECT_EQ(object["fields"]["program_number"], pmt.object->getProgramNumber());
        EXPECT_EQ(object["fields"]["pcr_pid"], pmt.object->getPCRPID());
        const Json& streams = object["fields"]["elementary_streams"];
        ASSERT_EQ(streams.size(), pmt.object->size());
        for (std::size_t at = 0; at < streams.size(); ++at) {
            const Quor::TProgramMap& stream = *pmt.object->getProgramMap(static_cast<QUOR_U8>(at));
            EXPECT_EQ(streams[at]["stream_type"], stream.getStreamType());
            EXPECT_EQ(streams[at]["elementary_pid"], stream.getElementaryPID());
            const auto* const tag = stream.getStreamIdentifierDescriptor(0, nullptr);
            EXPECT_EQ(streams[at].contains("stream_identifier_descriptor"), tag != nullptr);
            if (tag != nullptr) {
                EXPECT_EQ(streams[at]["stream_identifier_descriptor"]["component_tag"], tag->getComponentTag());
            }
            const auto* const data = stream.getDataComponentDescriptor(0, nullptr);
            EXPECT_EQ(streams[at].contains("data_component_descriptor"), data != nullptr);
            if (data != nullptr) {
                EXPECT_EQ(streams[at]["data_component_descriptor"]["data_component_id"], data->getDataComponentID());
                EXPECT_EQ(streams[at]["data_component_descriptor"]["additional_data"],
                          digitsOf(data->getAdditionalData(), data->getAdditionalDataSize()));
            }
        }
    }
}

TEST(LibraryValues, OfTheNit) {
    const std::vector<Json> objects = objectsOf("NIT");
    ASSERT_EQ(objects.size(), 1U);
    const auto nit = tableFor<Quor::TNITTable>(objects[0]);
    compareHeaders(objects[0], *nit.object);
    const Json& fields = objects[0]["fields"];
    EXPECT_EQ(fields["network_id"], nit.object->getNetworkID());
    EXPECT_EQ(fields["network_name_descriptor"]["network_name_hex"],
              digitsOf(nit.object->getNetworkNameDescriptor()->getNetworkName()));
    EXPECT_EQ(fields["network_name_descriptor"]["network_name"], "TV Maré-Açu");
    const Json& streams = fields["transport_streams"];
    ASSERT_EQ(streams.size(), 1U);
    const Quor::TTransportStreamInfo& stream =
        *nit.object->getTransportStreamInfo(streams[0]["transport_stream_id"].get<QUOR_U16>());
    EXPECT_EQ(streams[0]["original_network_id"], stream.getOriginalNetworkID());
    const auto& services = *stream.getServiceListDescriptor();
    ASSERT_EQ(streams[0]["service_list_descriptor"]["items"].size(), services.size());
    for (const Json& service : streams[0]["service_list_descriptor"]["items"]) {
        EXPECT_EQ(service["service_type"], services.get(service["service_id"])->getServiceType());
    }
    const auto& delivery = *stream.getTerrestrialDeliverySystemDescriptor();
    const Json& system = streams[0]["terrestrial_delivery_system_descriptor"];
    EXPECT_EQ(system["area_code"], delivery.getAreaCode());
    EXPECT_EQ(system["guard_interval"], delivery.getGuardInterval());
    EXPECT_EQ(system["frequencies"], Json({delivery.getFrequencies()[0]}));
    EXPECT_EQ(system["frequencies_readings"], Json({"587.142857 MHz"}));
}

TEST(LibraryValues, OfTheSdt) {
    const std::vector<Json> objects = objectsOf("SDT");
    ASSERT_EQ(objects.size(), 1U);
    const auto sdt = tableFor<Quor::TSDTTable>(objects[0]);
    compareHeaders(objects[0], *sdt.object);
    const Json& fields = objects[0]["fields"];
    EXPECT_EQ(fields["original_network_id"], sdt.object->getOriginalNetworkID());
    ASSERT_EQ(fields["services"].size(), sdt.object->size());
    for (const Json& each : fields["services"]) {
        const Quor::TServiceDescription& service = *sdt.object->getServiceDescription(each["service_id"]);
        EXPECT_EQ(each["eit_schedule"], service.hasEITSchedule() != 0);
        EXPECT_EQ(each["eit_present_following"], service.hasEITPresentFollowing() != 0);
        EXPECT_EQ(each["running_status"], service.getRunningStatus());
        EXPECT_EQ(each["service_descriptor"]["service_name_hex"],
                  digitsOf(service.getServiceDescriptor()->getServiceName()));
    }
    EXPECT_EQ(fields["services"][1]["service_descriptor"]["service_name"], "Maré-Açu Móvel");
}

TEST(LibraryValues, OfTheTots) {
    const std::vector<Json> objects = objectsOf("TOT");
    ASSERT_EQ(objects.size(), 2U);
    for (const Json& object : objects) {
        EXPECT_EQ(object["version"], nullptr);
        const auto tot = tableFor<Quor::TTOTTable>(object);
        EXPECT_EQ(object["fields"]["unix_time"], tot.object->getUnixTime());
        const Json& item = object["fields"]["local_time_offset_descriptor"]["items"][0];
        const auto& offset = *tot.object->getLocalTimeOffsetDescriptor()->get(item["country_code"]);
        EXPECT_EQ(item["country_region_id"], offset.getCountryRegionID());
        EXPECT_EQ(item["local_time_offset_polarity"], offset.getLocalTimeOffsetPolarity());
        EXPECT_EQ(item["local_time_offset"], offset.getLocalTimeOffset());
    }
    EXPECT_EQ(objects[0]["fields"]["unix_time"], 1750012200);
    EXPECT_EQ(objects[0]["fields"]["unix_time_reading"], "2025-06-15 18:30:00 (UTC-3 assumed)");
}

TEST(LibraryValues, OfTheAits) {
    const std::vector<Json> objects = objectsOf("AIT");
    ASSERT_EQ(objects.size(), 2U);
    for (const Json& object : objects) {
        const auto ait = tableFor<Quor::TAITTable>(object);
        compareHeaders(object, *ait.object);
        EXPECT_EQ(object["fields"]["application_type"], ait.object->getApplicationType());
        ASSERT_EQ(object["fields"]["applications"].size(), ait.object->getApplicationsCount());
        for (const Json& each : object["fields"]["applications"]) {
            const Quor::TApplication& application = *ait.object->getApplication(each["hash_id"]);
            EXPECT_EQ(each["application_identifier"]["organization_id"],
                      application.getApplicationIdentifier()->getOrganizationID());
            EXPECT_EQ(each["control_code"], application.getControlCode());
            const auto& name = *application.getApplicationNameDescriptor(0, nullptr)->get("por");
            EXPECT_EQ(each["application_name_descriptor"]["items"][0]["name_hex"], digitsOf(name.getName()));
            const auto& location = *application.getGingaApplicationLocationDescriptor(0, nullptr);
            const Json& place = each["ginga_application_location_descriptor"];
            EXPECT_EQ(place["base_directory"], location.getBaseDirectory());
            EXPECT_EQ(place["initial_class"], location.getInitialClass());
        }
    }
    const Json& guide = objects[0]["fields"]["applications"][0];
    EXPECT_EQ(guide["transport_protocol_descriptor"]["inherited"], true);
    EXPECT_EQ(guide["ginga_application_descriptor"]["parameters"], Json({"idioma=por", "tema=claro"}));
    EXPECT_EQ(guide["ginga_application_descriptor"]["parameters_hex"],
              Json({"6964696F6D613D706F72", "74656D613D636C61726F"}));
}

TEST(LibraryValues, OfTheSdtt) {
    const std::vector<Json> objects = objectsOf("SDTT");
    ASSERT_EQ(objects.size(), 1U);
    const auto sdtt = tableFor<Quor::TSDTTTable>(objects[0]);
    compareHeaders(objects[0], *sdtt.object);
    const Json& fields = objects[0]["fields"];
    EXPECT_EQ(fields["maker_id"], sdtt.object->getMakerID());
    EXPECT_EQ(fields["model_id"], sdtt.object->getModelID());
    EXPECT_EQ(fields["service_id"], sdtt.object->getServiceID());
    ASSERT_EQ(fields["download_contents"].size(), sdtt.object->getDownloadContentSize());
    const Json& download = fields["download_contents"][0];
    const Quor::TDownloadContent& content = *sdtt.object->getDownloadContent(0);
    EXPECT_EQ(download["target_version"], content.getTargetVersion());
    EXPECT_EQ(download["new_version"], content.getNewVersion());
    ASSERT_EQ(download["schedule_infos"].size(), content.getScheduleInfoSize());
    EXPECT_EQ(download["schedule_infos"][1]["start_time"], content.getScheduleInfo(1)->getStartTime());
    EXPECT_EQ(download["schedule_infos"][1]["duration"], content.getScheduleInfo(1)->getDuration());
    const auto& descriptor = *content.getDownloadContentDescriptor();
    const Json& described = download["download_content_descriptor"];
    EXPECT_EQ(described["component_size"], descriptor.getComponentSize());
    EXPECT_EQ(described["leak_rate"], descriptor.getLeakRate());
    EXPECT_EQ(described["modules"].size(), descriptor.getDownloadContentDescriptorItemSize());
    EXPECT_EQ(described["text_hex"], digitsOf(descriptor.getText()));
}

TEST(LibraryValues, OfTheDsmccSection) {
    const std::vector<Json> objects = objectsOf("DSM-CC");
    ASSERT_EQ(objects.size(), 1U);
    const auto section = tableFor<Quor::TDSMCCSectionTable>(objects[0]);
    compareHeaders(objects[0], *section.object);
    const Json& fields = objects[0]["fields"];
    EXPECT_EQ(fields["data_event_id"], section.object->getDataEventID());
    EXPECT_EQ(fields["event_msg_group_id"], section.object->getEventMsgGroupID());
    const auto& reference = *section.object->getNPTReferenceDescriptor();
    EXPECT_EQ(fields["npt_reference_descriptor"]["stc_reference_l"], reference.getSTCReferenceL());
    EXPECT_EQ(fields["npt_reference_descriptor"]["npt_reference_l"], reference.getNPTReferenceL());
    const auto& event = *section.object->getStreamEventDescriptor();
    EXPECT_EQ(fields["stream_event_descriptor"]["event_id"], event.getEventID());
    EXPECT_EQ(fields["stream_event_descriptor"]["private_data"],
              digitsOf(event.getPrivateData(), event.getPrivateDataSize()));
}

} // namespace
