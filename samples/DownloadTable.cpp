#include "Station.h"
#include "Tables.h"

namespace sample {

namespace {

constexpr std::uint8_t SDTT_TABLE_ID = 0xC3;
constexpr std::uint8_t DOWNLOAD_CONTENT_DESCRIPTOR = 0xC9;

constexpr std::uint16_t MAKER_AND_MODEL = 0x5A21;
constexpr std::uint32_t ORGANIZATION_OF_THE_MAKER = 0x5A0021;

/// At night, an hour and a half.
Bytes schedule(unsigned day) {
    return Wire().append(clockTime(day, 3, 0, 0)).bits(8, bcd(1)).bits(8, bcd(30)).bits(8, bcd(0)).bytes();
}

/// The receivers that the software is for.
Bytes compatibility() {
    const Wire hardware = Wire()
                              .bits(8, 1) // descriptorType: system hardware
                              .bits(8, 9) // descriptorLength
                              .bits(8, 1) // specifierType: an organization
                              .bits(24, ORGANIZATION_OF_THE_MAKER)
                              .bits(16, 0x2100) // model
                              .bits(16, 0x0300) // version
                              .bits(8, 0);      // subDescriptorCount
    return Wire().bits(16, 2 + hardware.bytes().size()).bits(16, 1).append(hardware.bytes()).bytes();
}

Bytes module(std::uint16_t id, std::uint32_t size, std::string_view info) {
    return Wire().bits(16, id).bits(32, size).countedText(info).bytes();
}

Bytes content() {
    constexpr std::uint32_t COMPONENT_SIZE = 6291456;
    constexpr std::uint32_t FIRST_MODULE = 4194304;
    return descriptor(DOWNLOAD_CONTENT_DESCRIPTOR, Wire()
                                                       .bits(1, 1) // reboot
                                                       .bits(1, 0) // add_on
                                                       .bits(1, 1) // compatibility_flag
                                                       .bits(1, 1) // module_info_flag
                                                       .bits(1, 1) // text_info_flag
                                                       .reserved(3)
                                                       .bits(32, COMPONENT_SIZE)
                                                       .bits(32, 0x00000042) // download_id
                                                       .bits(32, 60000000)   // time_out_value_DII
                                                       .bits(22, 20000)      // leak_rate
                                                       .reserved(2)
                                                       .bits(8, DOWNLOAD_TAG)
                                                       .append(compatibility())
                                                       .bits(16, 2) // num_of_modules
                                                       .append(module(0x0001, FIRST_MODULE, "sistema"))
                                                       .append(module(0x0002, COMPONENT_SIZE - FIRST_MODULE, ""))
                                                       .bits(8, 0) // private_data_length
                                                       .text("por")
                                                       .countedText("Corrige a sele\xE7\xE3o de \xE1udio"));
}

} // namespace

Bytes sdtt() {
    const Wire schedules = Wire().append(schedule(BROADCAST_DAY + 1)).append(schedule(BROADCAST_DAY + 2));
    const Bytes descriptors = content();
    return longSection(SDTT_TABLE_ID, MAKER_AND_MODEL,
                       Wire()
                           .bits(16, TRANSPORT_STREAM_ID)
                           .bits(16, NETWORK_ID)
                           .bits(16, HD_SERVICE_ID)
                           .bits(8, 1)      // num_of_contents
                           .bits(4, 0)      // group
                           .bits(12, 0x010) // target_version
                           .bits(12, 0x011) // new_version
                           .bits(2, 1)      // download_level: compulsory
                           .bits(2, 2)      // version_indicator: up to the target version
                           .bits(12, schedules.bytes().size() + descriptors.size()) // content_description_length
                           .reserved(4)
                           .bits(12, schedules.bytes().size()) // schedule_description_length
                           .bits(4, 0)                         // schedule_time-shift_information
                           .append(schedules.bytes())
                           .append(descriptors));
}

} // namespace sample
