#include "Station.h"
#include "Tables.h"

namespace sample {

namespace {

constexpr std::uint8_t NIT_TABLE_ID = 0x40;
constexpr std::uint8_t SDT_TABLE_ID = 0x42;

constexpr std::uint8_t NETWORK_NAME_DESCRIPTOR = 0x40;
constexpr std::uint8_t SERVICE_LIST_DESCRIPTOR = 0x41;
constexpr std::uint8_t SERVICE_DESCRIPTOR = 0x48;
constexpr std::uint8_t TS_INFORMATION_DESCRIPTOR = 0xCD;
constexpr std::uint8_t LOGO_TRANSMISSION_DESCRIPTOR = 0xCF;
constexpr std::uint8_t TERRESTRIAL_DELIVERY_SYSTEM_DESCRIPTOR = 0xFA;
constexpr std::uint8_t PARTIAL_RECEPTION_DESCRIPTOR = 0xFB;
constexpr std::uint8_t SYSTEM_MANAGEMENT_DESCRIPTOR = 0xFE;

constexpr std::uint8_t DIGITAL_TELEVISION = 0x01;
constexpr std::uint8_t DATA_SERVICE = 0xC0;

/// Channel 33: frequencies count sevenths of a megahertz.
constexpr unsigned CHANNEL = 33;
constexpr unsigned FREQUENCY = 473 * 7 + 1 + (CHANNEL - 14) * 6 * 7;

Bytes transmission(std::uint8_t info, std::uint16_t serviceId) {
    return Wire().bits(8, info).bits(8, 1).bits(16, serviceId).bytes();
}

Bytes tsInformation() {
    return descriptor(TS_INFORMATION_DESCRIPTOR, Wire()
                                                     .bits(8, REMOTE_CONTROL_KEY)
                                                     .bits(6, STATION_NAME.size()) // length_of_ts_name
                                                     .bits(2, 2)                   // transmission_type_count
                                                     .text(STATION_NAME)
                                                     .append(transmission(0x0F, HD_SERVICE_ID))        // type A, 64QAM
                                                     .append(transmission(0xAF, ONE_SEG_SERVICE_ID))); // type C, QPSK
}

Bytes transportStream() {
    const Wire descriptors =
        Wire()
            .append(descriptor(SERVICE_LIST_DESCRIPTOR, Wire()
                                                            .bits(16, HD_SERVICE_ID)
                                                            .bits(8, DIGITAL_TELEVISION)
                                                            .bits(16, ONE_SEG_SERVICE_ID)
                                                            .bits(8, DATA_SERVICE)))
            .append(descriptor(TERRESTRIAL_DELIVERY_SYSTEM_DESCRIPTOR, Wire()
                                                                           .bits(12, 0x4D2) // area_code
                                                                           .bits(2, 1)      // guard_interval 1/16
                                                                           .bits(2, 2)      // transmission_mode 3
                                                                           .bits(16, FREQUENCY)))
            .append(descriptor(PARTIAL_RECEPTION_DESCRIPTOR, Wire().bits(16, ONE_SEG_SERVICE_ID)))
            .append(tsInformation());
    return Wire().bits(16, TRANSPORT_STREAM_ID).bits(16, NETWORK_ID).loop(descriptors.bytes()).bytes();
}

Bytes service(std::uint16_t id, std::uint8_t type, std::string_view name, const Bytes& logo) {
    const Wire descriptors =
        Wire()
            .append(descriptor(SERVICE_DESCRIPTOR, Wire().bits(8, type).countedText(STATION_NAME).countedText(name)))
            .append(logo);
    return Wire()
        .bits(16, id)
        .reserved(6)
        .bits(1, 0) // EIT_schedule_flag
        .bits(1, 1) // EIT_present_following_flag
        .bits(3, 4) // running_status: running
        .bits(1, 0) // free_CA_mode: not scrambled
        .bits(12, descriptors.bytes().size())
        .append(descriptors.bytes())
        .bytes();
}

/// A picture that comes over the air.
Bytes broadcastLogo() {
    return descriptor(LOGO_TRANSMISSION_DESCRIPTOR, Wire()
                                                        .bits(8, 1) // logo_transmission_type
                                                        .reserved(7)
                                                        .bits(9, 0x017) // logo_id
                                                        .reserved(4)
                                                        .bits(12, 2)        // logo_version
                                                        .bits(16, 0x0100)); // download_data_id
}

/// A few letters in place of a picture.
Bytes simpleLogo(std::string_view letters) {
    return descriptor(LOGO_TRANSMISSION_DESCRIPTOR, Wire().bits(8, 3).text(letters));
}

} // namespace

Bytes nit() {
    const Wire network = Wire()
                             .append(descriptor(NETWORK_NAME_DESCRIPTOR, Wire().text(STATION_NAME)))
                             .append(descriptor(SYSTEM_MANAGEMENT_DESCRIPTOR, Wire()
                                                                                  .bits(2, 0) // open
                                                                                  .bits(6, 3) // terrestrial
                                                                                  .bits(8, 1)));
    return longSection(NIT_TABLE_ID, NETWORK_ID, Wire().loop(network.bytes()).loop(transportStream()));
}

Bytes sdt() {
    return longSection(
        SDT_TABLE_ID, TRANSPORT_STREAM_ID,
        Wire()
            .bits(16, NETWORK_ID)
            .reserved(8)
            .append(service(HD_SERVICE_ID, DIGITAL_TELEVISION, "Mar\xE9-A\xE7u HD", broadcastLogo()))
            .append(service(ONE_SEG_SERVICE_ID, DATA_SERVICE, "Mar\xE9-A\xE7u M\xF3vel", simpleLogo("MA\xC7U"))));
}

} // namespace sample
