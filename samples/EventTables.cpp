#include "Station.h"
#include "Tables.h"

#include <array>

namespace sample {

namespace {

constexpr std::uint8_t EIT_TABLE_ID = 0x4E;
constexpr std::uint8_t NIT_TABLE_ID = 0x40;
constexpr std::uint8_t SDT_TABLE_ID = 0x42;
constexpr std::uint8_t BIT_TABLE_ID = 0xC4;

constexpr std::uint8_t SHORT_EVENT_DESCRIPTOR = 0x4D;
constexpr std::uint8_t SI_PARAMETER_DESCRIPTOR = 0xD7;

constexpr std::uint8_t NOT_RUNNING = 1;
constexpr std::uint8_t RUNNING = 4;

constexpr unsigned HOUR = 3600;

constexpr std::array<std::string_view, 3> TITLES{"Jornal da Mar\xE9",
                                                 "Not\xED"
                                                 "cias do Porto",
                                                 "Cinema na Rede"};

Bytes shortEvent(std::string_view title) {
    return descriptor(SHORT_EVENT_DESCRIPTOR, Wire().text("por").countedText(title).countedText(""));
}

/// How many seconds lie between two sendings, in BCD.
Bytes cycle(std::uint8_t tableId, const Bytes& seconds) {
    return Wire().bits(8, tableId).bits(8, seconds.size()).append(seconds).bytes();
}

} // namespace

Bytes eit(std::uint16_t serviceId, unsigned secondOfDay, unsigned section) {
    const unsigned present = secondOfDay / HOUR;
    const unsigned hour = present + section;
    const Bytes title = shortEvent(TITLES.at(hour % TITLES.size()));
    const Wire event = Wire()
                           .bits(16, hour) // event_id
                           .append(clockTime(BROADCAST_DAY, hour * HOUR))
                           .bits(24, 0x010000) // duration: an hour
                           .bits(3, section == 0 ? RUNNING : NOT_RUNNING)
                           .bits(1, 0) // free_CA_mode: not scrambled
                           .bits(12, title.size())
                           .append(title);
    return longSection(EIT_TABLE_ID, serviceId,
                       Wire()
                           .bits(16, TRANSPORT_STREAM_ID)
                           .bits(16, NETWORK_ID)
                           .bits(8, 1) // segment_last_section_number
                           .bits(8, EIT_TABLE_ID)
                           .append(event.bytes()),
                       {present % 32, section, 1});
}

Bytes bit() {
    const Wire parameters = Wire()
                                .bits(8, 1)              // parameter_version
                                .bits(16, BROADCAST_DAY) // update_time
                                .append(cycle(NIT_TABLE_ID, {0x01}))
                                .append(cycle(BIT_TABLE_ID, {0x01}))
                                .append(cycle(SDT_TABLE_ID, {0x02}))
                                .append(cycle(EIT_TABLE_ID, {0x01, 0xFF, 0x01, 0x02})); // H-EIT, none, L-EIT, events
    return longSection(BIT_TABLE_ID, NETWORK_ID,
                       Wire()
                           .reserved(3)
                           .bits(1, 1) // broadcast_view_propriety
                           .bits(12, descriptor(SI_PARAMETER_DESCRIPTOR, parameters).size())
                           .append(descriptor(SI_PARAMETER_DESCRIPTOR, parameters)));
}

} // namespace sample
